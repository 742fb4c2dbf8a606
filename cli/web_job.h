#pragma once

#include "cli/compile_options.h"
#include "cli/web_language.h"
#include "webs/disk_web.h"
#include "writers/compile_job.h"

namespace scrivo {

// The compile that the options ask for, in `language`: what they leave open is taken from the web,
// and the help file is made in the current folder. Throws Error, with a text for the user, when the
// options do not suit the web or the output cannot be a file.
CompileJob JobFor(const CompileOptions& options, const WebLanguage& language, DiskWeb& web,
                  const Locator& locate);

}  // namespace scrivo

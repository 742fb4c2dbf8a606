#pragma once

#include <memory>

#include "cli/compile_options.h"
#include "generator/frm_main.h"

namespace scrivo {

// Loads the compile dialog for the open web, fills it as its user would see it, and sets its items
// from the options. TheServices().registry must be one that this run may write to. Throws Error,
// with a text for the user, when the options do not suit the web.
std::shared_ptr<frmMain> LoadCompileForm(const CompileOptions& options);

}  // namespace scrivo

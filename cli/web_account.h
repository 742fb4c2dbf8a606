#pragma once

#include "cli/compile_options.h"
#include "ui/console/console.h"
#include "webs/disk_web.h"

namespace scrivo {

// Whether the one who takes in the pages reads them as this program does, or only has their names.
enum class PagesGoTo { kThisCompiler, kAnother };

// Tells in a line each what its owner may not expect of how a web is read: where its contents come
// from, which files are left out, and that there are webs inside it or that only a folder of it is
// a web.
void TellOfWeb(const CompileOptions& options, DiskWeb& web, PagesGoTo pages, Console& console);

}  // namespace scrivo

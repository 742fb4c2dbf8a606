#pragma once

// What the program `hhc` does: hhc [options] project.hhp.

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "text/code_page.h"

namespace scrivo {

// Name and version of the compiler, as it prints them and as they stand in help files.
inline constexpr char kCompilerName[] = "Scrivo HTML Help Compiler " SCRIVO_VERSION;

// The value of the environment variable SOURCE_DATE_EPOCH: the seconds since 1970 that a help file
// is to say it was made at. False when it is not a number from 0 on.
bool ReadSourceDateEpoch(const std::string& text, std::int64_t* seconds);

// How many threads a compile uses when nobody says: one for each core.
int CompilerThreads();

// What the program finds around it.
struct HhcSurroundings {
  std::string working_folder;          // full path, UTF-8, "/" separators
  bool gnu = false;                    // the environment variable HHC_GNU is set
  std::string source_date_epoch;       // the environment variable of that name
  int name_code_page = kUtf8CodePage;  // see CompileRequest
};

// Runs the program with `arguments` (UTF-8, without its name). Returns the exit status: 1 when the
// help file was made and 0 when not, as callers of help compilers expect; with --gnu or HHC_GNU 0
// when it was made, 1 when not, 2 for a wrong command line, 130 when the program was interrupted.
int RunHhc(const std::vector<std::string>& arguments, const HhcSurroundings& surroundings,
           std::ostream& out, std::ostream& err);

}  // namespace scrivo

#pragma once

#include <string>

#include "cli/compile_report.h"
#include "site/site.h"
#include "writers/compile_job.h"

namespace scrivo {

// Another help compiler than this program's own, which is run on a project on disk. It makes the
// help file in a folder of its own beside the output, whose place the file takes once it is there
// and whole; until then an earlier output stays as it is.
//
// `compiler` is the program's path. It reads a copy of the web, which lies in that folder with the
// project: whatever becomes of the run, nothing is left in the web but the project that the job
// keeps. (A link to the web would not do: a compiler names files inside the help file by where
// they lie below their project.) What the compiler prints is told to the report as it comes. True
// when the help file was made; why not has been told to the console otherwise. Throws Error, with a
// text for the user, when the copy cannot be written or the compiler not be started; kUserInterrupt
// when the program is to end.
bool CompileWithForeign(const std::string& compiler, SiteWeb& web, const CompileJob& job,
                        const Locator& locate, CompileReport* report, Console* console);

// The full path of the compiler that the user has named. Throws Error, with a text for the user,
// when it is not a file or cannot stand in a command line.
std::string ForeignCompilerPath(const std::string& wanted);

// Why a program could not be started, by the system's code (Windows' numbers on every system); it
// was to run in `folder`.
std::string StartFailureText(std::uint32_t code, const std::string& folder);

}  // namespace scrivo

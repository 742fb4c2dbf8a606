// The program hhc: compiles help projects.

#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "cli/hhc_command.h"
#include "cli/terminal_stream.h"
#include "project/source_files.h"
#include "system/interruption.h"
#include "system/program.h"

namespace {

// The status for a help file that was not made, told without memory, which may be what is missing.
int NotMade(int argc, char** argv) {
  bool gnu = std::getenv("HHC_GNU") != nullptr;
  for (int i = 1; i < argc; ++i) gnu = gnu || std::strcmp(argv[i], "--gnu") == 0;
  return gnu ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  scrivo::CatchInterruptions();
  const int code_page = scrivo::TerminalCodePage();
  scrivo::TerminalStream out(std::cout, code_page);
  scrivo::TerminalStream err(std::cerr, code_page);
  try {
    const std::vector<std::string> arguments = scrivo::ProgramArguments(argc, argv);
    scrivo::HhcSurroundings surroundings;
    surroundings.working_folder = scrivo::PortablePath(std::filesystem::current_path());
    surroundings.name_code_page = code_page;
    surroundings.gnu = std::getenv("HHC_GNU") != nullptr;
    if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH")) {
      surroundings.source_date_epoch = epoch;
    }
    return scrivo::RunHhc(arguments, surroundings, out, err);
  } catch (const std::bad_alloc&) {
    err << "hhc: error: out of memory\n";
    return NotMade(argc, argv);
  } catch (const std::exception& exception) {
    err << "hhc: error: " << exception.what() << '\n';
    return NotMade(argc, argv);
  }
}

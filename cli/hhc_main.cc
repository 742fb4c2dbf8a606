// The program hhc: compiles help projects.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "cli/code_page_stream.h"
#include "cli/hhc_command.h"
#include "project/source_files.h"
#include "system/program_arguments.h"
#include "system/terminal.h"

int main(int argc, char** argv) {
  const int code_page = scrivo::TerminalCodePage();
  try {
    const std::vector<std::string> arguments = scrivo::ProgramArguments(argc, argv);
    scrivo::HhcSurroundings surroundings;
    surroundings.working_folder = scrivo::PortablePath(std::filesystem::current_path());
    surroundings.gnu = std::getenv("HHC_GNU") != nullptr;
    if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH")) {
      surroundings.source_date_epoch = epoch;
    }
    scrivo::CodePageStream out(std::cout, code_page);
    scrivo::CodePageStream err(std::cerr, code_page);
    return scrivo::RunHhc(arguments, surroundings, out, err);
  } catch (const std::exception& exception) {
    std::cerr << "hhc: error: " << exception.what() << '\n';
    return 0;
  }
}

// The program hh: unpacks compiled help files.

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "cli/code_page_stream.h"
#include "cli/hh_command.h"
#include "system/interruption.h"
#include "system/program_arguments.h"
#include "system/terminal.h"

int main(int argc, char** argv) {
  scrivo::CatchInterruptions();
  const int code_page = scrivo::TerminalCodePage();
  try {
    const std::vector<std::string> arguments = scrivo::ProgramArguments(argc, argv);
    scrivo::CodePageStream out(std::cout, code_page);
    scrivo::CodePageStream err(std::cerr, code_page);
    return scrivo::RunHh(arguments, out, err);
  } catch (const std::exception& exception) {
    std::cerr << "hh: error: " << exception.what() << '\n';
    return 1;
  }
}

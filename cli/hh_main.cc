// The program hh: unpacks compiled help files.

#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "cli/hh_command.h"
#include "cli/terminal_stream.h"
#include "system/interruption.h"
#include "system/program.h"

int main(int argc, char** argv) {
  scrivo::CatchInterruptions();
  const int code_page = scrivo::TerminalCodePage();
  scrivo::TerminalStream out(std::cout, code_page);
  scrivo::TerminalStream err(std::cerr, code_page);
  try {
    const std::vector<std::string> arguments = scrivo::ProgramArguments(argc, argv);
    return scrivo::RunHh(arguments, out, err);
  } catch (const std::bad_alloc&) {
    err << "hh: error: out of memory\n";
    return 1;
  } catch (const std::exception& exception) {
    err << "hh: error: " << exception.what() << '\n';
    return 1;
  }
}

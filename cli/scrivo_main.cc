// The program scrivo: a FrontPage web on disk becomes a compiled help file.

#include <chrono>
#include <iostream>
#include <string>

#include "cli/scrivo.h"
#include "system/interruption.h"
#include "system/program_arguments.h"
#include "system/services.h"
#include "system/terminal.h"

namespace {

double SecondsNow() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    scrivo::ShowUtf8OnTerminal();
    scrivo::CatchInterruptions();
    scrivo::TheServices() = scrivo::CreateSystemServices();
    const scrivo::Streams streams = {
        std::cout, std::cerr, scrivo::IsTerminal(scrivo::StandardStream::kError),
        scrivo::TerminalColumns(scrivo::StandardStream::kError), SecondsNow};
    const int status = scrivo::RunScrivo(scrivo::ProgramArguments(argc, argv), streams);
    std::cout.flush();
    if (!std::cout && status == 0) {
      std::cerr << "scrivo: error: the results could not be written to the output\n";
      return 1;
    }
    return status;
  } catch (const std::exception& exception) {
    std::cerr << "scrivo: error: " << exception.what() << "\n";
    return 1;
  }
}

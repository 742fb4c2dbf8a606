// The program scrivo: a FrontPage web on disk becomes a compiled help file.

#include <chrono>
#include <iostream>
#include <new>
#include <string>

#include "cli/scrivo.h"
#include "cli/terminal_stream.h"
#include "system/interruption.h"
#include "system/program.h"
#include "system/services.h"
#include "text/code_page.h"

namespace {

double SecondsNow() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

}  // namespace

int main(int argc, char** argv) {
  const bool live = scrivo::IsTerminal(scrivo::StandardStream::kError);
  scrivo::TerminalStream out(std::cout, scrivo::kUtf8CodePage);
  scrivo::TerminalStream err(std::cerr, scrivo::kUtf8CodePage, live);
  try {
    scrivo::ShowUtf8OnTerminal();
    scrivo::CatchInterruptions();
    scrivo::TheServices() = scrivo::CreateSystemServices();
    const scrivo::Streams streams = {
        out, err, live, scrivo::TerminalColumns(scrivo::StandardStream::kError), SecondsNow};
    const int status = scrivo::RunScrivo(scrivo::ProgramArguments(argc, argv), streams);
    out.flush();
    if (!out && status == 0) {
      err << "scrivo: error: the results could not be written to the output\n";
      return 1;
    }
    return status;
  } catch (const std::bad_alloc&) {
    err << "scrivo: error: out of memory\n";
    return 1;
  } catch (const std::exception& exception) {
    err << "scrivo: error: " << exception.what() << "\n";
    return 1;
  }
}

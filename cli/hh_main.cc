// The program hh: unpacks compiled help files.

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "cli/code_page_stream.h"
#include "cli/hh_command.h"
#include "system/terminal.h"
#include "text/code_page.h"

int main(int argc, char** argv) {
  const int code_page = scrivo::TerminalCodePage();
  try {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
      // Where arguments are UTF-8 anyway, they are taken as they are: a path may be malformed.
      const bool utf8 = code_page == scrivo::kUtf8CodePage;
      arguments.push_back(utf8 ? argv[i] : scrivo::ToUtf8(argv[i], code_page));
    }
    scrivo::CodePageStream out(std::cout, code_page);
    scrivo::CodePageStream err(std::cerr, code_page);
    return scrivo::RunHh(arguments, out, err);
  } catch (const std::exception& exception) {
    std::cerr << "hh: " << exception.what() << '\n';
    return 1;
  }
}

#include "cli/terminal_text.h"

#include "system/services.h"
#include "system/terminal.h"
#include "text/code_page.h"

namespace scrivo {

std::string ToTerminal(const std::string& ansi) {
  const int from = TheServices().system->AnsiCodePage();
  return from == TerminalCodePage() ? ansi : FromUtf8(ToUtf8(ansi, from), TerminalCodePage());
}

std::string FromTerminal(const std::string& text, bool* lost) {
  const int to = TheServices().system->AnsiCodePage();
  std::size_t lost_characters = 0;
  const std::string utf8 = ToUtf8(text, TerminalCodePage());
  const std::string ansi = to == TerminalCodePage() ? text : FromUtf8(utf8, to, &lost_characters);
  *lost = lost_characters > 0;
  return ansi;
}

}  // namespace scrivo

#include "system/system_services.h"

#include "text/code_page.h"

namespace scrivo {

std::string SystemServices::ToAnsi(std::string_view text) { return FromUtf8(text, AnsiCodePage()); }

std::string SystemServices::FromAnsi(std::string_view ansi) { return ToUtf8(ansi, AnsiCodePage()); }

int SystemServices::PipeCodePage() { return AnsiCodePage(); }

}  // namespace scrivo

#include "system/system_services.h"

#include "system/services.h"
#include "text/code_page.h"

namespace scrivo {

std::string SystemServices::ToAnsi(std::string_view text) { return FromUtf8(text, AnsiCodePage()); }

std::string SystemServices::FromAnsi(std::string_view ansi) { return ToUtf8(ansi, AnsiCodePage()); }

int SystemServices::PipeCodePage() { return AnsiCodePage(); }

std::string ToAnsi(std::string_view text) { return TheServices().system->ToAnsi(text); }

std::string FromAnsi(std::string_view ansi) { return TheServices().system->FromAnsi(ansi); }

int PipeCodePage() { return TheServices().system->PipeCodePage(); }

}  // namespace scrivo

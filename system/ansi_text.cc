#include "system/ansi_text.h"

#include "system/services.h"

namespace scrivo {

std::string ToAnsi(std::string_view text) { return TheServices().system->ToAnsi(text); }

std::string FromAnsi(std::string_view ansi) { return TheServices().system->FromAnsi(ansi); }

int PipeCodePage() { return TheServices().system->PipeCodePage(); }

}  // namespace scrivo

#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// Text inside (text/wtf8.h) as Windows' wide text, and back; nothing is lost.
std::wstring Wide(std::string_view text);
std::string Narrow(std::wstring_view wide);

// Wide text in the system's own ANSI code page, as its ANSI calls read it, and back. What the code
// page lacks becomes what the system puts in its place. All else uses system/system_services.h.
std::string SystemAnsi(std::wstring_view wide);
std::wstring WideOfSystemAnsi(std::string_view ansi);

}  // namespace scrivo

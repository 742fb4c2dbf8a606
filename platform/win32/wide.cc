#include "platform/win32/wide.h"

#include "platform/win32/windows.h"
#include "text/wtf8.h"

namespace scrivo {

std::wstring Wide(std::string_view text) {
  const std::u16string wide = ToWindowsText(text);
  return {wide.begin(), wide.end()};
}

std::string Narrow(std::wstring_view wide) {
  return FromWindowsText(std::u16string(wide.begin(), wide.end()));
}

std::string SystemAnsi(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int size = length == 0 ? 0
                               : WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0,
                                                     nullptr, nullptr);
  std::string ansi(static_cast<std::size_t>(size), '\0');
  if (size > 0) {
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, ansi.data(), size, nullptr, nullptr);
  }
  return ansi;
}

std::wstring WideOfSystemAnsi(std::string_view ansi) {
  const int size = static_cast<int>(ansi.size());
  const int length = size == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  if (length > 0) MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, wide.data(), length);
  return wide;
}

}  // namespace scrivo

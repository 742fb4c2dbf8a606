#include "com/win32/text.h"

#include <utility>

#include "system/error.h"

namespace scrivo {

std::wstring WideText(std::string_view ansi) {
  const int size = static_cast<int>(ansi.size());
  const int length = size == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  if (length > 0) MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, wide.data(), length);
  return wide;
}

std::string AnsiText(std::wstring_view wide) {
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

std::string AnsiText(BSTR text) {
  return text ? AnsiText(std::wstring_view(text, SysStringLen(text))) : "";
}

Bstr::Bstr(std::string_view ansi) {
  const std::wstring wide = WideText(ansi);
  text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!text_) throw Error(kOutOfMemory, "Scrivo.Text", "Out of memory");
}

BSTR Bstr::Detach() { return std::exchange(text_, nullptr); }

BSTR* Bstr::Put() {
  SysFreeString(Detach());
  return &text_;
}

}  // namespace scrivo

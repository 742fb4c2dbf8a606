#include "com/win32/variant.h"

#include <utility>

#include "system/error.h"

namespace scrivo {

std::string TextOf(BSTR text) {
  return text ? Narrow(std::wstring_view(text, SysStringLen(text))) : "";
}

Bstr::Bstr(std::string_view text) {
  const std::wstring wide = Wide(text);
  text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!text_) throw Error(kOutOfMemory, "Scrivo.Text", "Out of memory");
}

BSTR Bstr::Detach() { return std::exchange(text_, nullptr); }

BSTR* Bstr::Put() {
  SysFreeString(Detach());
  return &text_;
}

}  // namespace scrivo

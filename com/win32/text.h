#pragma once

#include <string>
#include <string_view>

#include "com/win32/ole.h"

namespace scrivo {

// Text inside is bytes in the system's ANSI code page; the wide text of COM is converted here and
// nowhere else. Characters that the code page lacks become what the system puts in their place.

// Wide text of ANSI text; what lies behind a NUL is kept.
std::wstring WideText(std::string_view ansi);
// ANSI text of wide text. A null BSTR is "".
std::string AnsiText(std::wstring_view wide);
std::string AnsiText(BSTR text);

// Owns a BSTR, or none.
class Bstr {
 public:
  Bstr() = default;
  // Raises Error (kOutOfMemory).
  explicit Bstr(std::string_view ansi);
  Bstr(Bstr&& other) noexcept : text_(other.Detach()) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr& operator=(Bstr&&) = delete;

  BSTR get() const { return text_; }
  // Gives the text to the caller, who frees it with SysFreeString.
  BSTR Detach();
  // Where a function writes a new text; what was owned before is freed.
  BSTR* Put();

 private:
  BSTR text_ = nullptr;
};

}  // namespace scrivo

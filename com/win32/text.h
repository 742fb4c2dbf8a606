#pragma once

#include <string>
#include <string_view>

#include "com/win32/ole.h"
#include "platform/win32/wide.h"

namespace scrivo {

// The wide text of COM as text inside, without loss: what an object calls a page may be the name of
// a file. What lies behind a NUL is kept; a null BSTR is "".
std::string TextOf(BSTR text);

// Owns a BSTR, or none.
class Bstr {
 public:
  Bstr() = default;
  // Raises Error (kOutOfMemory).
  explicit Bstr(std::string_view text);
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

#pragma once

#include <string>
#include <string_view>

#include "com/win32/com_ptr.h"
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

// Owns what a VARIANT holds.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  ~Variant() { VariantClear(&value_); }
  Variant& operator=(Variant&&) = delete;

  // Stands for an optional argument that is left out.
  static Variant Omitted() {
    Variant omitted;
    omitted.value_.vt = VT_ERROR;
    omitted.value_.scode = DISP_E_PARAMNOTFOUND;
    return omitted;
  }
  // Raises Error (kOutOfMemory).
  static Variant Text(std::string_view text) {
    Variant variant;
    variant.value_.bstrVal = Bstr(text).Detach();
    variant.value_.vt = VT_BSTR;
    return variant;
  }
  static Variant Long(LONG number) {
    Variant variant;
    variant.value_.vt = VT_I4;
    variant.value_.lVal = number;
    return variant;
  }
  static Variant Boolean(bool truth) {
    Variant variant;
    variant.value_.vt = VT_BOOL;
    variant.value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    return variant;
  }
  // A reference of its own to `object`, which may be null.
  static Variant Object(IDispatch* object) {
    Variant variant;
    if (object) object->AddRef();
    variant.value_.vt = VT_DISPATCH;
    variant.value_.pdispVal = object;
    return variant;
  }

  // A reference of its own to `object`, which may be null.
  static Variant Unknown(IUnknown* object) {
    Variant variant;
    if (object) object->AddRef();
    variant.value_.vt = VT_UNKNOWN;
    variant.value_.punkVal = object;
    return variant;
  }

  const VARIANT& get() const { return value_; }
  VARTYPE Type() const { return value_.vt; }
  // Where a function writes a new value; what was held before is cleared.
  VARIANT* Put() {
    VariantClear(&value_);
    return &value_;
  }
  // Gives the value to the caller, who clears it with VariantClear.
  VARIANT Detach() {
    const VARIANT detached = value_;
    VariantInit(&value_);
    return detached;
  }

 private:
  VARIANT value_;
};

}  // namespace scrivo

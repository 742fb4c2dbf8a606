#pragma once

#include <new>

#include "com/win32/com_ptr.h"

namespace scrivo {

// While this object lives, windows get the controls that this library was made for, whatever the
// program that has loaded it uses itself.
class OwnControls {
 public:
  OwnControls();
  ~OwnControls();
  OwnControls(const OwnControls&) = delete;
  OwnControls& operator=(const OwnControls&) = delete;

 private:
  bool is_active_;
  ULONG_PTR cookie_ = 0;
};

// Runs what the host has called, with our own controls. No exception goes back to the host.
template <typename Body>
HRESULT FromHost(Body&& body) noexcept {
  try {
    const OwnControls controls;
    body();
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace scrivo

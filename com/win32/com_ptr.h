#pragma once

// The one place that includes the headers of COM and Automation: windows.h as this tree sees it
// leaves them out.
#include "platform/win32/windows.h"
// After windows.h, on which they stand.
#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>

#include <utility>

namespace scrivo {

// Owns one reference to a COM object, or none.
template <typename Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(const ComPtr& other) : pointer_(other.pointer_) {
    if (pointer_) pointer_->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ~ComPtr() { Reset(); }
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }

  // Owns a reference that the caller has.
  static ComPtr Take(Interface* pointer) {
    ComPtr taken;
    taken.pointer_ = pointer;
    return taken;
  }
  // Owns a reference of its own beside the caller's. `pointer` may be null.
  static ComPtr Share(Interface* pointer) {
    if (pointer) pointer->AddRef();
    return Take(pointer);
  }

  Interface* get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  Interface& operator*() const { return *pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }

  void Reset() {
    if (Interface* released = std::exchange(pointer_, nullptr)) released->Release();
  }
  // Gives the reference to the caller.
  Interface* Detach() { return std::exchange(pointer_, nullptr); }
  // Where a function writes a new reference; what was owned before is released.
  Interface** Put() {
    Reset();
    return &pointer_;
  }
  void** PutVoid() { return reinterpret_cast<void**>(Put()); }

  // Another interface of the same object; null when it has none or this is null.
  template <typename Other>
  ComPtr<Other> Query(REFIID id) const {
    ComPtr<Other> other;
    if (pointer_ && FAILED(pointer_->QueryInterface(id, other.PutVoid()))) other.Detach();
    return other;
  }

 private:
  Interface* pointer_ = nullptr;
};

}  // namespace scrivo

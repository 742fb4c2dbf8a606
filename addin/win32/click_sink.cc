#include "addin/win32/click_sink.h"

#include "addin/win32/click_connection.h"
#include "addin/win32/com_command_bars.h"
#include "addin/win32/host_entry.h"

namespace scrivo {
namespace {

constexpr DISPID kClickMember = 1;

// The host's cancel flag: a Boolean by reference, or a VARIANT by reference that holds one. A flag
// by value can only be read.
class CancelFlag {
 public:
  explicit CancelFlag(const VARIANT& argument) {
    if (argument.vt == (VT_BYREF | VT_BOOL)) {
      flag_ = argument.pboolVal;
    } else if (argument.vt == (VT_BYREF | VT_VARIANT)) {
      variant_ = argument.pvarVal;
      if (variant_ && variant_->vt == VT_BOOL) flag_ = &variant_->boolVal;
    }
  }

  bool Get() const { return flag_ && *flag_ != VARIANT_FALSE; }
  void Set(bool cancel) {
    const VARIANT_BOOL value = cancel ? VARIANT_TRUE : VARIANT_FALSE;
    if (flag_) {
      *flag_ = value;
    } else if (variant_) {
      VariantClear(variant_);
      variant_->vt = VT_BOOL;
      variant_->boolVal = value;
    }
  }

 private:
  VARIANT* variant_ = nullptr;
  VARIANT_BOOL* flag_ = nullptr;
};

// A copy of an argument, without its reference; the argument itself stays the host's.
Variant CopyOf(const VARIANT& argument) {
  Variant copy;
  VariantCopyInd(copy.Put(), const_cast<VARIANT*>(&argument));
  return copy;
}

}  // namespace

HRESULT ClickSink::Invoke(DISPID member, REFIID id, LCID, WORD, DISPPARAMS* arguments, VARIANT*,
                          EXCEPINFO*, UINT*) {
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (member != kClickMember) return DISP_E_MEMBERNOTFOUND;
  if (!arguments || arguments->cArgs != 2) return DISP_E_BADPARAMCOUNT;
  const auto self = ComPtr<IDispatch>::Share(this);  // a click may end in a disconnection
  return FromHost([&] {
    const std::shared_ptr<void> alive = listener_.lock();
    const CommandBarControl::ClickHandler handler = handler_;
    if (!alive || !handler) return;
    ComControl control(ObjectOf(CopyOf(arguments->rgvarg[1])), listener_);
    CancelFlag flag(arguments->rgvarg[0]);
    const bool was_cancelled = flag.Get();
    bool cancelled = was_cancelled;
    handler(control, cancelled);
    if (cancelled != was_cancelled) flag.Set(cancelled);
  });
}

const DispatchTable& ClickSink::Members() const {
  static const DispatchTable none;
  return none;
}

void* ClickSink::OtherInterface(REFIID id) {
  return id == kButtonEvents ? static_cast<IDispatch*>(this) : nullptr;
}

}  // namespace scrivo

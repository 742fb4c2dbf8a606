#include "addin/win32/click_connection.h"

#include <utility>

#include "addin/win32/com_host.h"
#include "addin/win32/host_entry.h"
#include "com/win32/dispatch_call.h"

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

const GUID kButtonEvents = {
    0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

ClickConnection::ClickConnection(const LateBound& control, CommandBarControl::ClickHandler handler,
                                 std::weak_ptr<void> listener)
    : sink_(MakeObject<ClickSink>(std::move(handler), std::move(listener))) {
  const auto container = ComPtr<IDispatch>::Share(control.get())
                             .Query<IConnectionPointContainer>(IID_IConnectionPointContainer);
  if (!container) RaiseComError(E_NOINTERFACE, "a button without events");
  ComPtr<IConnectionPoint> point;
  const HRESULT found = container->FindConnectionPoint(kButtonEvents, point.Put());
  if (FAILED(found)) RaiseComError(found, "the clicks of a button");
  const HRESULT advised = point->Advise(sink_.get(), &cookie_);
  if (FAILED(advised)) RaiseComError(advised, "the clicks of a button");
  point_ = std::move(point);
}

ClickConnection::ClickConnection(ClickConnection&& other) noexcept
    : sink_(std::move(other.sink_)),
      point_(std::move(other.point_)),
      cookie_(std::exchange(other.cookie_, 0)) {}

ClickConnection::~ClickConnection() {
  if (!point_) return;
  // A host may keep the sink for longer, or be in the middle of a click: nobody is called from here
  // on.
  sink_->Silence();
  point_->Unadvise(cookie_);
}

}  // namespace scrivo

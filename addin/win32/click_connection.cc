#include "addin/win32/click_connection.h"

#include <utility>

#include "addin/win32/click_sink.h"
#include "com/win32/com_error.h"

namespace scrivo {

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

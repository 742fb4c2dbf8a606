#pragma once

#include <memory>

#include "addin/addin_host.h"
#include "com/win32/com_ptr.h"
#include "com/win32/dispatch_call.h"

namespace scrivo {

class ClickSink;

// The dispatch interface under which the host's buttons send their clicks.
extern const GUID kButtonEvents;

// A subscription to a button's clicks, which ends with this object.
class ClickConnection {
 public:
  // `handler` hears the clicks; it must not throw. `listener` is kept alive while it runs. Raises
  // Error when the control sends no clicks.
  ClickConnection(const LateBound& control, CommandBarControl::ClickHandler handler,
                  std::weak_ptr<void> listener);
  ClickConnection(ClickConnection&& other) noexcept;
  ~ClickConnection();
  ClickConnection& operator=(ClickConnection&&) = delete;

 private:
  ComPtr<ClickSink> sink_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace scrivo

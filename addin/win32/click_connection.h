#pragma once

#include <memory>

#include "addin/addin_host.h"
#include "com/win32/com_ptr.h"
#include "com/win32/dispatch_call.h"
#include "com/win32/dispatch_object.h"

namespace scrivo {

// What the host calls when a button is clicked.
class ClickSink : public DispatchObject {
 public:
  ClickSink(CommandBarControl::ClickHandler handler, std::weak_ptr<void> listener)
      : handler_(std::move(handler)), listener_(std::move(listener)) {}

  // Click(Ctrl, CancelDefault), the one event. Hosts differ in how they pass both.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD kinds,
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrong_argument) override;
  // From now on clicks go nowhere.
  void Silence() { handler_ = nullptr; }

 protected:
  // Hosts send events by number.
  const DispatchTable& Members() const override;
  void* OtherInterface(REFIID id) override;

 private:
  CommandBarControl::ClickHandler handler_;
  std::weak_ptr<void> listener_;
};

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

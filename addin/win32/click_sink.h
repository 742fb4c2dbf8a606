#pragma once

#include <memory>

#include "addin/addin_host.h"
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

}  // namespace scrivo

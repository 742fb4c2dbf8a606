#pragma once

#include <memory>

#include "host/bar_model.h"
#include "host/win32/click_point.h"
#include "host/win32/host_object.h"

namespace scrivo::host {

// CommandBarControl: a button (CommandBarButton) or a popup (CommandBarPopup). A control has at
// most one object, which lives as long as somebody holds it; when the last reference goes, those
// who listened to its clicks hear them no more.
class ControlObject : public HostObject {
 public:
  ControlObject(std::shared_ptr<HostWorld> world, std::shared_ptr<BarControl> control);
  ~ControlObject() override;

  // True when a listener has cancelled the click.
  bool TellClick() { return clicks_->TellClick(this); }

 private:
  // The button as a container of connection points: the same object to its callers.
  class Container : public IConnectionPointContainer {
   public:
    explicit Container(ControlObject* control) : control_(*control) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
      return control_.QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return control_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return control_.Release(); }
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

   private:
    ControlObject& control_;
  };

  const DispatchTable& Members() const override;
  void* OtherInterface(REFIID id) override;
  void Entering(const DispatchMember& member) override;
  Variant Parent() override;

  static const DispatchTable& ControlMembers();
  static const DispatchTable& ButtonMembers();
  static const DispatchTable& PopupMembers();

  const std::shared_ptr<BarControl> control_;
  Container container_{this};
  ComPtr<ClickPoint> clicks_;
};

// The control's object.
Variant ControlOf(const std::shared_ptr<HostWorld>& world,
                  const std::shared_ptr<BarControl>& control);

}  // namespace scrivo::host

#include "host/win32/host_world.h"

#include "host/session.h"
#include "host/win32/control_object.h"
#include "host/win32/host_object.h"
#include "host/win32/object_model.h"

namespace scrivo::host {

std::shared_ptr<HostWorld> HostWorld::Make(PathStyle style) {
  std::shared_ptr<HostWorld> world(new HostWorld(style));
  const auto menu_bar = world->bars.AddBuiltIn("Menu Bar");
  world->bars.AddBuiltIn("Standard");
  const auto tools = menu_bar->Add(kBarPopup);
  tools->id = 30007;
  tools->caption = "&Tools";
  tools->bar = world->bars.AddBuiltIn("Tools");
  return world;
}

ComPtr<IDispatch> HostWorld::Application() {
  return ComPtr<IDispatch>::Share(ApplicationOf(shared_from_this()).get().pdispVal);
}

HostObject* HostWorld::Own(IDispatch* object) const {
  for (HostObject* own : objects) {
    if (own == object) return own;
  }
  return nullptr;
}

void HostWorld::Press(const std::shared_ptr<BarControl>& control) {
  if (control->type != kBarButton) throw HostError("A menu cannot be pressed.");
  if (!control->owner.lock()) throw HostError("The control has been deleted.");
  if (!control->enabled) throw HostError("The control is disabled.");
  const auto world = shared_from_this();  // a press may end the program
  const std::string addin = AddinOfAction(control->on_action);
  if (!addin.empty()) world->addins.ConnectOnDemand(addin);
  bool cancelled = false;
  const auto listening = world->control_objects.find(control.get());
  if (listening != world->control_objects.end()) cancelled = listening->second->TellClick();
  if (!cancelled && control->command) control->command();
}

void HostWorld::ShutDown() {
  addins.DisconnectAll();
  bars.DropTemporaries();
}

}  // namespace scrivo::host

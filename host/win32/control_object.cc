#include "host/win32/control_object.h"

#include <olectl.h>

#include <algorithm>

#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {

ControlObject::ControlObject(std::shared_ptr<HostWorld> world, std::shared_ptr<BarControl> control)
    : HostObject(std::move(world),
                 control->type == kBarButton ? "CommandBarButton" : "CommandBarPopup"),
      control_(std::move(control)),
      clicks_(ComPtr<ClickPoint>::Take(new ClickPoint(&container_))) {
  world_->control_objects[control_.get()] = this;
}

ControlObject::~ControlObject() {
  clicks_->Close();
  world_->control_objects.erase(control_.get());
}

HRESULT ControlObject::Container::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (points) *points = nullptr;
  return E_NOTIMPL;
}

HRESULT ControlObject::Container::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (id != kButtonEventsId) return CONNECT_E_NOCONNECTION;
  *point = control_.clicks_.get();
  (*point)->AddRef();
  return S_OK;
}

void* ControlObject::OtherInterface(REFIID id) {
  const bool has_events = control_->type == kBarButton && id == IID_IConnectionPointContainer;
  return has_events ? static_cast<IConnectionPointContainer*>(&container_) : nullptr;
}

void ControlObject::Entering(const DispatchMember& member) {
  HostObject::Entering(member);
  if (!control_->owner.lock()) throw HostError("The control has been deleted.");
}

Variant ControlObject::Parent() { return CommandBarOf(world_, control_->owner.lock()); }

const DispatchTable& ControlObject::Members() const {
  return control_->type == kBarButton ? ButtonMembers() : PopupMembers();
}

const DispatchTable& ControlObject::ControlMembers() {
  using Self = ControlObject;
  using Arguments = DispatchArguments;
  static const auto table = [] {
    DispatchTableOf<Self> members;
    members.Include(CommonMembers());
    // A property for each field that can be read and written.
    const auto add_text = [&](DISPID id, const wchar_t* name, std::string BarControl::*field) {
      members.Add(
          {id, name, DISPATCH_PROPERTYGET, {}, [field](DispatchObject& self, const Arguments&) {
             return Variant::Text((*static_cast<Self&>(self).control_).*field);
           }});
      members.Add({id,
                   name,
                   DISPATCH_PROPERTYPUT,
                   {{L"Value", VT_BSTR}},
                   [field](DispatchObject& self, const Arguments& arguments) {
                     (*static_cast<Self&>(self).control_).*field = arguments.Text(0);
                     static_cast<Self&>(self).world_->bars.Changed();
                     return Variant();
                   }});
    };
    const auto add_flag = [&](DISPID id, const wchar_t* name, bool BarControl::*field) {
      members.Add(
          {id, name, DISPATCH_PROPERTYGET, {}, [field](DispatchObject& self, const Arguments&) {
             return Variant::Boolean((*static_cast<Self&>(self).control_).*field);
           }});
      members.Add({id,
                   name,
                   DISPATCH_PROPERTYPUT,
                   {{L"Value", VT_BOOL}},
                   [field](DispatchObject& self, const Arguments& arguments) {
                     (*static_cast<Self&>(self).control_).*field = arguments.Boolean(0);
                     static_cast<Self&>(self).world_->bars.Changed();
                     return Variant();
                   }});
    };
    add_text(0x60040003, L"Caption", &BarControl::caption);
    add_text(0x6004001A, L"OnAction", &BarControl::on_action);
    add_text(0x60040023, L"Tag", &BarControl::tag);
    add_text(0x6004001D, L"Parameter", &BarControl::parameter);
    add_text(0x60040008, L"DescriptionText", &BarControl::description);
    add_text(0x60040025, L"TooltipText", &BarControl::tooltip);
    add_flag(0x60040000, L"BeginGroup", &BarControl::begin_group);
    add_flag(0x60040029, L"Visible", &BarControl::visible);
    add_flag(0x6004000A, L"Enabled", &BarControl::enabled);
    members
        .Get(0x60040013, L"Id",
             [](Self& self, const Arguments&) { return Variant::Long(self.control_->id); })
        .Get(0x60040028, L"Type",
             [](Self& self, const Arguments&) { return Variant::Long(self.control_->type); })
        .Get(0x60040002, L"BuiltIn",
             [](Self& self, const Arguments&) {
               return Variant::Boolean(self.control_->IsBuiltIn());
             })
        .Get(0x60040014, L"Index",
             [](Self& self, const Arguments&) {
               const auto& controls = self.control_->owner.lock()->controls;
               const auto place = std::find(controls.begin(), controls.end(), self.control_);
               return Variant::Long(static_cast<LONG>(place - controls.begin()) + 1);
             })
        .Call(0x60040007, L"Delete", {{L"Temporary", VT_BOOL, true}},
              [](Self& self, const Arguments&) {
                Remove(self.control_.get());
                self.world_->bars.Changed();
              })
        .Call(0x6004000C, L"Execute", {},
              [](Self& self, const Arguments&) { self.world_->Press(self.control_); });
    return members;
  }();
  return table;
}

const DispatchTable& ControlObject::ButtonMembers() {
  using Self = ControlObject;
  using Arguments = DispatchArguments;
  static const auto table =
      DispatchTableOf<Self>()
          .Include(ControlMembers())
          .Get(0x60050001, L"FaceId",
               [](Self& self, const Arguments&) { return Variant::Long(self.control_->face); })
          .Put(0x60050001, L"FaceId", VT_I4,
               [](Self& self, const Arguments& arguments) {
                 self.control_->face = arguments.Long(0);
                 self.world_->bars.Changed();
               })
          .Get(0x60050002, L"ShortcutText",
               [](Self& self, const Arguments&) { return Variant::Text(self.control_->shortcut); })
          .Put(0x60050002, L"ShortcutText", VT_BSTR,
               [](Self& self, const Arguments& arguments) {
                 self.control_->shortcut = arguments.Text(0);
                 self.world_->bars.Changed();
               })
          .Get(0x60050003, L"Style",
               [](Self& self, const Arguments&) { return Variant::Long(self.control_->style); })
          .Put(0x60050003, L"Style", VT_I4, [](Self& self, const Arguments& arguments) {
            const LONG style = arguments.Long(0);
            if (style < 0 || style > 3) throw HostError("There is no such style.", kBadArgument);
            self.control_->style = style;
            self.world_->bars.Changed();
          });
  return table;
}

const DispatchTable& ControlObject::PopupMembers() {
  using Self = ControlObject;
  using Arguments = DispatchArguments;
  static const auto table = DispatchTableOf<Self>()
                                .Include(ControlMembers())
                                .Get(0x60050000, L"CommandBar",
                                     [](Self& self, const Arguments&) {
                                       return CommandBarOf(self.world_, self.control_->bar);
                                     })
                                .Get(0x60050001, L"Controls", [](Self& self, const Arguments&) {
                                  return ControlsOf(self.world_, self.control_->bar);
                                });
  return table;
}

Variant ControlOf(const std::shared_ptr<HostWorld>& world,
                  const std::shared_ptr<BarControl>& control) {
  const auto living = world->control_objects.find(control.get());
  if (living != world->control_objects.end()) return Variant::Object(living->second);
  return Variant::Object(MakeObject<ControlObject>(world, control).get());
}

}  // namespace scrivo::host

#include <algorithm>

#include "host/win32/control_object.h"
#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {
namespace {

class ControlsObject : public HostCollection {
 public:
  ControlsObject(std::shared_ptr<HostWorld> world, std::shared_ptr<Bar> bar)
      : HostCollection(std::move(world), "CommandBarControls", 1), bar_(std::move(bar)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  Variant Parent() override { return CommandBarOf(world_, bar_); }
  std::size_t Count() override { return bar_->controls.size(); }
  Variant ItemAt(std::size_t index) override { return ControlOf(world_, bar_->controls[index]); }
  Variant ItemNamed(const std::string& name) override {
    if (const auto control = bar_->Find(name)) return ControlOf(world_, control);
    throw HostError("There is no control \"" + name + "\".", kBadArgument);
  }

  Variant AddControl(const DispatchArguments& arguments) {
    const LONG type = arguments.Has(0) ? arguments.Long(0) : LONG{kBarButton};
    if (type != kBarButton && type != kBarPopup) {
      throw HostError("Controls of type " + std::to_string(type) + " cannot be made.",
                      kBadArgument);
    }
    if (arguments.Has(1) && arguments.Long(1) != 1) {
      throw HostError("There is no built-in control " + std::to_string(arguments.Long(1)) + ".",
                      kBadArgument);
    }
    std::size_t before = bar_->controls.size();
    if (arguments.Has(3)) {
      const LONG place = arguments.Long(3);
      if (place < 1 || static_cast<std::size_t>(place) > bar_->controls.size() + 1) {
        throw HostError("There is no place " + std::to_string(place) + ".", kBadArgument);
      }
      before = static_cast<std::size_t>(place - 1);
    }
    const auto control = bar_->Add(static_cast<BarControlType>(type), before);
    control->parameter = arguments.Text(2);
    control->temporary = arguments.Boolean(4);
    world_->bars.Changed();
    return ControlOf(world_, control);
  }

  static const DispatchTable& Table() {
    static const auto table =
        DispatchTableOf<ControlsObject>()
            .Include(CollectionMembers())
            .Method(0x60030000, L"Add",
                    {{L"Type", VT_I4, true},
                     {L"Id", VT_I4, true},
                     {L"Parameter", VT_BSTR, true},
                     {L"Before", VT_I4, true},
                     {L"Temporary", VT_BOOL, true}},
                    [](ControlsObject& self, const DispatchArguments& arguments) {
                      return self.AddControl(arguments);
                    });
    return table;
  }

  const std::shared_ptr<Bar> bar_;
};

class BarObject : public HostObject {
 public:
  BarObject(std::shared_ptr<HostWorld> world, std::shared_ptr<Bar> bar)
      : HostObject(std::move(world), "CommandBar"), bar_(std::move(bar)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }

  void Delete() {
    if (bar_->built_in) throw HostError("A built-in bar cannot be deleted.");
    std::erase(world_->bars.bars, bar_);
    world_->bars.Changed();
  }

  static const DispatchTable& Table() {
    using Self = BarObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(0x60040003, L"Controls",
                 [](Self& self, const Arguments&) { return ControlsOf(self.world_, self.bar_); })
            .Get(0x6004000E, L"Name",
                 [](Self& self, const Arguments&) { return Variant::Text(self.bar_->name); })
            .Get(0x60040010, L"NameLocal",
                 [](Self& self, const Arguments&) { return Variant::Text(self.bar_->name); })
            .Get(0x60040000, L"BuiltIn",
                 [](Self& self, const Arguments&) { return Variant::Boolean(self.bar_->built_in); })
            .Get(0x60040019, L"Visible",
                 [](Self& self, const Arguments&) { return Variant::Boolean(self.bar_->visible); })
            .Put(0x60040019, L"Visible", VT_BOOL,
                 [](Self& self, const Arguments& arguments) {
                   self.bar_->visible = arguments.Boolean(0);
                   self.world_->bars.Changed();
                 })
            .Get(0x60040006, L"Enabled",
                 [](Self& self, const Arguments&) { return Variant::Boolean(self.bar_->enabled); })
            .Put(0x60040006, L"Enabled", VT_BOOL,
                 [](Self& self, const Arguments& arguments) {
                   self.bar_->enabled = arguments.Boolean(0);
                   self.world_->bars.Changed();
                 })
            .Call(0x60040005, L"Delete", {}, [](Self& self, const Arguments&) { self.Delete(); });
    return table;
  }

  const std::shared_ptr<Bar> bar_;
};

// The first control below a bar that a test approves; menus are searched too.
template <typename Test>
std::shared_ptr<BarControl> FindBelow(const Bar& bar, const Test& test) {
  for (const auto& control : bar.controls) {
    if (test(*control)) return control;
    if (!control->bar) continue;
    if (auto found = FindBelow(*control->bar, test)) return found;
  }
  return nullptr;
}

class BarsObject : public HostCollection {
 public:
  explicit BarsObject(std::shared_ptr<HostWorld> world)
      : HostCollection(std::move(world), "CommandBars", 1) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  std::size_t Count() override { return world_->bars.bars.size(); }
  Variant ItemAt(std::size_t index) override {
    return CommandBarOf(world_, world_->bars.bars[index]);
  }
  Variant ItemNamed(const std::string& name) override {
    if (const auto bar = world_->bars.Find(name)) return CommandBarOf(world_, bar);
    throw HostError("There is no command bar \"" + name + "\".", kBadArgument);
  }

  Variant AddBar(const DispatchArguments& arguments) {
    const std::string name =
        arguments.Has(0) ? arguments.Text(0) : "Custom " + std::to_string(Count() + 1);
    if (name.empty() || world_->bars.Find(name)) {
      throw HostError("There is a command bar \"" + name + "\" already.", kBadArgument);
    }
    const auto bar = world_->bars.AddBuiltIn(name);
    bar->built_in = false;
    bar->visible = false;
    world_->bars.Changed();
    return CommandBarOf(world_, bar);
  }

  Variant FindControl(const DispatchArguments& arguments) {
    const auto is_meant = [&](const BarControl& control) {
      return (!arguments.Has(0) || control.type == arguments.Long(0)) &&
             (!arguments.Has(1) || control.id == arguments.Long(1)) &&
             (!arguments.Has(2) || control.tag == arguments.Text(2)) &&
             (!arguments.Boolean(3) || control.visible);
    };
    for (const auto& bar : world_->bars.bars) {
      if (const auto control = FindBelow(*bar, is_meant)) return ControlOf(world_, control);
    }
    return Variant::Object(nullptr);
  }

  static const DispatchTable& Table() {
    using Self = BarsObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CollectionMembers())
            .Get(2, L"ActiveMenuBar",
                 [](Self& self, const Arguments&) { return self.ItemNamed("Menu Bar"); })
            .Method(3, L"Add",
                    {{L"Name", VT_BSTR, true},
                     {L"Position", VT_I4, true},
                     {L"MenuBar", VT_BOOL, true},
                     {L"Temporary", VT_BOOL, true}},
                    [](Self& self, const Arguments& arguments) { return self.AddBar(arguments); })
            .Method(
                4, L"FindControl",
                {{L"Type", VT_I4, true},
                 {L"Id", VT_I4, true},
                 {L"Tag", VT_BSTR, true},
                 {L"Visible", VT_BOOL, true}},
                [](Self& self, const Arguments& arguments) { return self.FindControl(arguments); });
    return table;
  }
};

}  // namespace

Variant CommandBarsOf(const std::shared_ptr<HostWorld>& world) {
  return Variant::Object(MakeObject<BarsObject>(world).get());
}

Variant CommandBarOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Bar>& bar) {
  return Variant::Object(MakeObject<BarObject>(world, bar).get());
}

Variant ControlsOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Bar>& bar) {
  return Variant::Object(MakeObject<ControlsObject>(world, bar).get());
}

}  // namespace scrivo::host

#include "addin/win32/com_command_bars.h"

#include "addin/win32/collection.h"

namespace scrivo {
namespace {

std::shared_ptr<CommandBarControl> ControlOrNull(LateBound control,
                                                 const std::weak_ptr<void>& listener) {
  return control ? std::make_shared<ComControl>(std::move(control), listener) : nullptr;
}

}  // namespace

bool ComControl::Visible() { return TruthOf(control_.Get(L"Visible")); }

void ComControl::Caption(const std::string& caption) {
  control_.Put(L"Caption", Variant::Text(caption));
}

void ComControl::OnAction(const std::string& action) {
  control_.Put(L"OnAction", Variant::Text(action));
}

void ComControl::BeginGroup(bool begins) { control_.Put(L"BeginGroup", Variant::Boolean(begins)); }

void ComControl::FaceId(std::int32_t face) { control_.Put(L"FaceId", Variant::Long(face)); }

void ComControl::Delete() { control_.Call(L"Delete", Variant::Omitted()); }

std::shared_ptr<CommandBarControls> ComControl::Controls() {
  return std::make_shared<ComControls>(ObjectOf(control_.Get(L"Controls")), listener_);
}

void ComControl::OnClick(ClickHandler handler) {
  clicks_.emplace_back(control_, std::move(handler), listener_);
}

std::shared_ptr<CommandBarControl> ComControls::Item(const std::string& caption) {
  return ControlOrNull(ObjectOf(ItemOf(controls_, Variant::Text(caption))), listener_);
}

std::shared_ptr<CommandBarControl> ComControls::Add(ControlType type,
                                                    std::optional<bool> temporary) {
  // All five slots are filled: not every host lets the last ones be missing.
  return ControlOrNull(
      ObjectOf(controls_.Get(L"Add", Variant::Long(type), Variant::Omitted(), Variant::Omitted(),
                             Variant::Omitted(),
                             temporary ? Variant::Boolean(*temporary) : Variant::Omitted())),
      listener_);
}

std::shared_ptr<CommandBarControls> ComBar::Controls() {
  return std::make_shared<ComControls>(ObjectOf(bar_.Get(L"Controls")), listener_);
}

}  // namespace scrivo

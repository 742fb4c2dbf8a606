#include "host/bar_model.h"

#include <algorithm>

#include "text/ascii_text.h"

namespace scrivo::host {

std::string WithoutMarks(std::string_view caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && ++i == caption.size()) break;
    plain += caption[i];
  }
  return plain;
}

std::shared_ptr<BarControl> Bar::Add(BarControlType type, std::size_t before) {
  auto control = std::make_shared<BarControl>();
  control->type = type;
  control->owner = weak_from_this();
  if (type == kBarPopup) control->bar = std::make_shared<Bar>();
  const auto place =
      controls.begin() + static_cast<std::ptrdiff_t>(std::min(before, controls.size()));
  return *controls.insert(place, std::move(control));
}

std::shared_ptr<BarControl> Bar::Find(const std::string& caption) const {
  const std::string wanted = WithoutMarks(caption);
  for (const auto& control : controls) {
    if (EqualsIgnoringCase(WithoutMarks(control->caption), wanted)) return control;
  }
  return nullptr;
}

void Remove(BarControl* control) {
  const std::shared_ptr<Bar> owner = control->owner.lock();
  if (!owner) return;
  control->owner.reset();
  std::erase_if(owner->controls, [&](const auto& other) { return other.get() == control; });
}

std::shared_ptr<Bar> BarModel::AddBuiltIn(const std::string& name) {
  auto bar = std::make_shared<Bar>();
  bar->name = name;
  bar->built_in = true;
  bars.push_back(bar);
  return bar;
}

std::shared_ptr<BarControl> BarModel::AddCommand(Bar* bar, std::int32_t id,
                                                 const std::string& caption, std::int32_t face,
                                                 std::function<void()> command) {
  const std::shared_ptr<BarControl> button = bar->Add(kBarButton);
  button->id = id;
  button->caption = caption;
  button->face = face;
  button->command = std::move(command);
  return button;
}

std::shared_ptr<Bar> BarModel::Find(const std::string& name) const {
  for (const auto& bar : bars) {
    if (EqualsIgnoringCase(bar->name, name)) return bar;
  }
  return nullptr;
}

void BarModel::DropTemporaries() {
  for (const auto& bar : bars) {
    const auto controls = bar->controls;
    for (const auto& control : controls) {
      if (control->temporary) Remove(control.get());
    }
  }
  Changed();
}

std::string AddinOfAction(const std::string& on_action) {
  if (on_action.size() < 4 || !on_action.starts_with("!<") || !on_action.ends_with(">")) return "";
  return on_action.substr(2, on_action.size() - 3);
}

std::vector<MenuLine> MenuOf(const Bar& bar) {
  std::vector<MenuLine> lines;
  for (const auto& control : bar.controls) {
    if (!control->visible) continue;
    if (control->begin_group && !lines.empty()) lines.push_back({});
    lines.push_back({control, control->bar ? MenuOf(*control->bar) : std::vector<MenuLine>()});
  }
  return lines;
}

}  // namespace scrivo::host

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo::host {

// A caption without its access key marks: "&Tools" is "Tools"; "&&" stands for one "&".
std::string WithoutMarks(std::string_view caption);

struct Bar;

// Control types of Office's command bars; the host makes these two.
enum BarControlType : std::int32_t { kBarButton = 1, kBarPopup = 10 };

// A control on a command bar. Texts are UTF-8.
struct BarControl {
  BarControlType type = kBarButton;
  std::int32_t id = 1;  // every control that is not built in has 1
  std::string caption, on_action, tag, parameter, description, tooltip, shortcut;
  bool begin_group = false;
  bool visible = true;
  bool enabled = true;
  bool temporary = false;
  std::int32_t face = 0;   // a built-in picture, by number
  std::int32_t style = 0;  // 0 automatic, 1 picture, 2 caption, 3 both
  // What a built-in button does; empty for all others.
  std::function<void()> command;
  std::shared_ptr<Bar> bar;  // a popup's own; null for a button
  std::weak_ptr<Bar> owner;  // the bar that it stands on; none once it is deleted

  bool IsBuiltIn() const { return id != 1; }
};

// A command bar, or the menu of a popup.
struct Bar : public std::enable_shared_from_this<Bar> {
  std::string name;
  bool visible = true;
  bool enabled = true;
  bool built_in = false;
  std::vector<std::shared_ptr<BarControl>> controls;

  // Adds a control before the one at `before` (from 0), or at the end when there is none there.
  std::shared_ptr<BarControl> Add(BarControlType type, std::size_t before = SIZE_MAX);
  // The first control with this caption, letter case and access key marks aside; null when there
  // is none.
  std::shared_ptr<BarControl> Find(const std::string& caption) const;
};

// Takes a control from its bar, with all that is below it.
void Remove(BarControl* control);

// The command bars of the host.
class BarModel {
 public:
  // Called after something on the bars has changed.
  std::function<void()> on_change;
  std::vector<std::shared_ptr<Bar>> bars;

  // Adds a bar of the host's own.
  std::shared_ptr<Bar> AddBuiltIn(const std::string& name);
  // Adds a button of the host's own that runs `command`.
  static std::shared_ptr<BarControl> AddCommand(Bar* bar, std::int32_t id,
                                                const std::string& caption, std::int32_t face,
                                                std::function<void()> command);
  // The bar with this name in any letter case; null when there is none.
  std::shared_ptr<Bar> Find(const std::string& name) const;
  // Removes every control and bar that was added as temporary, as hosts do when they close. Those
  // that were not go too when the program ends: this host keeps no settings for its bars.
  void DropTemporaries();
  void Changed() const {
    if (on_change) on_change();
  }
};

// The add-in that an action names, "!<ProgID>"; "" when it names none.
std::string AddinOfAction(const std::string& on_action);

// One line of a menu that shows a command bar.
struct MenuLine {
  std::shared_ptr<BarControl> control;  // null for a separator
  std::vector<MenuLine> lines;          // of a popup
};

// The lines of a menu for a bar: its visible controls in order, a separator before each that
// begins a group, except at the menu's very top.
std::vector<MenuLine> MenuOf(const Bar& bar);

}  // namespace scrivo::host

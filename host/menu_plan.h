#pragma once

#include <memory>
#include <vector>

#include "host/bar_model.h"

namespace scrivo::host {

// One line of a menu that shows a command bar.
struct MenuLine {
  std::shared_ptr<BarControl> control;  // null for a separator
  std::vector<MenuLine> lines;          // of a popup
};

// The lines of a menu for a bar: its visible controls in order, a separator before each that
// begins a group, except at the menu's very top.
std::vector<MenuLine> MenuOf(const Bar& bar);

}  // namespace scrivo::host

#include "host/menu_plan.h"

namespace scrivo::host {

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

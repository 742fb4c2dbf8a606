#include "host/win32/bar_menu.h"

#include "platform/win32/wide.h"

namespace scrivo::host {

UINT ControlIds::IdOf(const std::shared_ptr<BarControl>& control) {
  for (auto place = controls_.begin(); place != controls_.end();) {
    const std::shared_ptr<BarControl> known = place->second.lock();
    if (known == control) return place->first;
    place = known ? std::next(place) : controls_.erase(place);
  }
  const UINT id = next_;
  next_ = next_ == kLast ? kFirst : next_ + 1;
  controls_[id] = control;
  return id;
}

std::shared_ptr<BarControl> ControlIds::Find(UINT id) const {
  const auto place = controls_.find(id);
  return place == controls_.end() ? nullptr : place->second.lock();
}

void AppendLines(HMENU menu, const std::vector<MenuLine>& lines, ControlIds* ids,
                 FaceImages* images) {
  for (const MenuLine& line : lines) {
    if (!line.control) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    std::wstring text = Wide(MenuText(*line.control));
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STRING | MIIM_STATE | MIIM_ID | MIIM_BITMAP;
    item.fState = line.control->enabled ? MFS_ENABLED : MFS_GRAYED;
    item.wID = ids->IdOf(line.control);
    item.dwTypeData = text.data();
    item.hbmpItem = images->MenuBitmap(line.control->face);
    if (line.control->bar) {
      item.fMask |= MIIM_SUBMENU;
      item.hSubMenu = CreatePopupMenu();
      AppendLines(item.hSubMenu, line.lines, ids, images);
    }
    InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &item);
  }
}

std::string MenuText(const BarControl& control) {
  return control.shortcut.empty() ? control.caption : control.caption + "\t" + control.shortcut;
}

}  // namespace scrivo::host

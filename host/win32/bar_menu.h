#pragma once

#include <map>
#include <memory>

#include "host/bar_model.h"
#include "host/win32/face_images.h"

namespace scrivo::host {

// The command numbers of the controls on the command bars. A control keeps its number, so that a
// command on its way means the same when the menus have been made anew meanwhile.
class ControlIds {
 public:
  static constexpr UINT kFirst = 2000, kLast = 0xEFFF;

  UINT IdOf(const std::shared_ptr<BarControl>& control);
  // Null when no living control has this number.
  std::shared_ptr<BarControl> Find(UINT id) const;

 private:
  std::map<UINT, std::weak_ptr<BarControl>> controls_;
  UINT next_ = kFirst;
};

// Writes a menu's lines at the end of `menu`.
void AppendLines(HMENU menu, const std::vector<MenuLine>& lines, ControlIds* ids,
                 FaceImages* images);

// A caption as menus show it: the shortcut stands at its right.
std::string MenuText(const BarControl& control);

}  // namespace scrivo::host

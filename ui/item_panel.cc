#include "ui/item_panel.h"

#include <algorithm>

#include "system/error.h"

namespace scrivo {

Item& ItemPanel::operator[](const std::string& key) {
  const auto row =
      std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item.key == key; });
  if (row == items_.end()) {
    throw Error(kInvalidProcedureCall, "Scrivo.ItemPanel", "There is no item \"" + key + "\"");
  }
  return *row;
}

}  // namespace scrivo

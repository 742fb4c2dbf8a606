#include "ui/button_strip.h"

#include <algorithm>
#include <numeric>

#include "system/error.h"

namespace scrivo {

StripItem& ButtonStrip::operator[](const std::string& key) {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const StripItem& item) { return item.key == key; });
  if (found == items_.end()) {
    throw Error(kInvalidProcedureCall, "Scrivo.ButtonStrip", "There is no button \"" + key + "\"");
  }
  return *found;
}

void ButtonStrip::Remove(const std::string& key) {
  std::erase_if(items_, [&](const StripItem& item) { return item.key == key; });
}

float ButtonStrip::ItemsWidth() const {
  return std::accumulate(items_.begin(), items_.end(), 0.0F,
                         [](float sum, const StripItem& item) { return sum + item.width; });
}

}  // namespace scrivo

#include "ui/button_strip.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "system/error.h"
#include "text/ascii_text.h"

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

std::vector<std::string> WithAccessKeys(const std::vector<std::string>& captions) {
  std::vector<std::string> marked;
  std::set<char> taken;
  for (const std::string& caption : captions) {
    std::string text;
    bool has_key = false;
    for (const char c : caption) {
      if (!has_key && IsAsciiLetter(c) && taken.insert(AsciiLower(c)).second) {
        has_key = true;
        text += '&';
      }
      text += c;
      if (c == '&') text += '&';
    }
    marked.push_back(text);
  }
  return marked;
}

}  // namespace scrivo

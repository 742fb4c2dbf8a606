#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "system/error.h"

namespace scrivo {

enum class ItemKind { kSeparator, kText, kTextWithButton, kList, kGroup, kCheckBox };

// One choice of a kList item.
struct ListEntry {
  std::string text;  // what is shown
  std::string key;   // what it stands for
  int parameter;     // the list control's entry parameter
};

// One row of an item panel.
struct Item {
  std::string key;
  std::string caption;
  ItemKind kind;
  std::string text{};  // what is shown or typed (kText, kTextWithButton, kList)
  std::string data{};  // what is meant by it (kList: the chosen entry's key)
  bool checked = false;
  float size = 0;        // layout value of a separator
  float edit_width = 0;  // width of the edit part, in twips
  std::vector<ListEntry> entries{};
};

// The rows of a parameter dialog as plain data: the presenter fills and reads them, a view shows
// them.
class ItemPanel {
 public:
  explicit ItemPanel(std::vector<Item> items) : items_(std::move(items)) {}

  // The row with this key. Raises Error (kInvalidProcedureCall) when there is none.
  Item& operator[](const std::string& key) {
    const auto row = std::find_if(items_.begin(), items_.end(),
                                  [&](const Item& item) { return item.key == key; });
    if (row == items_.end()) {
      throw Error(kInvalidProcedureCall, "Scrivo.ItemPanel", "There is no item \"" + key + "\"");
    }
    return *row;
  }
  // All rows, top to bottom.
  std::vector<Item>& Rows() { return items_; }

 private:
  std::vector<Item> items_;
};

}  // namespace scrivo

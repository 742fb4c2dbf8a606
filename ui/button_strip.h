#pragma once

#include <string>
#include <utility>
#include <vector>

namespace scrivo {

// One place in a button strip: a button, or an empty spacer (no caption).
struct StripItem {
  std::string key;
  std::string caption{};
  std::string tip{};  // shown while the pointer rests on the button
  float width = 0;    // in twips; the view sets it for a button, the presenter for a spacer
  bool enabled = true;
};

// The buttons of a dialog as plain data, left to right: the presenter says what they are, a view
// shows them.
class ButtonStrip {
 public:
  explicit ButtonStrip(std::vector<StripItem> items) : items_(std::move(items)) {}

  // The item with this key. Raises Error (kInvalidProcedureCall) when there is none.
  StripItem& operator[](const std::string& key);
  // Takes the item with this key out of the strip, if it is there.
  void Remove(const std::string& key);
  // All items, left to right.
  std::vector<StripItem>& Items() { return items_; }
  // The sum of all items' widths, in twips.
  float ItemsWidth() const;

 private:
  std::vector<StripItem> items_;
};

// Gives each caption a letter of its own to press with Alt: "&" is put before the first letter of
// the caption that no caption before it has taken ("Help", "Home" become "&Help", "H&ome"). A
// caption without a free letter stays as it is. An "&" of the caption itself is doubled, as the
// system's controls expect.
std::vector<std::string> WithAccessKeys(const std::vector<std::string>& captions);

}  // namespace scrivo

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/item_panel.h"
#include "ui/win32/native_window.h"

namespace scrivo {

// Shows the rows of an ItemPanel with the system's controls: a caption and an edit field, list or
// check box each. What the user does goes into the panel's data first and is then told.
class ItemPanelControl : public NativeWindow {
 public:
  using Told = std::function<void(const std::string& key)>;

  // `panel` is not owned and outlives this. `captions` are the rows' captions with access keys,
  // row by row.
  ItemPanelControl(HWND parent, ItemPanel& panel, const std::vector<std::string>& captions,
                   Told changed, Told button_clicked);
  ~ItemPanelControl() override;

  // The height, in pixels, that all rows need.
  int NeededHeight() const;
  // Places the rows anew in the control's width, each edit part as wide as its item says.
  void LayOut();
  // Shows what the row's data hold now.
  void ShowItem(const std::string& key);
  void SetFont(HFONT font);
  // The edit field, list or check box that comes first.
  HWND FirstEdit() const;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  struct Row {
    Item* item;
    HWND caption = nullptr;
    HWND edit = nullptr;  // edit field, list or check box
    HWND button = nullptr;
  };

  void MakeRow(Item& item, const std::string& caption);
  // Places one row at `top` and returns where the next one begins; with `move` false it only
  // measures.
  int PlaceRow(const Row& row, int top, bool move) const;
  int PlaceEdit(const Row& row, int top, bool move) const;
  // The width between the margins, in pixels.
  int Room() const;
  // Heights of a row's parts in pixels, at least as high as the font needs.
  int CaptionHeight() const;
  int EditHeight() const;
  int CheckHeight() const;
  void Fill(const Row& row);
  void OnCommand(int id, int notification);
  void Take(const Row& row);

  ItemPanel& panel_;
  Told changed_, button_clicked_;
  std::vector<Row> rows_;
  HFONT font_ = nullptr;          // not owned
  HFONT heading_font_ = nullptr;  // owned
  int line_height_ = 0;           // of the font, in pixels
  bool filling_ = false;
};

}  // namespace scrivo

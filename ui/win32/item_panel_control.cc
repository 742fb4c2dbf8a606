#include "ui/win32/item_panel_control.h"

#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>
#include <utility>

#include "system/system_services.h"

namespace scrivo {
namespace {

// In twips.
constexpr double kPanelMargin = 75, kGap = 60, kCaptionHeight = 240, kCheckHeight = 270,
                 kListHeight = 3000;
// In pixels, as borders are at every resolution: what an edit field has above and below its text,
// and a list beside its text's row.
constexpr int kAroundEdit = 8, kAroundListRow = 6;

// A row's controls have the identifiers kFirstRowId + 2 × row, and one more for the browse button.
constexpr int kFirstRowId = 1000;

// The face of a push button, as the system's theme draws it or, without one, in the classic way.
void DrawButtonFace(const DRAWITEMSTRUCT& draw) {
  RECT place = draw.rcItem;
  const bool is_pressed = draw.itemState & ODS_SELECTED;
  HTHEME theme = OpenThemeData(draw.hwndItem, L"BUTTON");
  if (theme) {
    const int free_state = draw.itemState & ODS_FOCUS ? PBS_DEFAULTED : PBS_NORMAL;
    DrawThemeParentBackground(draw.hwndItem, draw.hDC, &place);
    DrawThemeBackground(theme, draw.hDC, BP_PUSHBUTTON, is_pressed ? PBS_PRESSED : free_state,
                        &place, nullptr);
    CloseThemeData(theme);
  } else {
    DrawFrameControl(draw.hDC, &place, DFC_BUTTON,
                     DFCS_BUTTONPUSH | (is_pressed ? DFCS_PUSHED : 0u));
  }
}

// The list's entry that is chosen: the one with the item's data, for several may have its text. -1
// when there is none.
WPARAM ChosenEntry(const Item& item) {
  const auto chosen = std::find_if(item.entries.begin(), item.entries.end(),
                                   [&](const ListEntry& entry) { return entry.key == item.data; });
  return chosen == item.entries.end() ? static_cast<WPARAM>(-1)
                                      : static_cast<WPARAM>(chosen - item.entries.begin());
}

// A line, as deep as its place.
void DrawSeparator(const DRAWITEMSTRUCT& draw) {
  RECT shadow = draw.rcItem, light = draw.rcItem;
  shadow.bottom = light.top = (shadow.top + shadow.bottom) / 2;
  FillRect(draw.hDC, &shadow, GetSysColorBrush(COLOR_3DSHADOW));
  FillRect(draw.hDC, &light, GetSysColorBrush(COLOR_3DHILIGHT));
}

// A browse button: the place that the edit part leaves is too narrow for the three dots as text.
void DrawBrowseButton(const DRAWITEMSTRUCT& draw) {
  DrawButtonFace(draw);
  RECT place = draw.rcItem;
  const int dot = std::max<int>((place.bottom - place.top) / 16, 1);
  const int left = (place.left + place.right - 5 * dot) / 2;
  const int top = (place.top + place.bottom + 3 * dot) / 2;
  for (int i = 0; i < 3; ++i) {
    const RECT square{left + 2 * i * dot, top, left + (2 * i + 1) * dot, top + dot};
    FillRect(draw.hDC, &square, GetSysColorBrush(COLOR_BTNTEXT));
  }
  InflateRect(&place, -2, -2);
  if (draw.itemState & ODS_FOCUS) DrawFocusRect(draw.hDC, &place);
}

void Move(HWND control, int left, int top, int width, int height) {
  MoveWindow(control, left, top, std::max(width, 0), height, TRUE);
}

}  // namespace

ItemPanelControl::ItemPanelControl(HWND parent, ItemPanel& panel,
                                   const std::vector<std::string>& captions, Told changed,
                                   Told button_clicked)
    : panel_(panel), changed_(std::move(changed)), button_clicked_(std::move(button_clicked)) {
  Create("", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent, RECT{});
  for (std::size_t i = 0; i < panel_.Rows().size(); ++i) MakeRow(panel_.Rows()[i], captions[i]);
  for (const Row& row : rows_) Fill(row);
}

ItemPanelControl::~ItemPanelControl() {
  if (heading_font_) DeleteObject(heading_font_);
}

void ItemPanelControl::MakeRow(Item& item, const std::string& caption) {
  const int id = kFirstRowId + 2 * static_cast<int>(rows_.size());
  Row row{&item};
  const auto make = [&](const char* kind, const std::string& text, DWORD style, DWORD extended,
                        int control_id) {
    return CreateControl(kind, text, WS_VISIBLE | style, extended, Handle(), control_id, font_);
  };
  switch (item.kind) {
    case ItemKind::kSeparator:
      row.caption = make("STATIC", "", SS_OWNERDRAW, 0, -1);
      break;
    case ItemKind::kGroup:
      row.caption = make("STATIC", caption, SS_LEFT, 0, -1);
      break;
    case ItemKind::kCheckBox:
      row.edit = make("BUTTON", caption, WS_TABSTOP | BS_AUTOCHECKBOX, 0, id);
      break;
    case ItemKind::kList:
      row.caption = make("STATIC", caption, SS_LEFT, 0, -1);
      row.edit = make("COMBOBOX", "", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, id);
      break;
    case ItemKind::kText:
    case ItemKind::kTextWithButton:
      row.caption = make("STATIC", caption, SS_LEFT, 0, -1);
      row.edit = make("EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, id);
      if (item.kind == ItemKind::kTextWithButton) {
        row.button = make("BUTTON", "...", WS_TABSTOP | BS_OWNERDRAW, 0, id + 1);
      }
      break;
  }
  rows_.push_back(row);
}

int ItemPanelControl::CaptionHeight() const {
  return std::max(Pixels(kCaptionHeight), line_height_);
}

int ItemPanelControl::EditHeight() const {
  // No higher than the text needs: it stands at the top, not in the middle.
  return line_height_ + kAroundEdit;
}

int ItemPanelControl::CheckHeight() const { return std::max(Pixels(kCheckHeight), line_height_); }

HWND ItemPanelControl::FirstEdit() const {
  const auto first =
      std::find_if(rows_.begin(), rows_.end(), [](const Row& row) { return row.edit != nullptr; });
  return first == rows_.end() ? nullptr : first->edit;
}

int ItemPanelControl::NeededHeight() const {
  int top = Pixels(kPanelMargin);
  for (const Row& row : rows_) top = PlaceRow(row, top, false);
  return top;
}

void ItemPanelControl::LayOut() {
  int top = Pixels(kPanelMargin);
  for (const Row& row : rows_) top = PlaceRow(row, top, true);
}

int ItemPanelControl::Room() const {
  RECT client;
  GetClientRect(Handle(), &client);
  // Rounded as the presenters' widths are, so that the widest of them fits.
  return Pixels(Twips(client.right) - 2 * kPanelMargin);
}

int ItemPanelControl::PlaceRow(const Row& row, int top, bool move) const {
  const int margin = Pixels(kPanelMargin), inner = Room();
  switch (row.item->kind) {
    case ItemKind::kSeparator: {
      const int height = std::max(Pixels(row.item->size), 2);
      if (move) Move(row.caption, margin, top + Pixels(kGap), inner, height);
      return top + height + 2 * Pixels(kGap);
    }
    case ItemKind::kGroup:
      if (move) Move(row.caption, margin, top, inner, CaptionHeight());
      return top + CaptionHeight() + Pixels(kGap);
    case ItemKind::kCheckBox:
      if (move) Move(row.edit, 3 * margin, top, inner - 2 * margin, CheckHeight());
      return top + CheckHeight() + Pixels(kGap);
    default:
      return PlaceEdit(row, top, move);
  }
}

int ItemPanelControl::PlaceEdit(const Row& row, int top, bool move) const {
  const int margin = Pixels(kPanelMargin);
  const int room = Room();
  int width = row.item->edit_width > 0 ? Pixels(row.item->edit_width) : room;
  width = std::min(width, room);
  // The caption stands beside the edit part where that leaves room for it, else above.
  const int left_over = room - width - (row.button ? EditHeight() : 0);
  const bool beside = left_over >= TextSize(Handle(), font_, row.item->caption).cx;
  const int left = beside ? margin + room - width : margin;
  if (move) {
    const int caption_top = beside ? top + (EditHeight() - CaptionHeight()) / 2 + 1 : top;
    Move(row.caption, margin, caption_top, beside ? left - margin : room, CaptionHeight());
  }
  if (!beside) top += CaptionHeight();
  if (move) {
    const int height = row.item->kind == ItemKind::kList ? Pixels(kListHeight) : EditHeight();
    Move(row.edit, left, top, width, height);
    if (row.button) {
      Move(row.button, left + width, top, margin + room - left - width, EditHeight());
    }
  }
  return top + EditHeight() + Pixels(kGap);
}

void ItemPanelControl::ShowItem(const std::string& key) {
  for (const Row& row : rows_) {
    if (row.item->key == key) Fill(row);
  }
}

void ItemPanelControl::Fill(const Row& row) {
  if (!row.edit) return;
  filling_ = true;
  const Item& item = *row.item;
  if (item.kind == ItemKind::kCheckBox) {
    SendMessageA(row.edit, BM_SETCHECK, item.checked ? BST_CHECKED : BST_UNCHECKED, 0);
  } else if (item.kind == ItemKind::kList) {
    SendMessageA(row.edit, WM_SETREDRAW, FALSE, 0);
    SendMessageA(row.edit, CB_RESETCONTENT, 0, 0);
    for (const ListEntry& entry : item.entries) {
      SendMessageA(row.edit, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToAnsi(entry.text).c_str()));
    }
    SendMessageA(row.edit, CB_SETCURSEL, ChosenEntry(item), 0);
    SendMessageA(row.edit, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(row.edit, nullptr, TRUE);
  } else {
    ShowText(row.edit, item.text);
  }
  filling_ = false;
}

void ItemPanelControl::SetFont(HFONT font) {
  font_ = font;
  line_height_ = TextSize(Handle(), font, "Ag").cy;
  HFONT old_heading = std::exchange(heading_font_, CreateHeadingFont(font, 100));
  for (const Row& row : rows_) {
    const bool is_group = row.item->kind == ItemKind::kGroup;
    for (HWND control : {row.caption, row.edit, row.button}) {
      if (!control) continue;
      SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(is_group ? heading_font_ : font),
                   TRUE);
    }
    if (row.item->kind == ItemKind::kList) {
      // As high as the edit fields, its border included.
      SendMessageA(row.edit, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                   EditHeight() - kAroundListRow);
    }
  }
  if (old_heading) DeleteObject(old_heading);
}

LRESULT ItemPanelControl::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_COMMAND && lparam) {
    OnCommand(LOWORD(wparam), HIWORD(wparam));
    return 0;
  }
  if (message == WM_DRAWITEM) {
    const auto& draw = *reinterpret_cast<DRAWITEMSTRUCT*>(lparam);
    if (draw.CtlType == ODT_STATIC) {
      DrawSeparator(draw);
    } else {
      DrawBrowseButton(draw);
    }
    return TRUE;
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

void ItemPanelControl::OnCommand(int id, int notification) {
  const std::size_t index = static_cast<std::size_t>(id - kFirstRowId) / 2;
  if (filling_ || id < kFirstRowId || index >= rows_.size()) return;
  const Row& row = rows_[index];
  if ((id - kFirstRowId) % 2 == 1) {
    if (notification == BN_CLICKED) button_clicked_(row.item->key);
    return;
  }
  const bool is_edit =
      row.item->kind == ItemKind::kText || row.item->kind == ItemKind::kTextWithButton;
  if ((is_edit && notification == EN_CHANGE) ||
      (row.item->kind == ItemKind::kList && notification == CBN_SELCHANGE) ||
      (row.item->kind == ItemKind::kCheckBox && notification == BN_CLICKED)) {
    Take(row);
    changed_(row.item->key);
  }
}

void ItemPanelControl::Take(const Row& row) {
  Item& item = *row.item;
  if (item.kind == ItemKind::kCheckBox) {
    item.checked = SendMessageA(row.edit, BM_GETCHECK, 0, 0) == BST_CHECKED;
  } else if (item.kind == ItemKind::kList) {
    const auto chosen = static_cast<std::size_t>(SendMessageA(row.edit, CB_GETCURSEL, 0, 0));
    if (chosen < item.entries.size()) item.text = item.entries[chosen].text;
  } else {
    item.text = TextOf(row.edit);
  }
}

}  // namespace scrivo

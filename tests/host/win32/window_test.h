#pragma once

#include <gtest/gtest.h>

#include "host/bar_model.h"
#include "host/win32/host_window.h"
#include "platform/win32/wide.h"
#include "tests/host/win32/model_test.h"
#include "tests/ui/win32/live_window.h"
// After windows.h, on which it stands.
#include <commctrl.h>

namespace scrivo::host {

// A text of another window's menu, without its access key mark.
inline std::string MenuTextAt(HMENU menu, int place) {
  wchar_t text[256] = L"";
  GetMenuStringW(menu, static_cast<UINT>(place), text, 256, MF_BYPOSITION);
  return WithoutMarks(Narrow(text));
}

// A menu as text: a line for each item, "-" for a separator, items of a popup behind "  ".
inline std::string Drawn(HMENU menu, const std::string& indent = "") {
  std::string text;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const std::string caption = MenuTextAt(menu, i);
    text += indent + (caption.empty() ? "-" : caption) + "\n";
    if (HMENU below = GetSubMenu(menu, i)) text += Drawn(below, indent + "  ");
  }
  return text;
}

// The submenu with this text; null when there is none.
inline HMENU SubMenu(HMENU menu, const std::string& text) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    if (MenuTextAt(menu, i) == text) return GetSubMenu(menu, i);
  }
  return nullptr;
}

// The command of the item with this text; 0 when there is none.
inline UINT CommandIn(HMENU menu, const std::string& text) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    if (MenuTextAt(menu, i) == text) return GetMenuItemID(menu, i);
  }
  return 0;
}

// A host with its real window, not shown until a test does so.
class WindowTest : public ModelTest {
 protected:
  WindowTest() : window(std::make_unique<HostWindow>(world)) {}
  ~WindowTest() override {
    window.reset();
    PumpMessages();
    application = LateBound();
  }

  // The text of a window that takes wide text.
  static std::string WideTextOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return Narrow(text);
  }
  HWND Control(int id) const { return GetDlgItem(window->Handle(), id); }
  HMENU Menu(const std::string& text) const { return SubMenu(GetMenu(window->Handle()), text); }
  // Chooses a menu's item as a click does.
  void Choose(HMENU menu, const std::string& text) const {
    const UINT command = CommandIn(menu, text);
    ASSERT_NE(command, 0u) << text;
    SendMessageA(window->Handle(), WM_COMMAND, command, 0);
  }
  std::string StatusText(WPARAM part) const {
    std::wstring text(LOWORD(SendMessageW(Control(kStatusId), SB_GETTEXTLENGTHW, part, 0)), L'\0');
    SendMessageW(Control(kStatusId), SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()));
    return Narrow(text);
  }
  std::string TreeText(HTREEITEM item) const {
    wchar_t text[256] = L"";
    TVITEMW found{};
    found.mask = TVIF_TEXT;
    found.hItem = item;
    found.pszText = text;
    found.cchTextMax = 256;
    SendMessageW(Control(kTreeId), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&found));
    return Narrow(text);
  }
  HTREEITEM Next(HTREEITEM item, UINT way) const {
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(Control(kTreeId), TVM_GETNEXTITEM, way, reinterpret_cast<LPARAM>(item)));
  }
  // The tree as text, a "-" for each level.
  std::string DrawnTree(HTREEITEM item, const std::string& indent = "") const {
    std::string text;
    for (; item; item = Next(item, TVGN_NEXT)) {
      text += indent + TreeText(item) + "\n" + DrawnTree(Next(item, TVGN_CHILD), indent + "-");
    }
    return text;
  }
  std::string DrawnTree() const { return DrawnTree(Next(nullptr, TVGN_ROOT)); }
  std::string ListText(int row, int column) const {
    wchar_t text[256] = L"";
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 256;
    SendMessageW(Control(kListId), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return Narrow(text);
  }

  std::unique_ptr<HostWindow> window;
};

}  // namespace scrivo::host

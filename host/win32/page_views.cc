#include "host/win32/page_views.h"

#include <algorithm>

#include "platform/win32/wide.h"

namespace scrivo::host {
namespace {

// Trees with more nodes than this are shown with their branches closed.
constexpr std::size_t kMostExpanded = 200;

}  // namespace

void FillTree(HWND tree, const std::vector<OutlineRow>& rows, const std::string& selected) {
  SendMessageA(tree, WM_SETREDRAW, FALSE, 0);
  TreeView_DeleteAllItems(tree);
  std::vector<HTREEITEM> ancestors;
  std::vector<HTREEITEM> items;
  HTREEITEM chosen = nullptr;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto depth = static_cast<std::size_t>(rows[i].depth);
    ancestors.resize(std::min(ancestors.size(), depth));
    std::wstring label = Wide(rows[i].label);
    TVINSERTSTRUCTW insert{};
    insert.hParent = ancestors.empty() ? TVI_ROOT : ancestors.back();
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = label.data();
    insert.item.lParam = static_cast<LPARAM>(i);
    const auto item = reinterpret_cast<HTREEITEM>(
        SendMessageA(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    ancestors.push_back(item);
    items.push_back(item);
    if (!chosen && !selected.empty() && rows[i].location == selected) chosen = item;
  }
  if (rows.size() <= kMostExpanded) {
    for (HTREEITEM item : items) TreeView_Expand(tree, item, TVE_EXPAND);
  }
  if (!chosen && !items.empty()) chosen = items.front();
  if (chosen) {
    TreeView_SelectItem(tree, chosen);
    TreeView_EnsureVisible(tree, chosen);
  }
  SendMessageA(tree, WM_SETREDRAW, TRUE, 0);
}

int SelectedInTree(HWND tree) {
  TVITEMW item{};
  item.mask = TVIF_PARAM;
  item.hItem = TreeView_GetSelection(tree);
  if (!item.hItem || !SendMessageA(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) {
    return -1;
  }
  return static_cast<int>(item.lParam);
}

void MakeListColumns(HWND list) {
  ListView_SetExtendedListViewStyle(list,
                                    LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER);
  int place = 0;
  for (const wchar_t* heading : {L"Title", L"Location"}) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = 100;
    column.pszText = const_cast<wchar_t*>(heading);
    SendMessageA(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place++),
                 reinterpret_cast<LPARAM>(&column));
  }
}

void FillList(HWND list, const std::vector<OutlineRow>& rows, const std::string& selected) {
  SendMessageA(list, WM_SETREDRAW, FALSE, 0);
  ListView_DeleteAllItems(list);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::wstring title = Wide(rows[i].title), location = Wide(rows[i].location);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(i);
    item.pszText = title.data();
    SendMessageA(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    item.iSubItem = 1;
    item.pszText = location.data();
    SendMessageA(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    if (!selected.empty() && rows[i].location == selected) {
      ListView_SetItemState(list, static_cast<int>(i), LVIS_SELECTED | LVIS_FOCUSED,
                            LVIS_SELECTED | LVIS_FOCUSED);
    }
  }
  SendMessageA(list, WM_SETREDRAW, TRUE, 0);
}

int SelectedInList(HWND list) { return ListView_GetNextItem(list, -1, LVNI_SELECTED); }

void FitListColumns(HWND list) {
  RECT client;
  GetClientRect(list, &client);
  const int width = client.right / 2;
  ListView_SetColumnWidth(list, 0, width);
  ListView_SetColumnWidth(list, 1, client.right - width);
}

}  // namespace scrivo::host

#pragma once

#include "host/web_outline.h"
#include "platform/win32/windows.h"
// After windows.h, on which it stands.
#include <commctrl.h>

namespace scrivo::host {

// The window's two views of a web. Each shows rows that stay with the caller.

// Shows navigation rows in a tree view; a row's place in `rows` is its item's number (lParam). The
// row at the location that was selected before is selected again.
void FillTree(HWND tree, const std::vector<OutlineRow>& rows, const std::string& selected);
// The place of the selected row; -1 when none is.
int SelectedInTree(HWND tree);

// Gives a list view its columns.
void MakeListColumns(HWND list);
// Shows pages in a list view: title and location.
void FillList(HWND list, const std::vector<OutlineRow>& rows, const std::string& selected);
int SelectedInList(HWND list);
// Makes the columns as wide as the view.
void FitListColumns(HWND list);

}  // namespace scrivo::host

// The file dialogs and the folder browser themselves, answered by another thread.

#include <string>

#include "platform/common_dialog.h"
#include "platform/win32/shell_api.h"
#include "tests/doubles/real_services.h"
#include "tests/platform/win32/dialog_answer.h"
#include "tests/platform/win32/eventually.h"

// After the system's header, which it needs.
#include <commctrl.h>

namespace scrivo {
namespace {

using std::string_literals::operator""s;

constexpr int kFileNameEdit = 0x480;   // edt1
constexpr int kFileNameCombo = 0x47C;  // cmb13
constexpr int kReadOnlyBox = 0x410;    // chx1
// FNERR_BUFFERTOOSMALL of the common dialogs.
constexpr std::uint32_t kBufferTooSmall = 0x3003;

class FileDialogTest : public WithRealServices {
 protected:
  FileDialogTest() {
    for (const char* name : {"one.htm", "two.htm", "three.chm"}) {
      TheServices().files->Write(InFolder(name), "");
    }
  }
  ~FileDialogTest() override { std::filesystem::current_path(start_folder_); }

  static HWND NameField(HWND dialog) {
    HWND edit = GetDlgItem(dialog, kFileNameEdit);
    return edit ? edit : GetDlgItem(dialog, kFileNameCombo);
  }
  static std::string TextOf(HWND window) {
    char text[600] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }
  static BOOL CALLBACK AddText(HWND child, LPARAM text) {
    *reinterpret_cast<std::string*>(text) += TextOf(child) + "|";
    return TRUE;
  }
  static BOOL CALLBACK TakeTree(HWND child, LPARAM result) {
    char class_name[32] = "";
    GetClassNameA(child, class_name, sizeof class_name);
    const bool is_tree = lstrcmpA(class_name, WC_TREEVIEWA) == 0;
    if (is_tree) *reinterpret_cast<HWND*>(result) = child;
    return !is_tree;
  }
  // The name of the folder that is selected in a folder browser.
  static std::string SelectedInTree(HWND dialog) {
    HWND tree = nullptr;
    EnumChildWindows(dialog, &FileDialogTest::TakeTree, reinterpret_cast<LPARAM>(&tree));
    char text[300] = "";
    TVITEMA item{};
    item.mask = TVIF_TEXT;
    item.hItem = TreeView_GetSelection(tree);
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    return text;
  }
  static void EnterName(HWND dialog, const std::string& name) {
    SendMessageA(NameField(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    Press(dialog, IDOK);
  }

 private:
  // The dialogs change the current folder, which could then not be removed.
  std::filesystem::path start_folder_ = std::filesystem::current_path();
};

TEST_F(FileDialogTest, OpeningGivesPathTitleAndFilter) {
  FileDialogParameters parameters{.FileName = "*.chm",
                                  .Filter = "Pages (*.htm)|*.htm|Help (*.chm)|*.chm",
                                  .FilterIndex = 2,
                                  .InitDir = folder,
                                  .DlgTitle = "Choose a file"};
  std::string caption, first_name;
  DialogAnswer user([&](HWND dialog) {
    caption = TextOf(dialog);
    first_name = TextOf(NameField(dialog));
    EnterName(dialog, "three.chm");
  });
  EXPECT_TRUE(VBGetOpenFileName(&parameters)) << LastExtendedDialogError();
  EXPECT_EQ(caption, "Choose a file");
  EXPECT_EQ(first_name, "*.chm");
  EXPECT_EQ(parameters.FileName, InFolder("three.chm"));
  EXPECT_EQ(parameters.FileTitle, "three.chm");
  EXPECT_EQ(parameters.FilterIndex, 2);
  EXPECT_EQ(parameters.Filter, "Help (*.chm)\0*.chm"s);
  EXPECT_EQ(LastDialogResult(), 1);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(FileDialogTest, CancellingGivesNothing) {
  FileDialogParameters parameters{.FileName = "one.htm", .InitDir = folder};
  DialogAnswer user([](HWND dialog) { Press(dialog, IDCANCEL); });
  EXPECT_FALSE(VBGetOpenFileName(&parameters));
  EXPECT_EQ(parameters.FileName, "");
  EXPECT_EQ(parameters.FilterIndex, -1);
  EXPECT_EQ(LastDialogResult(), 0);
  EXPECT_EQ(LastExtendedDialogError(), 0u);
}

TEST_F(FileDialogTest, CancellingTheSaveDialogGivesNothing) {
  FileDialogParameters parameters{.FileName = "one.htm", .InitDir = folder, .Save = true};
  DialogAnswer user([](HWND dialog) { Press(dialog, IDCANCEL); });
  EXPECT_FALSE(VBGetOpenFileName(&parameters));
  EXPECT_EQ(parameters.FileName, "");
  EXPECT_EQ(parameters.FilterIndex, -1);
  EXPECT_EQ(LastDialogResult(), 0);
  EXPECT_EQ(LastExtendedDialogError(), 0u);
}

TEST_F(FileDialogTest, SavingTakesANewNameAndAddsTheExtension) {
  FileDialogParameters parameters{.FileMustExist = false,
                                  .Filter = "Help (*.chm)|*.chm",
                                  .InitDir = folder,
                                  .DefaultExt = "chm",
                                  .Save = true};
  DialogAnswer user([](HWND dialog) { EnterName(dialog, "fresh"); });
  EXPECT_TRUE(VBGetOpenFileName(&parameters)) << LastExtendedDialogError();
  EXPECT_EQ(parameters.FileName, InFolder("fresh.chm"));
  EXPECT_EQ(parameters.FileTitle, "fresh.chm");
  EXPECT_FALSE(TheServices().files->FileExists(InFolder("fresh.chm")));
}

TEST_F(FileDialogTest, SeveralFilesComeAsFolderAndNames) {
  FileDialogParameters parameters{
      .MultiSelect = true, .InitDir = folder, .Flags = kFileDialogExplorer};
  DialogAnswer user([](HWND dialog) { EnterName(dialog, "\"one.htm\" \"two.htm\""); });
  EXPECT_TRUE(VBGetOpenFileName(&parameters)) << LastExtendedDialogError();
  EXPECT_EQ(parameters.FileName, folder + "\0one.htm\0two.htm"s);
  EXPECT_EQ(parameters.FileTitle, "");
}

TEST_F(FileDialogTest, OneOfSeveralIsItsFullPath) {
  FileDialogParameters parameters{
      .MultiSelect = true, .InitDir = folder, .Flags = kFileDialogExplorer};
  DialogAnswer user([](HWND dialog) { EnterName(dialog, "one.htm"); });
  EXPECT_TRUE(VBGetOpenFileName(&parameters)) << LastExtendedDialogError();
  EXPECT_EQ(parameters.FileName, InFolder("one.htm"));
}

TEST_F(FileDialogTest, AFileThatMustExistIsAskedForUntilOneIsNamed) {
  FileDialogParameters parameters{.InitDir = folder};
  bool is_refused = false;
  DialogAnswer user([&](HWND dialog) {
    EnterName(dialog, "none.chm");
    HWND refusal = dialog;
    is_refused = Eventually([&] { return (refusal = GetLastActivePopup(dialog)) != dialog; });
    Press(refusal, IDOK);
    Eventually([&] { return !IsWindow(refusal) && IsWindowEnabled(dialog); });
    EnterName(dialog, "three.chm");
  });
  EXPECT_TRUE(VBGetOpenFileName(&parameters)) << LastExtendedDialogError();
  EXPECT_TRUE(is_refused);
  EXPECT_EQ(parameters.FileName, InFolder("three.chm"));
}

TEST_F(FileDialogTest, AFileThatNeedNotExistIsTakenAsItIsNamed) {
  FileDialogParameters parameters{.FileMustExist = false, .InitDir = folder};
  DialogAnswer user([](HWND dialog) { EnterName(dialog, "none.chm"); });
  EXPECT_TRUE(VBGetOpenFileName(&parameters)) << LastExtendedDialogError();
  EXPECT_EQ(parameters.FileName, InFolder("none.chm"));
}

TEST_F(FileDialogTest, TheReadOnlyTickComesBack) {
  FileDialogParameters parameters{.ReadOnly = true, .InitDir = folder};
  DialogAnswer user([](HWND dialog) { EnterName(dialog, "one.htm"); });
  EXPECT_TRUE(VBGetOpenFileName(&parameters));
  EXPECT_TRUE(parameters.ReadOnly);
  EXPECT_NE(parameters.Flags & kFileDialogReadOnly, 0u);
}

TEST_F(FileDialogTest, TheUserTicksReadOnly) {
  FileDialogParameters parameters{.InitDir = folder};
  LRESULT was_ticked = BST_INDETERMINATE;
  DialogAnswer user([&](HWND dialog) {
    was_ticked = SendDlgItemMessageA(dialog, kReadOnlyBox, BM_GETCHECK, 0, 0);
    SendDlgItemMessageA(dialog, kReadOnlyBox, BM_CLICK, 0, 0);
    EnterName(dialog, "one.htm");
  });
  EXPECT_TRUE(VBGetOpenFileName(&parameters));
  EXPECT_EQ(was_ticked, BST_UNCHECKED);
  EXPECT_TRUE(parameters.ReadOnly);
  EXPECT_NE(parameters.Flags & kFileDialogReadOnly, 0u);
}

TEST_F(FileDialogTest, ReadOnlyCanBeHidden) {
  FileDialogParameters parameters{.HideReadOnly = true, .InitDir = folder};
  BOOL is_shown = TRUE;
  DialogAnswer user([&](HWND dialog) {
    HWND box = GetDlgItem(dialog, kReadOnlyBox);
    is_shown = box && IsWindowVisible(box);
    EnterName(dialog, "one.htm");
  });
  EXPECT_TRUE(VBGetOpenFileName(&parameters));
  EXPECT_FALSE(is_shown);
  EXPECT_FALSE(parameters.ReadOnly);
}

TEST_F(FileDialogTest, ADialogThatFailsIsNotACancel) {
  FileDialogRecord record;
  record.structure_size = 76;
  record.filter = "All\0*.*\0\0"s;
  record.filter_index = 1;
  record.initial_folder = folder;
  record.file_buffer_size = 8;  // shorter than any path here
  record.title_buffer_size = 8;
  Desktop& desktop = *TheServices().desktop;
  {
    DialogAnswer user([](HWND dialog) { EnterName(dialog, "three.chm"); });
    EXPECT_EQ(desktop.OpenFileDialog(&record), -1);
    EXPECT_EQ(desktop.ExtendedDialogError(), kBufferTooSmall);
  }
  DialogAnswer user([](HWND dialog) { EnterName(dialog, "three.chm"); });
  EXPECT_EQ(desktop.SaveFileDialog(&record), -1);
  EXPECT_EQ(desktop.ExtendedDialogError(), kBufferTooSmall);
}

TEST_F(FileDialogTest, TheFolderBrowserGivesTheChosenFolder) {
  std::string texts;
  DialogAnswer user([&](HWND dialog) {
    EnumChildWindows(dialog, &FileDialogTest::AddText, reinterpret_cast<LPARAM>(&texts));
    Eventually([&] {  // the tree may still be filling itself
      SendMessageA(dialog, BFFM_SETSELECTIONA, TRUE, reinterpret_cast<LPARAM>(folder.c_str()));
      return SelectedInTree(dialog) == std::filesystem::path(folder).filename();
    });
    Press(dialog, IDOK);
  });
  EXPECT_EQ(BrowseFolder(0, "Select output directory"), folder);
  EXPECT_NE(texts.find("Select output directory|"), std::string::npos) << texts;
}

TEST_F(FileDialogTest, TheFolderBrowserMakesOleReadyOnItsThread) {
  HRESULT ready = E_FAIL;
  std::thread([&] {
    DialogAnswer user([](HWND dialog) { Press(dialog, IDCANCEL); });
    TheServices().desktop->BrowseForFolder({});
    ready = OleInitialize(nullptr);
  }).join();
  EXPECT_EQ(ready, S_FALSE);  // it was ready before
}

TEST_F(FileDialogTest, CancellingTheFolderBrowserGivesNothing) {
  DialogAnswer user([](HWND dialog) { Press(dialog, IDCANCEL); });
  EXPECT_EQ(BrowseFolder(0, "Select"), "");
}

}  // namespace
}  // namespace scrivo

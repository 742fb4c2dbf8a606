#include "decompile/frm_decompile.h"

#include "compiler/frm_hhc.h"
#include "platform/settings.h"
#include "tests/doubles/fake_error_dialog.h"
#include "tests/doubles/fake_form_views.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class DecompileTest : public WithFakeServices {
 protected:
  DecompileTest() {
    Globals() = GlobalState(PathStyle::kWindows);
    Globals().views = views;
    ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
    ErrorHandler().Dialog(dialog);
    files->files["C:\\My help\\a b.chm"] = "ITSF";
    files->folders = {"C:\\", "C:\\Out put"};
  }
  ~DecompileTest() override {
    frmDecompile::Unload();
    frmHHC::Unload();
    Globals() = GlobalState();
    ErrorHandler().Dialog(nullptr);
  }

  frmDecompile& Form() { return *frmDecompile::Load(); }
  void Enter(const std::string& file, const std::string& folder) {
    Form().suiParams()["FILE"].text = file;
    Form().suiParams()["DIR"].text = folder;
  }
  std::string Saved(const std::string& key) {
    return GetSetting("Scrivo", "Decompile", key, "(none)");
  }

  std::shared_ptr<FakeFormViews> views = std::make_shared<FakeFormViews>();
  std::shared_ptr<FakeErrorDialog> dialog = std::make_shared<FakeErrorDialog>();
};

TEST_F(DecompileTest, TheFirstUseHasEmptyPathsTheOptionOnAndTheDesignedPlace) {
  EXPECT_EQ(Form().suiParams()["FILE"].text, "");
  EXPECT_EQ(Form().suiParams()["DIR"].text, "");
  EXPECT_TRUE(Form().suiParams()["TOFPSITE"].checked);
  EXPECT_EQ(views->decompile.left, 100);
  EXPECT_EQ(views->decompile.top, 200);
  EXPECT_EQ(views->decompile.width, 5000);
  EXPECT_EQ(views->decompile.height, 6000.5F);
}

TEST_F(DecompileTest, ItHasTheThreeButtons) {
  std::vector<std::string> keys;
  for (const StripItem& item : Form().suiButtons().Items()) keys.push_back(item.key);
  EXPECT_EQ(keys, (std::vector<std::string>{"SPACE", "DECOMPILE", "HELP", "CLOSE"}));
}

TEST_F(DecompileTest, LoadingRestoresPlaceAndValues) {
  for (const auto& [key, value] :
       std::vector<std::pair<std::string, std::string>>{{"LEFT", "10"},
                                                        {"TOP", "20.5"},
                                                        {"WIDTH", "3000"},
                                                        {"HEIGHT", "4000"},
                                                        {"FILE", "C:\\x.chm"},
                                                        {"DIR", "C:\\y"},
                                                        {"TOFPSITE", "0"}}) {
    SaveSetting("Scrivo", "Decompile", key, value);
  }
  EXPECT_EQ(Form().suiParams()["FILE"].text, "C:\\x.chm");
  EXPECT_EQ(Form().suiParams()["DIR"].text, "C:\\y");
  EXPECT_FALSE(Form().suiParams()["TOFPSITE"].checked);
  EXPECT_EQ(views->decompile.left, 10);
  EXPECT_EQ(views->decompile.top, 20.5F);
  EXPECT_EQ(views->decompile.width, 3000);
  EXPECT_EQ(views->decompile.height, 4000);
}

TEST_F(DecompileTest, AnyNonZeroNumberSwitchesTheOptionOn) {
  SaveSetting("Scrivo", "Decompile", "TOFPSITE", "-1");
  EXPECT_TRUE(Form().suiParams()["TOFPSITE"].checked);
}

TEST_F(DecompileTest, TheOptionMayBeSavedAsAWord) {
  const std::pair<const char*, bool> texts[] = {
      {"True", true}, {"False", false}, {"TRUE", true}, {"false", false},
      {"0", false},   {"0.5", true},    {"no", true},   {"Falsehood", true}};
  for (const auto& [text, is_on] : texts) {
    SaveSetting("Scrivo", "Decompile", "TOFPSITE", text);
    EXPECT_EQ(Form().suiParams()["TOFPSITE"].checked, is_on) << text;
    frmDecompile::Unload();
    EXPECT_EQ(Saved("TOFPSITE"), is_on ? "1" : "0");
  }
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(DecompileTest, ErrorsWhileLoadingGoToTheErrorHandler) {
  SaveSetting("Scrivo", "Decompile", "FILE", "C:\\x.chm");
  views->decompile.fails = true;
  dialog->answers = {"IGNORE", "IGNORE", "IGNORE", "IGNORE"};
  EXPECT_EQ(Form().suiParams()["FILE"].text, "C:\\x.chm");
  ASSERT_EQ(dialog->reports.size(), 4u) << "left, top, width and height";
  for (const std::string& report : dialog->reports) {
    EXPECT_NE(report.find("\tin Kestrel.frmDecompile.Form_Load at line 0"), std::string::npos);
  }
  views->decompile.fails = false;
}

TEST_F(DecompileTest, ErrorsWhileSavingGoToTheErrorHandler) {
  Enter("C:\\x.chm", "C:\\y");
  views->decompile.fails = true;
  dialog->answers = {"IGNORE", "IGNORE", "IGNORE", "IGNORE"};
  frmDecompile::Unload();
  ASSERT_EQ(dialog->reports.size(), 4u) << "left, height, top and width";
  for (const std::string& report : dialog->reports) {
    EXPECT_NE(report.find("\tin Kestrel.frmDecompile.Form_Unload at line 0"), std::string::npos);
  }
  EXPECT_EQ(Saved("FILE"), "C:\\x.chm");
  EXPECT_EQ(Saved("LEFT"), "(none)");
  EXPECT_FALSE(frmDecompile::IsLoaded());
}

TEST_F(DecompileTest, ErrorsWhileBrowsingGoToTheErrorHandler) {
  Enter("C:\\old.chm", "C:\\old");
  views->decompile.rows_fail = true;
  desktop->file_result = 1;
  desktop->file_answer.file_buffer = std::string("C:\\new.chm\0", 11);
  desktop->browse_result = 5;
  desktop->browse_path = "C:\\new";
  for (const char* key : {"FILE", "DIR"}) {
    dialog->reports.clear();
    EXPECT_NO_THROW(views->decompile.events->ItemButtonClicked(key));
    ASSERT_EQ(dialog->reports.size(), 1u);
    EXPECT_NE(dialog->reports[0].find("\tin Kestrel.frmDecompile.suiParams_ItemClick at line 0"),
              std::string::npos);
  }
}

TEST_F(DecompileTest, SavedTextsThatAreNoNumbersGiveWayToTheDefaults) {
  for (const char* key : {"LEFT", "TOP", "WIDTH", "HEIGHT", "TOFPSITE"}) {
    SaveSetting("Scrivo", "Decompile", key, "much");
  }
  SaveSetting("Scrivo", "Decompile", "DIR", "C:\\y");
  EXPECT_TRUE(Form().suiParams()["TOFPSITE"].checked);
  EXPECT_EQ(Form().suiParams()["DIR"].text, "C:\\y");
  EXPECT_EQ(views->decompile.left, 100);
  EXPECT_EQ(views->decompile.height, 6000.5F);
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(DecompileTest, ValuesAreSavedInTheirOrder) {
  Form();
  frmDecompile::Unload();
  const std::string path = "Software\\VB and VBA Program Settings\\Scrivo\\Decompile";
  const StoredKey* const key =
      FindKeyAt(&registry->tree[static_cast<std::uint32_t>(kHkeyCurrentUser)], KeyNames(path));
  ASSERT_NE(key, nullptr);
  std::vector<std::string> names;
  for (const StoredValue& value : key->values) names.push_back(value.name);
  EXPECT_EQ(names, (std::vector<std::string>{"LEFT", "HEIGHT", "TOP", "WIDTH", "FILE", "DIR",
                                             "TOFPSITE"}));
  EXPECT_EQ(Saved("TOFPSITE"), "1");
}

TEST_F(DecompileTest, UnloadingSavesPlaceAndValues) {
  Enter("C:\\x.chm", "C:\\y");
  Form().suiParams()["TOFPSITE"].checked = false;
  frmDecompile::Unload();
  EXPECT_FALSE(frmDecompile::IsLoaded());
  EXPECT_EQ(Saved("LEFT"), "100");
  EXPECT_EQ(Saved("TOP"), "200");
  EXPECT_EQ(Saved("WIDTH"), "5000");
  EXPECT_EQ(Saved("HEIGHT"), "6000.5");
  EXPECT_EQ(Saved("FILE"), "C:\\x.chm");
  EXPECT_EQ(Saved("DIR"), "C:\\y");
  EXPECT_EQ(Saved("TOFPSITE"), "0");
}

TEST_F(DecompileTest, CloseAndTheCloseBoxUnload) {
  Form();
  views->decompile.events->ButtonClicked("CLOSE");
  EXPECT_FALSE(frmDecompile::IsLoaded());
  Form();
  views->decompile.events->CloseRequested();
  EXPECT_FALSE(frmDecompile::IsLoaded());
}

TEST_F(DecompileTest, HelpOpensTheHelpFile) {
  Form();
  views->decompile.events->ButtonClicked("HELP");
  ASSERT_EQ(desktop->help_calls.size(), 1u);
  EXPECT_EQ(desktop->help_calls[0].data, "index.html");
}

TEST_F(DecompileTest, TheFileRowOpensTheFileDialog) {
  Enter("C:\\old.chm", "");
  desktop->file_result = 1;
  desktop->file_answer.file_buffer = std::string("C:\\new.chm\0", 11);
  views->decompile.events->ItemButtonClicked("FILE");
  ASSERT_EQ(desktop->opened.size(), 1u);
  const FileDialogRecord& asked = desktop->opened[0];
  EXPECT_EQ(asked.file_buffer.substr(0, 11), std::string("C:\\old.chm\0", 11));
  EXPECT_EQ(asked.title_buffer.substr(0, 11), std::string("Input file\0", 11));
  EXPECT_EQ(asked.dialog_title, "Select input file");
  EXPECT_EQ(asked.default_extension, "*.CHM");
  EXPECT_EQ(asked.initial_folder, "");
  EXPECT_EQ(asked.flags, 0u) << "must exist, several, read-only and hide read-only are all off";
  EXPECT_EQ(asked.filter, std::string("Microsoft HTML Help (*.CHM)\0*.CHM\0All(*.*)\0*.*\0\0", 48));
  EXPECT_EQ(Form().suiParams()["FILE"].text, "C:\\new.chm");
  EXPECT_EQ(views->decompile.log.back(), "item FILE");
}

TEST_F(DecompileTest, CancellingTheFileDialogKeepsTheText) {
  Enter("C:\\old.chm", "");
  views->decompile.events->ItemButtonClicked("FILE");
  EXPECT_EQ(Form().suiParams()["FILE"].text, "C:\\old.chm");
}

TEST_F(DecompileTest, TheFolderRowOpensTheFolderBrowser) {
  Enter("", "C:\\old");
  desktop->browse_result = 5;
  desktop->browse_path = "C:\\new";
  views->decompile.events->ItemButtonClicked("DIR");
  ASSERT_EQ(desktop->browsed.size(), 1u);
  EXPECT_EQ(desktop->browsed[0].title, "Select output directory");
  EXPECT_EQ(desktop->browsed[0].owner, views->decompile.window);
  EXPECT_EQ(Form().suiParams()["DIR"].text, "C:\\new");
  EXPECT_EQ(views->decompile.log.back(), "item DIR");
}

TEST_F(DecompileTest, CancellingTheFolderBrowserKeepsTheText) {
  Enter("", "C:\\old");
  views->decompile.events->ItemButtonClicked("DIR");
  EXPECT_EQ(Form().suiParams()["DIR"].text, "C:\\old");
}

class BadInputFiles : public DecompileTest, public testing::WithParamInterface<const char*> {};

TEST_P(BadInputFiles, AreToldAndTheDialogIsUnloaded) {
  Enter(GetParam(), "C:\\Out put");
  views->decompile.events->ButtonClicked("DECOMPILE");
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, "Can not find input file");
  EXPECT_EQ(desktop->messages[0].style, kCritical);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_TRUE(processes->requests.empty());
  EXPECT_FALSE(frmDecompile::IsLoaded());
  EXPECT_EQ(Saved("FILE"), GetParam()) << "its values are saved";
}
INSTANTIATE_TEST_SUITE_P(Paths, BadInputFiles,
                         testing::Values("C:\\missing.chm", "C:\\Out put", "C:\\"));

TEST_F(DecompileTest, TheInputFileIsCheckedBeforeTheFolder) {
  Enter("C:\\missing.chm", "");
  Form().Decompile();
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, "Can not find input file");
}

TEST_F(DecompileTest, TheDialogIsHiddenBeforeTheRunWindowLoadsAndUnloadedAfterIt) {
  Enter("C:\\My help\\a b.chm", "C:\\Out put");
  bool was_hidden = false, had_run_window = true;
  views->on_make_run = [&] { was_hidden = CountOf(views->decompile, "hide") == 1; };
  views->decompile.on_close = [&] { had_run_window = views->run.exists; };
  Form().Decompile();
  EXPECT_TRUE(was_hidden);
  EXPECT_FALSE(had_run_window);
  EXPECT_EQ(processes->requests.size(), 1u);
}

TEST_F(DecompileTest, AnEmptyFolderIsToldAndTheDialogIsUnloaded) {
  Enter("C:\\My help\\a b.chm", "");
  Form().Decompile();
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, "Please, enter output folder");
  EXPECT_EQ(desktop->messages[0].style, kInformation);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_FALSE(frmDecompile::IsLoaded());
  EXPECT_EQ(Saved("FILE"), "C:\\My help\\a b.chm") << "its values are saved";
}

TEST_F(DecompileTest, TheViewerIsRunWithShortUnquotedPathsInTheFolder) {
  Enter("C:\\My help\\a b.chm", "C:\\Out put");
  Form().Decompile();
  ASSERT_EQ(processes->requests.size(), 1u);
  EXPECT_EQ(processes->requests[0].command_line,
            "\"hh.exe\" -decompile C:\\Out_put C:\\My_help\\a_b.chm");
  EXPECT_EQ(processes->requests[0].folder, "C:\\Out put") << "as typed";
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_FALSE(frmHHC::IsLoaded());
  EXPECT_FALSE(frmDecompile::IsLoaded());
  EXPECT_EQ(CountOf(views->decompile, "hide"), 1);
}

TEST_F(DecompileTest, TheOptionForTheOpenWebChangesNothing) {
  for (const bool on : {true, false}) {
    Enter("C:\\My help\\a b.chm", "C:\\Out put");
    Form().suiParams()["TOFPSITE"].checked = on;
    Form().Decompile();
  }
  ASSERT_EQ(processes->requests.size(), 2u);
  EXPECT_EQ(processes->requests[0].command_line, processes->requests[1].command_line);
}

TEST_F(DecompileTest, AMissingFolderIsMadeFirst) {
  Enter("C:\\My help\\a b.chm", "C:\\New");
  processes->on_start = [&] {
    EXPECT_TRUE(files->FolderExists("C:\\New"));
    EXPECT_EQ(CountOf(views->decompile, "hide"), 1) << "the dialog is out of the way by then";
  };
  Form().Decompile();
  ASSERT_EQ(processes->requests.size(), 1u);
  EXPECT_EQ(processes->requests[0].folder, "C:\\New");
}

TEST_F(DecompileTest, AFolderNameOfBlanksIsAName) {
  Enter("C:\\My help\\a b.chm", "  ");
  Form().Decompile();
  EXPECT_TRUE(files->FolderExists("  "));
  ASSERT_EQ(processes->requests.size(), 1u);
  EXPECT_EQ(processes->requests[0].folder, "  ");
}

TEST_F(DecompileTest, AFolderThatCannotBeMadeGoesToTheErrorHandler) {
  Enter("C:\\My help\\a b.chm", "C:\\a\\b");
  files->failures.emplace("make C:\\a\\b", Error(kPathNotFound, "", "Path not found"));
  Form().Decompile();
  ASSERT_EQ(dialog->reports.size(), 1u);
  EXPECT_NE(dialog->reports[0].find("\tError: 76, (Path not found)"), std::string::npos);
  EXPECT_NE(dialog->reports[0].find("\tin Kestrel.frmDecompile.Decompile at line 0"),
            std::string::npos);
  EXPECT_TRUE(processes->requests.empty());
  EXPECT_TRUE(frmDecompile::IsLoaded()) << "an abort leaves the dialog as it is";
}

TEST_F(DecompileTest, WithoutWindowsItWorksAllTheSame) {
  views->has_windows = false;
  Enter("C:\\My help\\a b.chm", "C:\\Out put");
  Form().ShowModal();
  Form().Decompile();
  EXPECT_EQ(processes->requests.size(), 1u);
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(DecompileTest, ResizingGivesTheSpacerAndTheEditPartsTheirWidths) {
  Form().suiButtons()["DECOMPILE"].width = 1000;
  Form().suiButtons()["HELP"].width = 1000;
  Form().suiButtons()["CLOSE"].width = 1000;
  views->decompile.events->Resized(5000, 4000);
  EXPECT_EQ(Form().suiButtons()["SPACE"].width, 1910);
  EXPECT_EQ(Form().suiParams()["FILE"].edit_width, 3685);
  EXPECT_EQ(Form().suiParams()["DIR"].edit_width, 3685);
  views->decompile.events->Resized(1000, 4000);
  EXPECT_EQ(Form().suiButtons()["SPACE"].width, 15);
}

}  // namespace
}  // namespace scrivo

#include "generator/frm_main.h"

#include "platform/settings.h"
#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

class FrmMainTest : public GeneratorTest {
 protected:
  ShownParameters& Shown() { return views->main; }
  ParameterViewEvents& Events() { return *views->main.events; }
};

TEST_F(FrmMainTest, TheInstanceIsMadeOnFirstUseAndNotShown) {
  EXPECT_FALSE(frmMain::IsLoaded());
  const auto form = frmMain::Load();
  EXPECT_TRUE(frmMain::IsLoaded());
  EXPECT_EQ(frmMain::Load(), form);
  EXPECT_TRUE(Shown().log.empty());
}

TEST_F(FrmMainTest, UnloadingClosesTheWindowAndLetsGoOfTheDialog) {
  frmMain::Load();
  frmMain::Unload();
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_EQ(Shown().log, std::vector<std::string>{"close"});
  EXPECT_EQ(Shown().events, nullptr);
  frmMain::Unload();
  EXPECT_EQ(Shown().log.size(), 1U);
}

TEST_F(FrmMainTest, ButtonsStandInTheirOrderWithCaptionsAndTips) {
  const std::vector<StripItem>& items = frmMain::Load()->suiButtons().Items();
  const char* const expected[][3] = {
      {"SPACE", "", ""},
      {"GENERATE", "Generate", "Launch Help Workshop to compile help"},
      {"HELP", "Help", "Show ScrivoBuilder help file"},
      {"CLOSE", "Close", "Close ScrivoBuilder window"}};
  ASSERT_EQ(items.size(), std::size(expected));
  for (std::size_t i = 0; i < items.size(); ++i) {
    EXPECT_EQ(items[i].key, expected[i][0]);
    EXPECT_EQ(items[i].caption, expected[i][1]);
    EXPECT_EQ(items[i].tip, expected[i][2]);
  }
}

TEST_F(FrmMainTest, TheCloseButtonUnloadsTheDialogThatIsShown) {
  Shown().on_show = [&] { Events().ButtonClicked("CLOSE"); };
  Form()->ShowModal();
  EXPECT_EQ(Shown().log, (std::vector<std::string>{"show", "close", "shown"}));
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(FrmMainTest, TheWindowsCloseBoxUnloadsTheDialogAndSaves) {
  Form()->suiParams()["TITLE"].text = "Saved";
  Shown().on_show = [&] { Events().CloseRequested(); };
  Form()->ShowModal();
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_EQ(GetSetting("Scrivo", kUrl, "TITLE"), "Saved");
}

TEST_F(FrmMainTest, HidingKeepsTheDialogLoaded) {
  frmMain::Load()->Hide();
  EXPECT_EQ(Shown().log, std::vector<std::string>{"hide"});
  EXPECT_TRUE(frmMain::IsLoaded());
}

TEST_F(FrmMainTest, TheHelpButtonOpensTheHelpFileOwnedByTheDialog) {
  Globals().help_owner = [] { return frmMain::Load()->Window(); };
  Form();
  Events().ButtonClicked("HELP");
  ASSERT_EQ(desktop->help_calls.size(), 1U);
  EXPECT_EQ(desktop->help_calls[0].owner, 77U);
  EXPECT_EQ(desktop->help_calls[0].command, 0U);
  EXPECT_EQ(desktop->help_calls[0].data, "index.html");
}

TEST_F(FrmMainTest, TheGenerateButtonRunsTheDriver) {
  Form();
  Events().ButtonClicked("GENERATE");
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "Microsoft HTML Help WorkShop must be installed");
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(FrmMainTest, TheWindowShowsEveryRowOnceItIsFilled) {
  ASSERT_TRUE(frmMain::Load()->BuildUI());
  std::vector<std::string> expected;
  for (const Item& row : frmMain::Load()->suiParams().Rows()) expected.push_back("item " + row.key);
  EXPECT_EQ(Shown().log, expected);
}

TEST_F(FrmMainTest, AnyOtherButtonDoesNothing) {
  Form();
  for (const char* key : {"SPACE", "", "generate", "OTHER"}) Events().ButtonClicked(key);
  EXPECT_TRUE(frmMain::IsLoaded());
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_TRUE(desktop->help_calls.empty());
}

TEST_F(FrmMainTest, AnErrorBehindAButtonIsIgnored) {
  Form();
  site.Fail("OpenPages", 1);
  dialog->answers = {"THROW"};
  Events().ButtonClicked("GENERATE");
  EXPECT_TRUE(frmMain::IsLoaded());
}

TEST_F(FrmMainTest, ActivationRestoresPlaceAndSizeInTheirOrderEveryTime) {
  SaveSetting("Scrivo", kUrl, "LEFT", "11");
  SaveSetting("Scrivo", kUrl, "TOP", "22.5");
  SaveSetting("Scrivo", kUrl, "WIDTH", "3333");
  SaveSetting("Scrivo", kUrl, "HEIGHT", "4444");
  Form();
  const std::vector<std::string> restored = {"left 11", "height 4444", "top 22", "width 3333"};
  Events().Activated();
  EXPECT_EQ(Shown().log, restored);
  EXPECT_EQ(Shown().top, 22.5F);
  Shown().log.clear();
  Shown().left = 999;
  Events().Activated();
  EXPECT_EQ(Shown().log, restored);
}

TEST_F(FrmMainTest, WithNothingSavedActivationKeepsPlaceAndSize) {
  Form();
  Events().Activated();
  EXPECT_EQ(Shown().left, 100);
  EXPECT_EQ(Shown().top, 200);
  EXPECT_EQ(Shown().width, 5000);
  EXPECT_EQ(Shown().height, 6000.5F);
}

TEST_F(FrmMainTest, ASavedPlaceThatIsNoNumberIsSkipped) {
  SaveSetting("Scrivo", kUrl, "LEFT", "left");
  SaveSetting("Scrivo", kUrl, "WIDTH", "3333");
  Form();
  Events().Activated();
  EXPECT_EQ(Shown().left, 100);
  EXPECT_EQ(Shown().width, 3333);
  EXPECT_EQ(Reports(), 0);
}

TEST_F(FrmMainTest, ActivationWithoutAWebDoesNothing) {
  frmMain::Load();
  Events().Activated();
  EXPECT_TRUE(Shown().log.empty());
}

TEST_F(FrmMainTest, TheSpacerTakesWhatTheButtonsLeaveOfTheStrip) {
  ButtonStrip& strip = frmMain::Load()->suiButtons();
  strip["SPACE"].width = 400;
  strip["GENERATE"].width = 1000;
  strip["HELP"].width = 800;
  strip["CLOSE"].width = 700;
  Events().Resized(5000, 6000);
  EXPECT_EQ(strip["SPACE"].width, 5000 - 2500 - 90);
  Events().Resized(5000, 6000);
  EXPECT_EQ(strip["SPACE"].width, 5000 - 2500 - 90);
}

TEST_F(FrmMainTest, TheSpacerIsNeverNarrowerThanFifteen) {
  ButtonStrip& strip = frmMain::Load()->suiButtons();
  strip["GENERATE"].width = 1000;
  for (const float width : {0.0F, 1104.0F}) {
    Events().Resized(width, 100);
    EXPECT_EQ(strip["SPACE"].width, 15) << width;
  }
  Events().Resized(1106, 100);
  EXPECT_EQ(strip["SPACE"].width, 16);
}

TEST_F(FrmMainTest, EditPartsFollowThePanelsWidth) {
  ItemPanel& panel = frmMain::Load()->suiParams();
  Events().Resized(5000, 6000);
  EXPECT_EQ(panel["TITLE"].edit_width, 6000 - 780);
  EXPECT_EQ(panel["DEFAULTPAGE"].edit_width, 6000 - 150);
  EXPECT_EQ(panel["OUTPUT"].edit_width, 6000 - 315);
}

TEST_F(FrmMainTest, ChoosingAPageByItsTextTakesItsAddress) {
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  site.AddNode(nullptr, "B", site.AddPage("b.htm"));
  Item& item = Form()->suiParams()["DEFAULTPAGE"];
  item.text = "B";
  Events().ItemChanged("DEFAULTPAGE");
  EXPECT_EQ(item.data, std::string(kUrl) + "/b.htm");
}

TEST_F(FrmMainTest, AnUnknownPageTextLeavesTheAddress) {
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  Item& item = Form()->suiParams()["DEFAULTPAGE"];
  item.text = "a";
  Events().ItemChanged("DEFAULTPAGE");
  EXPECT_EQ(item.data, std::string(kUrl) + "/a.htm");
}

TEST_F(FrmMainTest, AChangeOfAnotherRowChangesNoData) {
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  Item& item = Form()->suiParams()["DEFAULTPAGE"];
  item.data = "untouched";
  Events().ItemChanged("TITLE");
  Events().ItemChanged("no such row");
  EXPECT_EQ(item.data, "untouched");
}

TEST_F(FrmMainTest, TheBrowseButtonAsksForTheOutputFile) {
  Form()->suiParams()["OUTPUT"].text = "C:\\old.chm";
  desktop->file_result = 1;
  desktop->file_answer.file_buffer = std::string("D:\\new.CHM\0", 11);
  Events().ItemButtonClicked("OUTPUT");
  EXPECT_EQ(Form()->suiParams()["OUTPUT"].text, "D:\\new.CHM");
  EXPECT_EQ(Shown().log, std::vector<std::string>{"item OUTPUT"});
  ASSERT_EQ(desktop->saved.size(), 1U);
  const FileDialogRecord& record = desktop->saved[0];
  EXPECT_EQ(record.dialog_title, "Output file");
  EXPECT_EQ(record.default_extension, "*.CHM");
  EXPECT_EQ(record.filter_index, 1);
  EXPECT_EQ(record.owner, 77U);
  EXPECT_EQ(record.file_buffer.substr(0, 11), std::string("C:\\old.chm\0", 11));
  EXPECT_EQ(record.filter,
            std::string("Microsoft HTML Help (*.CHM)\0*.CHM\0All(*.*)\0*.*\0\0", 48));
}

TEST_F(FrmMainTest, CancellingTheFileDialogLeavesTheOutput) {
  Form()->suiParams()["OUTPUT"].text = "C:\\old.chm";
  Events().ItemButtonClicked("OUTPUT");
  EXPECT_EQ(Form()->suiParams()["OUTPUT"].text, "C:\\old.chm");
  EXPECT_TRUE(Shown().log.empty());
}

TEST_F(FrmMainTest, OtherRowsHaveNoBrowseButton) {
  Form();
  Events().ItemButtonClicked("TITLE");
  EXPECT_TRUE(desktop->saved.empty());
  EXPECT_TRUE(desktop->opened.empty());
}

TEST_F(FrmMainTest, WithoutWindowsTheDialogWorksAllTheSame) {
  views->has_windows = false;
  const auto form = Form();
  form->ShowModal();
  form->Hide();
  EXPECT_EQ(form->Window(), 0U);
  frmMain::Unload();
  EXPECT_FALSE(frmMain::IsLoaded());
}

}  // namespace
}  // namespace scrivo

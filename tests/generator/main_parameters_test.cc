#include "generator/frm_main.h"
#include "platform/settings.h"
#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

const char* const kCheckBoxes[] = {"USEKEYWORDS", "FAVORITES", "VIEWRESULT", "CLOSELOG",
                                   "LEAVEPROJECTFILE"};

const std::vector<std::string> kSavedInOrder = {
    "LEFT",      "HEIGHT",      "TOP",        "WIDTH",  "TITLE",    "USEKEYWORDS",
    "FAVORITES", "DEFAULTPAGE", "VIEWRESULT", "OUTPUT", "CLOSELOG", "LEAVEPROJECTFILE"};

// A registry that remembers the names of the values that were read and set. The value called
// `failing` can be neither.
class RecordingRegistry : public MemoryRegistry {
 public:
  std::vector<std::string> read, set;
  std::string failing;

  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override {
    if (read.empty() || read.back() != name) read.push_back(name);
    ThrowIfFailing(name);
    return MemoryRegistry::QueryValue(key, name, type, data, size);
  }
  RegistryStatus SetValue(RegistryHandle key, const std::string& name, std::uint32_t type,
                          const std::uint8_t* data, std::uint32_t size) override {
    set.push_back(name);
    ThrowIfFailing(name);
    return MemoryRegistry::SetValue(key, name, type, data, size);
  }

 private:
  void ThrowIfFailing(const std::string& name) const {
    if (name == failing) throw Error(kInternalError, "RecordingRegistry", "No such luck");
  }
};

class MainParametersTest : public GeneratorTest {
 protected:
  void Save(const std::string& key, const std::string& value) {
    SaveSetting("Scrivo", kUrl, key, value);
  }
  std::string Saved(const std::string& key) { return GetSetting("Scrivo", kUrl, key, "(none)"); }
  Item& Row(const std::string& key) { return Form()->suiParams()[key]; }
};

TEST_F(MainParametersTest, RowsStandInTheirOrderWithTheirCaptionsAndKinds) {
  const struct {
    const char* key;
    const char* caption;
    ItemKind kind;
  } expected[] = {
      {"SEP0", "", ItemKind::kSeparator},
      {"TITLE", "Title:", ItemKind::kText},
      {"SEP1", "", ItemKind::kSeparator},
      {"DEFAULTPAGE", "Default page:", ItemKind::kList},
      {"SEP2", "", ItemKind::kSeparator},
      {"OUTPUT", "Output file:", ItemKind::kTextWithButton},
      {"SEP3", "", ItemKind::kSeparator},
      {"OPTIONS", "Options", ItemKind::kGroup},
      {"USEKEYWORDS", "Generate index by keywords", ItemKind::kCheckBox},
      {"FAVORITES", "Favorites tab", ItemKind::kCheckBox},
      {"VIEWRESULT", "Open CHM after compilation", ItemKind::kCheckBox},
      {"CLOSELOG", "Don't close compilation log on success", ItemKind::kCheckBox},
      {"LEAVEPROJECTFILE", "Don't remove HTML Workshop project file", ItemKind::kCheckBox},
  };
  const std::vector<Item>& rows = Form()->suiParams().Rows();
  ASSERT_EQ(rows.size(), std::size(expected));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].key, expected[i].key);
    EXPECT_EQ(rows[i].caption, expected[i].caption);
    EXPECT_EQ(rows[i].kind, expected[i].kind) << expected[i].key;
  }
}

TEST_F(MainParametersTest, SeparatorsHaveTheirLayoutValue) {
  for (const char* key : {"SEP0", "SEP1", "SEP2", "SEP3"}) EXPECT_EQ(Row(key).size, 30.0F) << key;
}

TEST_F(MainParametersTest, WithoutAnOpenWebTheUserIsToldAndTheDialogIsNotReady) {
  site.is_open = false;
  EXPECT_FALSE(frmMain::Load()->BuildUI());
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "Open site first");
  EXPECT_EQ(desktop->messages[0].style, 64U);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_EQ(frmMain::Load()->Web(), nullptr);
  EXPECT_EQ(Reports(), 0);
}

TEST_F(MainParametersTest, UnloadingADialogThatWasNotReadySavesNothing) {
  site.is_open = false;
  frmMain::Load()->BuildUI();
  frmMain::Unload();
  CRegistry keys;
  keys.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
  EXPECT_FALSE(keys.KeyExists("Software"));
}

TEST_F(MainParametersTest, WithoutAHostTheErrorIsReported) {
  Globals().HostApplication = nullptr;
  EXPECT_FALSE(frmMain::Load()->BuildUI());
  EXPECT_TRUE(LastReportIsFrom("BuildUI"));
}

TEST_F(MainParametersTest, TheWebIsKeptAndItsFolderBecomesTheWorkingFolder) {
  EXPECT_EQ(Form()->Web(), site.Web());
  EXPECT_EQ(Globals().working_folder, "C:\\Webs\\site");
}

TEST_F(MainParametersTest, AnAddressThatDoesNotBeginWithFileIsTheFolderAsItIs) {
  site.url = "http://host/site";
  Form();
  EXPECT_EQ(Globals().working_folder, "http://host/site");
  EXPECT_EQ(Row("OUTPUT").text, "http://host/site\\site.CHM");
}

TEST_F(MainParametersTest, TheDefaultTitleIsTheHomePagesLabel) {
  site.home = site.AddNode(nullptr, "My home");
  EXPECT_EQ(Row("TITLE").text, "My home");
}

TEST_F(MainParametersTest, AHomePageWithAnEmptyLabelGivesAnEmptyTitle) {
  site.home = site.AddNode(nullptr, "");
  EXPECT_EQ(Row("TITLE").text, "");
  EXPECT_EQ(Row("OUTPUT").text, "C:\\Webs\\site\\.CHM");
}

TEST_F(MainParametersTest, WithoutAHomePageTheDefaultTitleIsTheLastNameOfTheAddress) {
  EXPECT_EQ(Row("TITLE").text, "site");
}

TEST_F(MainParametersTest, TheDefaultOutputLiesInTheWebUnderTheTitle) {
  site.home = site.AddNode(nullptr, "My home");
  EXPECT_EQ(Row("OUTPUT").text, "C:\\Webs\\site\\My home.CHM");
}

TEST_F(MainParametersTest, OnlySlashAndColonAreReplacedInTheDefaultOutput) {
  site.home = site.AddNode(nullptr, "A/B: C");
  EXPECT_EQ(Row("OUTPUT").text, "C:\\Webs\\site\\A_B_ C.CHM");
  frmMain::Unload();
  registry->tree = {};
  site.home = site.AddNode(nullptr, "a\\b*?\"<>|c");
  EXPECT_EQ(Row("OUTPUT").text, "C:\\Webs\\site\\a\\b*?\"<>|c.CHM");
}

TEST_F(MainParametersTest, TheDefaultOutputIsMadeFromTheTitleThatIsShown) {
  site.home = site.AddNode(nullptr, "Home");
  Save("TITLE", "Saved/title");
  EXPECT_EQ(Row("TITLE").text, "Saved/title");
  EXPECT_EQ(Row("OUTPUT").text, "C:\\Webs\\site\\Saved_title.CHM");
}

TEST_F(MainParametersTest, ASavedOutputIsShownAsItIs) {
  Save("OUTPUT", "D:\\x.chm");
  EXPECT_EQ(Row("OUTPUT").text, "D:\\x.chm");
}

TEST_F(MainParametersTest, PosixPathsFollowTheirOwnRules) {
  Globals().path_style = PathStyle::kPosix;
  site.url = "file:///srv/web";
  EXPECT_EQ(Row("OUTPUT").text, "/srv/web/web.CHM");
  EXPECT_EQ(Globals().working_folder, "/srv/web");
}

TEST_F(MainParametersTest, CheckBoxesAreOnExceptForKeepingTheProject) {
  for (const char* key : kCheckBoxes) {
    EXPECT_EQ(Row(key).checked, std::string(key) != "LEAVEPROJECTFILE") << key;
  }
}

TEST_F(MainParametersTest, ABoxIsCheckedExactlyWhenItsSavedNumberIsOne) {
  const std::pair<const char*, bool> values[] = {{"1", true},   {"1.0", true}, {" 1 ", true},
                                                 {"0", false},  {"-1", false}, {"2", false},
                                                 {"1.5", false}};
  for (const auto& [value, checked] : values) {
    for (const char* key : kCheckBoxes) Save(key, value);
    ASSERT_TRUE(frmMain::Load()->BuildUI());
    for (const char* key : kCheckBoxes) EXPECT_EQ(Row(key).checked, checked) << key << value;
  }
  EXPECT_EQ(Reports(), 0);
}

TEST_F(MainParametersTest, ASavedStateThatIsNoNumberIsReported) {
  Save("CLOSELOG", "yes");
  EXPECT_FALSE(frmMain::Load()->BuildUI());
  ASSERT_EQ(Reports(), 1);
  EXPECT_TRUE(LastReportIsFrom("BuildUI"));
  EXPECT_NE(dialog->reports[0].find("Error: 13,"), std::string::npos);
  dialog->answers = {"IGNORE"};
  EXPECT_TRUE(frmMain::Load()->BuildUI());
}

TEST_F(MainParametersTest, TheListHoldsEveryPageOfTheStructureOnce) {
  const auto a = site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  const auto shared = site.AddPage("b.htm");
  site.AddNode(a, "B", shared);
  site.AddNode(nullptr, "label only");
  site.AddNode(nullptr, "B again", shared);
  site.AddNode(nullptr, "C", site.AddPage("c.htm"));
  site.AddPage("outside.htm");
  const std::vector<ListEntry>& entries = Row("DEFAULTPAGE").entries;
  ASSERT_EQ(entries.size(), 3U);
  const char* const texts[] = {"A", "B", "C"};
  const char* const names[] = {"a.htm", "b.htm", "c.htm"};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(entries[i].text, texts[i]);
    EXPECT_EQ(entries[i].key, std::string(kUrl) + "/" + names[i]);
    EXPECT_EQ(entries[i].parameter, 900);
  }
}

TEST_F(MainParametersTest, WithNothingSavedTheFirstPageIsTheStartPage) {
  site.AddNode(nullptr, "label only");
  site.AddNode(nullptr, "First", site.AddPage("first.htm"));
  site.AddNode(nullptr, "Second", site.AddPage("second.htm"));
  EXPECT_EQ(Row("DEFAULTPAGE").text, "First");
  EXPECT_EQ(Row("DEFAULTPAGE").data, std::string(kUrl) + "/first.htm");
}

TEST_F(MainParametersTest, TheSavedStartPageIsChosen) {
  site.AddNode(nullptr, "First", site.AddPage("first.htm"));
  site.AddNode(nullptr, "Second", site.AddPage("second.htm"));
  Save("DEFAULTPAGE", std::string(kUrl) + "/second.htm");
  EXPECT_EQ(Row("DEFAULTPAGE").text, "Second");
  EXPECT_EQ(Row("DEFAULTPAGE").data, std::string(kUrl) + "/second.htm");
}

TEST_F(MainParametersTest, OfTwoNodesOfTheStartPageTheLaterOnesLabelIsShown) {
  const auto shared = site.AddPage("shared.htm");
  const std::string address = std::string(kUrl) + "/shared.htm";
  site.AddNode(nullptr, "Earlier", shared);
  site.AddNode(nullptr, "Between", site.AddPage("between.htm"));
  site.AddNode(nullptr, "Later", shared);
  EXPECT_EQ(Row("DEFAULTPAGE").text, "Later") << "with nothing saved";
  EXPECT_EQ(Row("DEFAULTPAGE").data, address);
  EXPECT_EQ(Row("DEFAULTPAGE").entries[0].text, "Earlier");
  Save("DEFAULTPAGE", address);
  ASSERT_TRUE(Form()->BuildUI());
  EXPECT_EQ(Row("DEFAULTPAGE").text, "Later");
  EXPECT_EQ(Row("DEFAULTPAGE").data, address);
}

TEST_F(MainParametersTest, AStartPageThatIsGoneLeavesNoneChosen) {
  site.AddNode(nullptr, "First", site.AddPage("first.htm"));
  Save("DEFAULTPAGE", std::string(kUrl) + "/gone.htm");
  EXPECT_EQ(Row("DEFAULTPAGE").text, "");
  EXPECT_EQ(Row("DEFAULTPAGE").data, "");
  EXPECT_EQ(Row("DEFAULTPAGE").entries.size(), 1U);
}

TEST_F(MainParametersTest, FillingAgainStartsFromAnEmptyList) {
  site.AddNode(nullptr, "First", site.AddPage("first.htm"));
  Form();
  ASSERT_TRUE(Form()->BuildUI());
  EXPECT_EQ(Row("DEFAULTPAGE").entries.size(), 1U);
}

TEST_F(MainParametersTest, UnloadingSavesInItsOrder) {
  const auto recording = std::make_shared<RecordingRegistry>();
  TheServices().registry = recording;
  Form();
  frmMain::Unload();
  EXPECT_EQ(recording->set, kSavedInOrder);
}

TEST_F(MainParametersTest, AValueThatCannotBeSavedIsSkippedOnItsOwn) {
  const auto recording = std::make_shared<RecordingRegistry>();
  TheServices().registry = recording;
  for (const std::string& failing : kSavedInOrder) {
    recording->tree = {};
    recording->failing = "";
    Form();
    recording->failing = failing;
    frmMain::Unload();
    recording->failing = "";
    for (const std::string& key : kSavedInOrder) {
      EXPECT_EQ(Saved(key) == "(none)", key == failing) << key << " while failing " << failing;
    }
  }
  EXPECT_EQ(Reports(), 0);
}

TEST_F(MainParametersTest, RowsAreFilledFromTheTopDown) {
  Save("TITLE", "so that there is a section");
  const auto recording = std::make_shared<RecordingRegistry>();
  recording->tree = registry->tree;
  TheServices().registry = recording;
  ASSERT_TRUE(frmMain::Load()->BuildUI());
  EXPECT_EQ(recording->read,
            (std::vector<std::string>{"TITLE", "DEFAULTPAGE", "OUTPUT", "USEKEYWORDS", "FAVORITES",
                                      "VIEWRESULT", "CLOSELOG", "LEAVEPROJECTFILE"}));
  // An aborted filling has not come to the separators below.
  const char* const separators[] = {"SEP0", "SEP1", "SEP2", "SEP3"};
  const char* const rows[] = {"TITLE", "DEFAULTPAGE", "OUTPUT", "USEKEYWORDS"};
  for (int failing = 0; failing < 4; ++failing) {
    frmMain::Unload();
    recording->failing = rows[failing];
    EXPECT_FALSE(frmMain::Load()->BuildUI());
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(Form()->suiParams()[separators[i]].size, i <= failing ? 30.0F : 0.0F)
          << separators[i] << " while failing " << rows[failing];
    }
    recording->failing = "";
  }
}

TEST_F(MainParametersTest, UnloadingSavesEveryValue) {
  site.AddNode(nullptr, "First", site.AddPage("first.htm"));
  const auto form = Form();
  form->suiParams()["TITLE"].text = "Title";
  form->suiParams()["OUTPUT"].text = "C:\\o.chm";
  form->suiParams()["FAVORITES"].checked = false;
  form->suiParams()["LEAVEPROJECTFILE"].checked = true;
  frmMain::Unload();
  const std::pair<const char*, std::string> expected[] = {
      {"LEFT", "100"},     {"HEIGHT", "6000.5"},
      {"TOP", "200"},      {"WIDTH", "5000"},
      {"TITLE", "Title"},  {"USEKEYWORDS", "1"},
      {"FAVORITES", "0"},  {"DEFAULTPAGE", std::string(kUrl) + "/first.htm"},
      {"VIEWRESULT", "1"}, {"OUTPUT", "C:\\o.chm"},
      {"CLOSELOG", "1"},   {"LEAVEPROJECTFILE", "1"}};
  for (const auto& [key, value] : expected) EXPECT_EQ(Saved(key), value) << key;
  EXPECT_EQ(Reports(), 0);
}

TEST_F(MainParametersTest, SavedValuesComeBackWithTheNextDialog) {
  site.AddNode(nullptr, "First", site.AddPage("first.htm"));
  site.AddNode(nullptr, "Second", site.AddPage("second.htm"));
  auto form = Form();
  form->suiParams()["TITLE"].text = "Changed";
  form->suiParams()["OUTPUT"].text = "C:\\changed.chm";
  form->suiParams()["DEFAULTPAGE"].data = std::string(kUrl) + "/second.htm";
  for (const char* key : kCheckBoxes) {
    form->suiParams()[key].checked = !form->suiParams()[key].checked;
  }
  frmMain::Unload();
  EXPECT_EQ(Row("TITLE").text, "Changed");
  EXPECT_EQ(Row("OUTPUT").text, "C:\\changed.chm");
  EXPECT_EQ(Row("DEFAULTPAGE").text, "Second");
  for (const char* key : kCheckBoxes) {
    EXPECT_EQ(Row(key).checked, std::string(key) == "LEAVEPROJECTFILE") << key;
  }
}

TEST_F(MainParametersTest, TwoWebsKeepSeparateValues) {
  Form()->suiParams()["TITLE"].text = "One";
  frmMain::Unload();
  site.url = "file:///C:/Webs/other";
  EXPECT_EQ(Row("TITLE").text, "other");
}

TEST_F(MainParametersTest, ValuesAreSavedUnderTheWebThatTheDialogTook) {
  Form()->suiParams()["TITLE"].text = "Taken";
  MemorySite other("file:///C:/Webs/other");
  Globals().HostApplication = other.Host();
  frmMain::Unload();
  EXPECT_EQ(Saved("TITLE"), "Taken");
  EXPECT_EQ(GetSetting("Scrivo", other.url, "TITLE", "(none)"), "(none)");
  Globals().HostApplication = site.Host();
}

TEST_F(MainParametersTest, AWindowThatFailsIsSkippedAndTheRestIsSaved) {
  Form()->suiParams()["TITLE"].text = "Kept";
  views->main.fails = true;
  frmMain::Unload();
  EXPECT_EQ(Saved("LEFT"), "(none)");
  EXPECT_EQ(Saved("WIDTH"), "(none)");
  EXPECT_EQ(Saved("TITLE"), "Kept");
}

TEST_F(MainParametersTest, AProgramWithoutWindowsSavesTheValuesOnly) {
  views->has_windows = false;
  Form()->suiParams()["TITLE"].text = "Kept";
  frmMain::Unload();
  EXPECT_EQ(Saved("LEFT"), "(none)");
  EXPECT_EQ(Saved("TITLE"), "Kept");
}

TEST_F(MainParametersTest, RetryRunsTheFailedStatementAgain) {
  site.home = site.AddNode(nullptr, "Home", site.AddPage("a.htm"));
  for (const char* call : {"CurrentWeb", "Web.Url", "HomeNode", "NavigationRoot", "Children Home",
                           "File Home", "Node.Url Home"}) {
    site.Fail(call, 1);
  }
  dialog->answers.assign(7, "RETRY");
  ASSERT_TRUE(frmMain::Load()->BuildUI());
  EXPECT_EQ(Reports(), 7);
  EXPECT_EQ(Row("TITLE").text, "Home");
  EXPECT_EQ(Row("DEFAULTPAGE").text, "Home");
}

TEST_F(MainParametersTest, IgnoreLeavesOutTheFailedStatementOnly) {
  site.home = site.AddNode(nullptr, "Home", site.AddPage("a.htm"));
  site.AddNode(nullptr, "B", site.AddPage("b.htm"));
  site.Fail("HomeNode", 1);
  site.Fail("File Home", 1);
  dialog->answers = {"IGNORE", "IGNORE"};
  ASSERT_TRUE(frmMain::Load()->BuildUI());
  EXPECT_EQ(Row("TITLE").text, "");
  EXPECT_EQ(Row("DEFAULTPAGE").text, "B");
  EXPECT_TRUE(Row("USEKEYWORDS").checked);
}

TEST_F(MainParametersTest, AFailingHostAbortedIsNoOpenWeb) {
  site.Fail("CurrentWeb", 1);
  EXPECT_FALSE(frmMain::Load()->BuildUI());
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_TRUE(LastReportIsFrom("BuildUI"));
}

TEST_F(MainParametersTest, AnAbortedNodeCollectorLeavesTheListEmpty) {
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  site.Fail("Children A", 1);
  ASSERT_TRUE(frmMain::Load()->BuildUI());
  EXPECT_TRUE(LastReportIsFrom("AllNodes"));
  EXPECT_TRUE(Row("DEFAULTPAGE").entries.empty());
}

constexpr char kPageAddress[] = "file:///C:/Webs/site/docs/a.htm";

class RelativeLocationTest : public GeneratorTest {};

TEST_F(RelativeLocationTest, IsThePlaceInTheWebThatIsOpenInTheHost) {
  EXPECT_EQ(RelativeLocation(kPageAddress), "docs/a.htm");
  EXPECT_EQ(site.calls, (std::vector<std::string>{
                            "CurrentWeb", std::string("RelativeLocation ") + kPageAddress}));
}

TEST_F(RelativeLocationTest, IsEmptyWhenTheHostCannotTell) {
  site.Fail(std::string("RelativeLocation ") + kPageAddress, 1);
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  site.Fail("CurrentWeb", 1);
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  EXPECT_EQ(Reports(), 0);
}

TEST_F(RelativeLocationTest, IsEmptyWithoutAWebOrAHost) {
  site.is_open = false;
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  Globals().HostApplication = nullptr;
  EXPECT_EQ(RelativeLocation(kPageAddress), "");
  EXPECT_EQ(Reports(), 0);
}

}  // namespace

}  // namespace scrivo

#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

constexpr char kStart[] =
    "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML><HEAD></HEAD><BODY>\r\n";
constexpr char kEnd[] = "</BODY></HTML>\r\n";

std::string Entry(const std::string& label, const std::string& location = "") {
  std::string text =
      "<LI><OBJECT TYPE=\"text/sitemap\">\r\n<PARAM NAME=\"Name\" VALUE=\"" + label + "\">";
  if (!location.empty()) text += "<PARAM NAME=\"Local\" VALUE=\"" + location + "\">";
  return text + "\r\n</OBJECT>\r\n";
}

constexpr char kLocationOfA[] = "RelativeLocation file:///C:/Webs/site/a.htm";

class ContentsFileTest : public GeneratorTest {
 protected:
  std::string Lists() { return Form()->EnumNodes(site.Web()->NavigationRoot()); }
};

TEST_F(ContentsFileTest, AnEmptyStructureGivesAnEmptyList) {
  EXPECT_TRUE(Form()->BuildContentFile());
  EXPECT_EQ(Form()->ContentsPath(), "C:\\Webs\\site\\Scr1A2.hhc");
  EXPECT_EQ(Written("C:\\Webs\\site\\Scr1A2.hhc"), kStart + List("") + kEnd);
}

TEST_F(ContentsFileTest, AWebWithoutAStructureGivesAnEmptyList) {
  site.has_navigation = false;
  EXPECT_TRUE(Form()->BuildContentFile());
  EXPECT_EQ(Written("C:\\Webs\\site\\Scr1A2.hhc"), kStart + List("") + kEnd);
  EXPECT_EQ(Reports(), 0);
}

TEST_F(ContentsFileTest, APageHasItsLocationOnTheLineOfItsLabel) {
  site.AddNode(nullptr, "Intro", site.AddPage("docs/intro.htm"));
  EXPECT_EQ(
      Lists(),
      "<UL>\r\n<LI><OBJECT TYPE=\"text/sitemap\">\r\n"
      "<PARAM NAME=\"Name\" VALUE=\"Intro\"><PARAM NAME=\"Local\" VALUE=\"docs/intro.htm\">\r\n"
      "</OBJECT>\r\n</UL>\r\n");
}

TEST_F(ContentsFileTest, ALabelWithoutAPageHasNoLocation) {
  site.AddNode(nullptr, "Heading");
  EXPECT_EQ(Lists(), List(Entry("Heading")));
}

TEST_F(ContentsFileTest, NothingIsEscapedOrTrimmed) {
  site.AddNode(nullptr, " \"A\" & <b> ", site.AddPage("a\"&<b>.htm"));
  EXPECT_EQ(Lists(), List(Entry(" \"A\" & <b> ", "a\"&<b>.htm")));
}

TEST_F(ContentsFileTest, ThreeLevelsAreThreeListsEachBehindItsParentsObject) {
  const auto top = site.AddNode(nullptr, "1", site.AddPage("1.htm"));
  const auto middle = site.AddNode(top, "1.1", site.AddPage("11.htm"));
  site.AddNode(middle, "1.1.1", site.AddPage("111.htm"));
  site.AddNode(top, "1.2", site.AddPage("12.htm"));
  site.AddNode(nullptr, "2", site.AddPage("2.htm"));
  EXPECT_EQ(Lists(), List(Entry("1", "1.htm") +
                          List(Entry("1.1", "11.htm") + List(Entry("1.1.1", "111.htm")) +
                               Entry("1.2", "12.htm")) +
                          Entry("2", "2.htm")));
}

TEST_F(ContentsFileTest, OnlyTheChildrenOfTheNodeAreWritten) {
  const auto top = site.AddNode(nullptr, "1");
  site.AddNode(top, "1.1");
  site.AddNode(nullptr, "2");
  EXPECT_EQ(Form()->EnumNodes(top), List(Entry("1.1")));
}

TEST_F(ContentsFileTest, EveryTmpInThePathBecomesHhc) {
  site.url = "file:///C:/a.tmp/site";
  files->folders.insert("C:\\a.tmp\\site");
  EXPECT_TRUE(Form()->BuildContentFile());
  EXPECT_EQ(Form()->ContentsPath(), "C:\\a.hhc\\site\\Scr1A2.hhc");
}

TEST_F(ContentsFileTest, PosixPathsFollowTheirOwnRules) {
  Globals().path_style = PathStyle::kPosix;
  site.url = "file:///srv/web";
  site.local_path = "/srv/web";
  files->folders.insert("/srv/web");
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  EXPECT_TRUE(Form()->BuildContentFile());
  EXPECT_EQ(Written("/srv/web/Scr1A2.hhc"), kStart + List(Entry("A", "a.htm")) + kEnd);
}

TEST_F(ContentsFileTest, AWebThatIsNotOnDiskIsReported) {
  site.url = "http://example.com/site";
  EXPECT_FALSE(Form()->BuildContentFile());
  ASSERT_EQ(Reports(), 1);
  EXPECT_TRUE(LastReportIsFrom("BuildContentFile"));
  EXPECT_NE(dialog->reports[0].find("http://example.com/site"), std::string::npos);
}

TEST_F(ContentsFileTest, EveryListIsACallOnTheStackOfTheErrorHandler) {
  const auto top = site.AddNode(nullptr, "1");
  const auto middle = site.AddNode(top, "1.1");
  site.AddNode(middle, "1.1.1");
  site.Fail("Label 1.1.1", 1);
  dialog->answers = {"IGNORE"};
  EXPECT_TRUE(Form()->BuildContentFile());
  ASSERT_EQ(Reports(), 1);
  const std::string indent(20, ' ');
  const std::string level = "\r\n" + indent + "Kestrel.frmMain.EnumNodes()";
  EXPECT_NE(dialog->reports[0].find("The call stack is:" + level + level + level + "\r\n" + indent +
                                    "Kestrel.frmMain.BuildContentFile()"),
            std::string::npos)
      << dialog->reports[0];
}

TEST_F(ContentsFileTest, TheTraceShowsEveryLevelEnteredAndExited) {
  ErrorHandler().TracingEnabled(true);
  site.AddNode(site.AddNode(nullptr, "1"), "1.1");
  const auto form = Form();
  files->files["/log/trace.txt"].clear();
  form->EnumNodes(site.Web()->NavigationRoot());
  const std::string stamp = "21.11.2026 - 14:05:09 --- ";
  const std::string name = "routine: Kestrel.frmMain.EnumNodes\r\n";
  EXPECT_EQ(files->files["/log/trace.txt"], stamp + "Entered " + name + stamp + "Entered " + name +
                                                stamp + "Exited " + name + stamp + "Exited " +
                                                name);
}

TEST_F(ContentsFileTest, RetryRunsTheFailedStatementAgain) {
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  Form();
  for (const char* call : {"Children (root)", "Label A", "File A", "Url a.htm", "Children A"}) {
    site.Fail(call, 2);
  }
  dialog->answers.assign(10, "RETRY");
  EXPECT_EQ(Lists(), List(Entry("A", "a.htm")));
  EXPECT_EQ(Reports(), 10);
}

TEST_F(ContentsFileTest, IgnoreLeavesOutTheFailedStatementOnly) {
  const auto a = site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  site.AddNode(a, "below");
  site.AddNode(nullptr, "B", site.AddPage("b.htm"));
  Form();
  const auto with_ignored = [&](const std::string& call) {
    site.Fail(call, 1);
    dialog->answers = {"IGNORE"};
    const std::string text = Lists();
    EXPECT_TRUE(LastReportIsFrom("EnumNodes")) << call;
    return text;
  };
  const std::string below = List(Entry("below"));
  const std::string b = Entry("B", "b.htm");
  EXPECT_EQ(with_ignored("Children (root)"), List(""));
  EXPECT_EQ(with_ignored("Label A"),
            List("<PARAM NAME=\"Local\" VALUE=\"a.htm\">\r\n</OBJECT>\r\n" + below + b));
  EXPECT_EQ(with_ignored("File A"), List(Entry("A") + below + b));
  EXPECT_EQ(with_ignored("Url a.htm"), List(Entry("A") + below + b));
  EXPECT_EQ(with_ignored("Children A"), List(Entry("A", "a.htm") + b));
}

TEST_F(ContentsFileTest, AnAbortedLevelGivesTheEmptyStringAndItsCallerGoesOn) {
  const auto a = site.AddNode(nullptr, "A");
  site.AddNode(a, "A.1");
  site.AddNode(site.AddNode(a, "A.2"), "A.2.1");
  site.AddNode(nullptr, "B");
  site.Fail("Label A.2", 1);
  EXPECT_EQ(Lists(), List(Entry("A") + Entry("B")));
  EXPECT_EQ(Reports(), 1);
}

TEST_F(ContentsFileTest, AnAbortOfTheOutermostLevelGivesAFileWithoutAList) {
  site.AddNode(nullptr, "A");
  site.Fail("Label A", 1);
  EXPECT_TRUE(Form()->BuildContentFile());
  EXPECT_EQ(Written(Form()->ContentsPath()), std::string(kStart) + kEnd);
}

TEST_F(ContentsFileTest, ALocationThatTheHostCannotTellIsAnsweredByTheUser) {
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  site.Fail(kLocationOfA, 3);
  dialog->answers = {"RETRY", "IGNORE"};
  EXPECT_EQ(Lists(), List(Entry("A")));
  EXPECT_TRUE(LastReportIsFrom("EnumNodes"));
  dialog->answers = {"RETRY"};
  EXPECT_EQ(Lists(), List(Entry("A", "a.htm")));
  EXPECT_EQ(Reports(), 3);
}

TEST_F(ContentsFileTest, ALocationThatIsAbortedEndsItsLevelOnly) {
  const auto top = site.AddNode(nullptr, "Top");
  site.AddNode(top, "A", site.AddPage("a.htm"));
  site.AddNode(nullptr, "B", site.AddPage("b.htm"));
  site.Fail(kLocationOfA, 1);
  EXPECT_TRUE(Form()->BuildContentFile());
  EXPECT_TRUE(LastReportIsFrom("EnumNodes"));
  EXPECT_EQ(Written(Form()->ContentsPath()),
            kStart + List(Entry("Top") + Entry("B", "b.htm")) + kEnd);
}

TEST_F(ContentsFileTest, AnErrorInTheErrorHandlerRisesLevelByLevel) {
  const auto a = site.AddNode(nullptr, "A");
  site.AddNode(a, "A.1");
  site.AddNode(nullptr, "B");
  site.Fail("Label A.1", 1);
  dialog->answers = {"THROW", "IGNORE"};
  EXPECT_EQ(Lists(), List(Entry("A") + Entry("B")));
  ASSERT_EQ(Reports(), 2);
  EXPECT_NE(dialog->reports[1].find("CErrorHandler component failure"), std::string::npos);
}

TEST_F(ContentsFileTest, WhenAnErrorHasRisenRetryCallsTheListBelowAgain) {
  const auto a = site.AddNode(nullptr, "A");
  site.AddNode(a, "A.1");
  site.Fail("Label A.1", 1);
  dialog->answers = {"THROW", "RETRY"};
  EXPECT_EQ(Lists(), List(Entry("A") + List(Entry("A.1"))));
}

TEST_F(ContentsFileTest, AnErrorThatNoLevelCanHandleReachesTheCaller) {
  site.AddNode(site.AddNode(nullptr, "A"), "A.1");
  site.Fail("Label A.1", 1);
  dialog->answers.assign(10, "THROW");
  try {
    Lists();
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.number, CErrorHandler::kComponentFailure);
  }
}

TEST_F(ContentsFileTest, AFileThatCannotBeWrittenIsReportedAndTheResultIsFalse) {
  files->failures.emplace("write C:\\Webs\\site\\Scr1A2.hhc", Error(kDiskFull, "", "disk full"));
  EXPECT_FALSE(Form()->BuildContentFile());
  EXPECT_TRUE(LastReportIsFrom("BuildContentFile"));
}

TEST_F(ContentsFileTest, ARootThatFailsIsReportedOnceAndTriedAgain) {
  site.AddNode(nullptr, "A");
  const auto form = Form();
  site.Fail("NavigationRoot", 1);
  dialog->answers = {"RETRY"};
  EXPECT_TRUE(form->BuildContentFile());
  EXPECT_EQ(Written(form->ContentsPath()), kStart + List(Entry("A")) + kEnd);
}

TEST_F(ContentsFileTest, AHundredThousandLevelsAreWritten) {
  constexpr int kLevels = 100000;
  site.is_recording = false;
  std::shared_ptr<SiteNode> node;
  for (int i = 0; i < kLevels; ++i) node = site.AddNode(node, "n");
  const std::string text = Lists();
  std::string expected;
  for (int i = 0; i < kLevels; ++i) expected += "<UL>\r\n" + Entry("n");
  for (int i = 0; i < kLevels; ++i) expected += "</UL>\r\n";
  EXPECT_TRUE(text == expected);
}

}  // namespace
}  // namespace scrivo

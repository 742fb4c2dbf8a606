#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

class ProjectFileTest : public GeneratorTest {
 protected:
  // The project file's text; a False result fails the test.
  std::string Project() {
    EXPECT_TRUE(Form()->BuildProjectFile());
    return Written(Form()->ProjectPath());
  }
  // The lines below "[FILES]" and its empty line, except for the derived-image page.
  std::string ListedPages() {
    const std::string text = Project();
    const std::string heading = "[FILES]\r\n";
    const std::size_t start = text.find(heading) + heading.size();
    return text.substr(start, text.find("\r\nC:\\Webs\\site\\", start) - start);
  }
};

TEST_F(ProjectFileTest, AProjectWithAnIndexAndFavorites) {
  site.AddNode(nullptr, "Start", site.AddPage("docs/start.htm", "Start", "k"));
  const auto form = Form();
  form->suiParams()["TITLE"].text = "My help";
  form->suiParams()["OUTPUT"].text = "C:\\Out put\\My.CHM";
  form->UseIndex(true);
  EXPECT_TRUE(form->BuildIndexFile());
  EXPECT_TRUE(form->BuildContentFile());
  EXPECT_EQ(Project(),
            "[OPTIONS]\r\n"
            "Auto Index = Yes\r\n"
            "Binary Index = Yes\r\n"
            "Binary TOC = Yes\r\n"
            "Compatibility = 1.1 Or later\r\n"
            "Compiled file=C:\\Out put\\My.CHM\r\n"
            "Contents file=C:\\Webs\\site\\Scr1A3.hhc\r\n"
            "Default window=default\r\n"
            "Default topic=docs/start.htm\r\n"
            "Display compile progress=Yes\r\n"
            "Full-text search=Yes\r\n"
            "Language=0x409 English (United States)\r\n"
            "Title=My help\r\n"
            "Index File = C:\\Webs\\site\\Scr1A2.hhk\r\n"
            "\r\n"
            "[WINDOWS]\r\n"
            "\r\n"
            "default=,\"Scr1A3.hhc\",\r\n"
            "default=,\"Scr1A3.hhc\",\"Scr1A2.hhk\",,,,,,,0x23520,,0x3006,,,,,,,,0\r\n"
            "\r\n"
            "[FILES]\r\n"
            "\r\n"
            "docs/start.htm\r\n"
            "C:\\Webs\\site\\Scr1A4.tmp.htm\r\n");
  EXPECT_EQ(form->ProjectPath(), "C:\\Webs\\site\\Scr1A5.hhp");
  EXPECT_EQ(form->DerivedPath(), "C:\\Webs\\site\\Scr1A4.tmp.htm");
}

TEST_F(ProjectFileTest, WithoutAnIndexTheWindowNamesTheContentsOnly) {
  const auto form = Form();
  form->suiParams()["FAVORITES"].checked = false;
  EXPECT_TRUE(form->BuildContentFile());
  const std::string text = Project();
  EXPECT_NE(text.find("Title=site\r\n\r\n[WINDOWS]\r\n\r\n"
                      "default=,\"Scr1A2.hhc\",\r\n"
                      "default=,\"Scr1A2.hhc\",,,,,,,,0x22520,,0x3006,,,,,,,,0\r\n\r\n[FILES]\r\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("Index File"), std::string::npos);
}

TEST_F(ProjectFileTest, NothingButTheWindowsStyleDependsOnFavorites) {
  const auto form = Form();
  form->suiParams()["FAVORITES"].checked = true;
  std::string with = Project();
  form->suiParams()["FAVORITES"].checked = false;
  files->files.clear();
  // The same temporary names again.
  *files = MemoryFiles();
  files->folders.insert("C:\\Webs\\site");
  const std::string without = Project();
  const std::size_t style = with.find("0x23520");
  ASSERT_NE(style, std::string::npos);
  with.replace(style, 7, "0x22520");
  EXPECT_EQ(with, without);
}

TEST_F(ProjectFileTest, OnlyPagesAreListedWhateverTheCaseOfTheirExtension) {
  for (const char* name : {"a.htm", "b.html", "Page.HTM", "d.Html", "e.asp", "f.shtml", "g.gif",
                           "h", "i.htm.bak", "xhtm", "j.htmx"}) {
    site.AddPage(name);
  }
  EXPECT_EQ(ListedPages(), "\r\na.htm\r\nb.html\r\nPage.HTM\r\nd.Html");
}

TEST_F(ProjectFileTest, PagesOfSubfoldersStandBehindThoseOfTheirFolder) {
  for (const char* name : {"b/deep/x.htm", "z.htm", "a/y.htm", "b/w.htm", "c.htm"}) {
    site.AddPage(name);
  }
  EXPECT_EQ(ListedPages(), "\r\nz.htm\r\nc.htm\r\nb/w.htm\r\nb/deep/x.htm\r\na/y.htm");
}

TEST_F(ProjectFileTest, TheOutputItselfIsNotListed) {
  site.AddPage("a.htm");
  site.AddPage("sub/out.htm");
  site.AddPage("sub/Out.htm");
  Form()->suiParams()["OUTPUT"].text = "C:\\Webs\\site\\sub\\out.htm";
  EXPECT_EQ(ListedPages(), "\r\na.htm\r\nsub/Out.htm");
}

TEST_F(ProjectFileTest, AnEmptyStartPageGivesAnEmptyDefaultTopicWithoutAskingTheHost) {
  EXPECT_NE(Project().find("\r\nDefault topic=\r\n"), std::string::npos);
  EXPECT_EQ(site.CountOf("RelativeLocation"), 0);
}

TEST_F(ProjectFileTest, ALocationThatTheHostCannotTellIsAnsweredByTheUser) {
  site.AddPage("a.htm");
  site.AddPage("b.htm");
  Form()->suiParams()["OUTPUT"].text = "C:\\Webs\\site\\b.htm";
  Form()->suiParams()["DEFAULTPAGE"].data = kUrl + "/start.htm";
  const std::string calls[] = {kUrl + "/start.htm", "C:\\Webs\\site\\b.htm", kUrl + "/a.htm"};
  const auto fail_all = [&] {
    for (const std::string& call : calls) site.Fail("RelativeLocation " + call, 1);
  };
  fail_all();
  dialog->answers.assign(3, "RETRY");
  const std::string whole = Project();
  EXPECT_NE(whole.find("\r\nDefault topic=start.htm\r\n"), std::string::npos) << whole;
  EXPECT_EQ(ListedPages(), "\r\na.htm");
  EXPECT_EQ(Reports(), 3);
  EXPECT_TRUE(LastReportIsFrom("BuildProjectFile"));
  fail_all();
  dialog->answers.assign(3, "IGNORE");
  const std::string text = Project();
  EXPECT_EQ(text.find("Default topic"), std::string::npos) << text;
  fail_all();
  dialog->answers.assign(3, "IGNORE");
  EXPECT_EQ(ListedPages(), "\r\nb.htm");
  for (const std::string& call : calls) {
    site.Fail("RelativeLocation " + call, 1);
    EXPECT_FALSE(Form()->BuildProjectFile()) << call;
    EXPECT_TRUE(LastReportIsFrom("BuildProjectFile")) << call;
  }
}

TEST_F(ProjectFileTest, AHostThatIsGoneIsReported) {
  Form()->suiParams()["DEFAULTPAGE"].data = kUrl + "/start.htm";
  Globals().HostApplication = nullptr;
  EXPECT_FALSE(Form()->BuildProjectFile());
  ASSERT_EQ(Reports(), 1);
  EXPECT_NE(dialog->reports[0].find("Error: 91,"), std::string::npos) << dialog->reports[0];
}

TEST_F(ProjectFileTest, TheStartPageIsTheItemsDataNotItsText) {
  site.AddPage("a.htm");
  Form()->suiParams()["DEFAULTPAGE"].text = "file:///C:/Webs/site/wrong.htm";
  Form()->suiParams()["DEFAULTPAGE"].data = "file:///C:/Webs/site/a.htm";
  EXPECT_NE(Project().find("\r\nDefault topic=a.htm\r\n"), std::string::npos);
}

TEST_F(ProjectFileTest, RetryRunsTheFailedStatementAgain) {
  site.AddPage("a.htm");
  Form();
  for (const char* call : {"BaseFolder", "Files", "Folders", "Extension a.htm", "Url a.htm"}) {
    site.Fail(call, 1);
  }
  dialog->answers.assign(5, "RETRY");
  EXPECT_EQ(ListedPages(), "\r\na.htm");
  EXPECT_EQ(Reports(), 5);
}

TEST_F(ProjectFileTest, IgnoreLeavesOutTheFailedStatementOnly) {
  site.AddPage("a.htm");
  site.AddPage("b.htm");
  site.AddPage("sub/c.htm");
  Form();
  const auto with_ignored = [&](const std::string& call, const std::string& procedure) {
    site.Fail(call, 1);
    dialog->answers = {"IGNORE"};
    const std::string pages = ListedPages();
    EXPECT_TRUE(LastReportIsFrom(procedure)) << call;
    return pages;
  };
  EXPECT_EQ(with_ignored("Extension a.htm", "BuildProjectFile"), "\r\nb.htm\r\nsub/c.htm");
  EXPECT_EQ(with_ignored("Url a.htm", "BuildProjectFile"), "\r\nb.htm\r\nsub/c.htm");
  EXPECT_EQ(with_ignored("Files", "AllFiles"), "\r\nsub/c.htm");
  EXPECT_EQ(with_ignored("Folders", "AllFiles"), "\r\na.htm\r\nb.htm");
}

TEST_F(ProjectFileTest, AnAbortWritesNothingAndGivesFalse) {
  site.AddPage("a.htm");
  Form();
  site.Fail("Url a.htm", 1);
  EXPECT_FALSE(Form()->BuildProjectFile());
  EXPECT_TRUE(LastReportIsFrom("BuildProjectFile"));
  EXPECT_EQ(Form()->ProjectPath(), "");
  EXPECT_TRUE(files->files.empty());
}

TEST_F(ProjectFileTest, AnAbortOfTheFileCollectorListsNoPages) {
  site.AddPage("a.htm");
  Form();
  site.Fail("Files", 1);
  EXPECT_EQ(ListedPages(), "");
  EXPECT_TRUE(LastReportIsFrom("AllFiles"));
}

TEST_F(ProjectFileTest, AFailingWriteIsReportedAndGivesFalse) {
  Form();
  files->failures.emplace("write C:\\Webs\\site\\Scr1A3.hhp", Error(kDiskFull, "", "disk full"));
  EXPECT_FALSE(Form()->BuildProjectFile());
  EXPECT_TRUE(LastReportIsFrom("BuildProjectFile"));
}

}  // namespace
}  // namespace scrivo

#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

std::string IndexEntry(const std::string& keyword, const std::string& topic,
                       const std::string& location) {
  return "<LI><OBJECT TYPE=\"text/sitemap\">\r\n<PARAM NAME=\"Name\" VALUE=\"" + keyword +
         "\"><PARAM NAME=\"Name\" VALUE=\"" + topic + "\"><PARAM NAME=\"Local\" VALUE=\"" +
         location + "\">\r\n</OBJECT>\r\n";
}

class IndexFileTest : public GeneratorTest {};

TEST_F(IndexFileTest, AKeywordIsListedWithTopicAndLocationOnOneLine) {
  site.AddPage("docs/install.htm", "Installing", "setup");
  EXPECT_EQ(Form()->UseKeywords(),
            "<UL>\r\n<LI><OBJECT TYPE=\"text/sitemap\">\r\n"
            "<PARAM NAME=\"Name\" VALUE=\"setup\"><PARAM NAME=\"Name\" VALUE=\"Installing\">"
            "<PARAM NAME=\"Local\" VALUE=\"docs/install.htm\">\r\n"
            "</OBJECT>\r\n</UL>\r\n");
}

TEST_F(IndexFileTest, SemicolonsAndCommasSeparateAndBlanksStay) {
  site.AddPage("a.htm", "T", "a;b, c");
  EXPECT_EQ(Form()->UseKeywords(),
            List(IndexEntry("a", "T", "a.htm") + IndexEntry("b", "T", "a.htm") +
                 IndexEntry(" c", "T", "a.htm")));
}

TEST_F(IndexFileTest, EmptyKeywordsAreKept) {
  site.AddPage("a.htm", "T", ",a;;b;");
  EXPECT_EQ(Form()->UseKeywords(),
            List(IndexEntry("", "T", "a.htm") + IndexEntry("a", "T", "a.htm") +
                 IndexEntry("", "T", "a.htm") + IndexEntry("b", "T", "a.htm") +
                 IndexEntry("", "T", "a.htm")));
}

TEST_F(IndexFileTest, ATopicIsThePagesLabelInTheStructureElseItsTitle) {
  site.AddNode(nullptr, "Label", site.AddPage("in.htm", "Title in", "k"));
  site.AddPage("out.htm", "Title out", "k");
  EXPECT_EQ(Form()->UseKeywords(),
            List(IndexEntry("k", "Label", "in.htm") + IndexEntry("k", "Title out", "out.htm")));
}

TEST_F(IndexFileTest, EntriesAreNeitherSortedNorMergedNorEscaped) {
  site.AddPage("z.htm", "Z \"&<>", "same,b,same,\"<&>\"");
  site.AddPage("sub/a.htm", "A", "a,same");
  site.AddPage("y.htm", "Y", "c");
  EXPECT_EQ(Form()->UseKeywords(),
            List(IndexEntry("same", "Z \"&<>", "z.htm") + IndexEntry("b", "Z \"&<>", "z.htm") +
                 IndexEntry("same", "Z \"&<>", "z.htm") +
                 IndexEntry("\"<&>\"", "Z \"&<>", "z.htm") + IndexEntry("c", "Y", "y.htm") +
                 IndexEntry("a", "A", "sub/a.htm") + IndexEntry("same", "A", "sub/a.htm")));
}

TEST_F(IndexFileTest, AWebWithoutKeywordsGivesTheEmptyString) {
  site.AddPage("a.htm", "A");
  EXPECT_EQ(Form()->UseKeywords(), "");
}

TEST_F(IndexFileTest, KeywordsThatCannotBeReadAreNone) {
  site.AddPage("a.htm", "A", "lost");
  site.AddPage("b.htm", "B", "kept");
  site.Fail("Property a.htm keywords", 1);
  EXPECT_EQ(Form()->UseKeywords(), List(IndexEntry("kept", "B", "b.htm")));
  EXPECT_EQ(Reports(), 0);
}

TEST_F(IndexFileTest, TheFileIsWrittenIntoTheWorkingFolder) {
  site.AddPage("a.htm", "A", "k");
  EXPECT_TRUE(Form()->BuildIndexFile());
  EXPECT_EQ(Form()->IndexPath(), "C:\\Webs\\site\\Scr1A2.hhk");
  EXPECT_EQ(Written("C:\\Webs\\site\\Scr1A2.hhk"),
            "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML><HEAD></HEAD><BODY>\r\n" +
                List(IndexEntry("k", "A", "a.htm")) + "</BODY></HTML>\r\n");
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(IndexFileTest, WithoutKeywordsTheUserIsToldAndTheProjectHasNoIndex) {
  site.AddPage("a.htm", "A");
  Form()->UseIndex(true);
  EXPECT_TRUE(Form()->BuildIndexFile());
  EXPECT_FALSE(Form()->UseIndex());
  EXPECT_EQ(Form()->IndexPath(), "");
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "No keywords were found! No index was created!");
  EXPECT_EQ(desktop->messages[0].style, 48U);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_TRUE(files->files.empty());
}

TEST_F(IndexFileTest, AFoundKeywordLeavesTheUseIndexFlagAlone) {
  site.AddPage("a.htm", "A", "k");
  Form()->UseIndex(true);
  EXPECT_TRUE(Form()->BuildIndexFile());
  EXPECT_TRUE(Form()->UseIndex());
}

TEST_F(IndexFileTest, RetryRunsTheFailedStatementAgain) {
  site.AddNode(nullptr, "Label", site.AddPage("a.htm", "A", "k"));
  site.AddPage("b.htm", "B", "k");
  Form();
  for (const char* call : {"Files", "NavigationEntry a.htm", "Label Label", "Title b.htm",
                           "Url a.htm", "RelativeLocation file:///C:/Webs/site/a.htm"}) {
    site.Fail(call, 1);
  }
  dialog->answers.assign(6, "RETRY");
  EXPECT_EQ(Form()->UseKeywords(),
            List(IndexEntry("k", "Label", "a.htm") + IndexEntry("k", "B", "b.htm")));
  EXPECT_EQ(Reports(), 6);
}

TEST_F(IndexFileTest, IgnoreLeavesOutTheFailedStatementOnly) {
  site.AddNode(nullptr, "Label", site.AddPage("a.htm", "A", "k,l"));
  Form();
  const auto with_ignored = [&](const std::string& call) {
    site.Fail(call, 1);
    dialog->answers = {"IGNORE"};
    const std::string text = Form()->UseKeywords();
    EXPECT_TRUE(LastReportIsFrom("UseKeywords")) << call;
    return text;
  };
  EXPECT_EQ(with_ignored("NavigationEntry a.htm"),
            List(IndexEntry("k", "A", "a.htm") + IndexEntry("l", "A", "a.htm")));
  EXPECT_EQ(with_ignored("Label Label"),
            List(IndexEntry("k", "", "a.htm") + IndexEntry("l", "", "a.htm")));
  EXPECT_EQ(with_ignored("Url a.htm"), List(IndexEntry("l", "Label", "a.htm")));
  EXPECT_EQ(with_ignored("RelativeLocation file:///C:/Webs/site/a.htm"),
            List(IndexEntry("l", "Label", "a.htm")));
}

TEST_F(IndexFileTest, AnAbortedCollectionGivesNoIndex) {
  site.AddPage("a.htm", "A", "k");
  site.AddPage("b.htm", "B", "k");
  site.Fail("Url b.htm", 1);
  Form()->UseIndex(true);
  EXPECT_EQ(Form()->UseKeywords(), "");
  EXPECT_TRUE(LastReportIsFrom("UseKeywords"));
  site.Fail("Url b.htm", 1);
  EXPECT_TRUE(Form()->BuildIndexFile());
  EXPECT_FALSE(Form()->UseIndex());
}

TEST_F(IndexFileTest, ALocationThatIsAbortedEndsTheCollectionOnly) {
  site.AddPage("a.htm", "A", "k");
  site.AddPage("b.htm", "B", "k");
  Form()->UseIndex(true);
  site.Fail("RelativeLocation file:///C:/Webs/site/b.htm", 1);
  EXPECT_TRUE(Form()->BuildIndexFile());
  EXPECT_TRUE(LastReportIsFrom("UseKeywords"));
  EXPECT_EQ(Reports(), 1);
  EXPECT_FALSE(Form()->UseIndex());
  EXPECT_EQ(Form()->IndexPath(), "");
}

TEST_F(IndexFileTest, AFailingWriteIsAnsweredByTheUser) {
  site.AddPage("a.htm", "A", "k");
  const auto form = Form();
  files->failures.emplace("write C:\\Webs\\site\\Scr1A2.hhk", Error(kDiskFull, "", "disk full"));
  EXPECT_FALSE(form->BuildIndexFile());
  EXPECT_TRUE(LastReportIsFrom("BuildIndexFile"));
  files->failures.emplace("write C:\\Webs\\site\\Scr1A3.hhk", Error(kDiskFull, "", "disk full"));
  dialog->answers = {"IGNORE"};
  EXPECT_TRUE(form->BuildIndexFile());
}

TEST_F(IndexFileTest, AWebThatIsNotOnDiskIsReported) {
  site.url = "http://example.com/site";
  site.AddPage("a.htm", "A", "k");
  EXPECT_FALSE(Form()->BuildIndexFile());
  EXPECT_TRUE(LastReportIsFrom("BuildIndexFile"));
}

}  // namespace
}  // namespace scrivo

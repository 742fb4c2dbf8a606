#include "webs/structure_file.h"

#include <gtest/gtest.h>

#include "tests/webs/reported.h"

namespace scrivo {
namespace {

const std::string kHeader = "3.0.0.507\r\n1054\r\n";

class StructureFileTest : public testing::Test {
 protected:
  std::vector<StructureNode> Parse(const std::string& text) {
    return ParseStructure(text, "structure.cnf", report);
  }
  std::vector<StructureNode> ParseNodes(const std::string& nodes) { return Parse(kHeader + nodes); }

  WebProblemList report;
};

TEST_F(StructureFileTest, ReadsTheFieldsOfANode) {
  const auto nodes = ParseNodes("1003,docs/main_window.htm,0,Main Window,1000,959624134,0\r\n");
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0].id, 1003u);
  EXPECT_EQ(nodes[0].page, "docs/main_window.htm");
  EXPECT_EQ(nodes[0].label, "Main Window");
  EXPECT_EQ(nodes[0].parent, 1000u);
  EXPECT_FALSE(nodes[0].leaves_web);
  EXPECT_FALSE(nodes[0].IsLinkBar());
  EXPECT_EQ(nodes[0].line, 3u);
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, ReadsLinesThatEndInLineFeedOnly) {
  const auto nodes =
      Parse("3.0.0.507\n1002\n1000,a.htm,0,A,0,1,1\nx:BW|true\n1001,b.htm,0,B,0,1,0");
  ASSERT_EQ(nodes.size(), 2u);
  EXPECT_EQ(nodes[1].page, "b.htm");
  EXPECT_EQ(nodes[1].line, 5u);
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, ReadsALastLineWithoutALineEnd) {
  EXPECT_EQ(ParseNodes("1000,a.htm,0,A,0,1,0").size(), 1u);
  EXPECT_EQ(ParseNodes("1000,a.htm,0,A,0,1,1\r\nvti_globalpage:BW|true").size(), 1u);
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, AnEmptyFileHasNoNodes) {
  EXPECT_TRUE(Parse("").empty());
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, AFileOfTheTwoHeaderLinesHasNoNodes) {
  EXPECT_TRUE(Parse("3.0.0.507\r\n1000").empty());
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, ABackslashEscapesCommaAndBackslashInPageAndLabel) {
  const auto nodes = ParseNodes(R"(1000,a\,b\\c.htm,0,Hello\, World! \\o/,0,1,0)");
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0].page, R"(a,b\c.htm)");
  EXPECT_EQ(nodes[0].label, R"(Hello, World! \o/)");
}

TEST_F(StructureFileTest, ABackslashAtTheEndOfTheLineIsText) {
  EXPECT_TRUE(ParseNodes("1000,a.htm,0,A,0,1,0\\").empty());
  EXPECT_EQ(Reported(report), "structure.cnf:3: a field that should be a number is not\n");
}

TEST_F(StructureFileTest, LabelsKeepBlanksTabsAndMarkup) {
  const auto nodes = ParseNodes("1000,a.htm,0,\t 100 % <b> & (more) ,0,1,0");
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0].label, "\t 100 % <b> & (more) ");
}

TEST_F(StructureFileTest, PagesKeepBlanksQuotesAndNoBreakSpaces) {
  const auto nodes = ParseNodes("1000,my \"old\" (1)\xC2\xA0\xC3\xA9.htm,0,A,0,1,0");
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0].page, "my \"old\" (1)\xC2\xA0\xC3\xA9.htm");
}

TEST_F(StructureFileTest, ReadsAsManyPropertiesAsTheNodeSays) {
  const auto nodes = ParseNodes(
      "1000,a.htm,0,A,0,1,2\r\nvti_globalpage:BW|true\r\nvti_nonnavpage:BW|false\r\n"
      "1001,b.htm,0,B,0,1,1\r\nvti_unknown:SW|1,2,3,4,5,6,7\r\n"
      "1002,c.htm,0,C,0,1,0\r\n");
  ASSERT_EQ(nodes.size(), 3u);
  EXPECT_EQ(nodes[2].page, "c.htm");
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, APropertyThatLooksLikeANodeIsNone) {
  const auto nodes = ParseNodes("1000,a.htm,0,A,0,1,1\r\n1001,b.htm,0,B,0,1,0\r\n");
  EXPECT_EQ(nodes.size(), 1u);
  EXPECT_EQ(Reported(report), "structure.cnf:4: not a property of the entry above\n");
}

TEST_F(StructureFileTest, APageOutOfTheNavigationBarsIsANodeLikeOthers) {
  EXPECT_EQ(ParseNodes("1000,a.htm,0,A,0,1,1\r\nvti_nonnavpage:BW|true").size(), 1u);
}

TEST_F(StructureFileTest, KnowsLinkBarsAndLinksThatLeaveTheWeb) {
  const auto nodes = ParseNodes(
      "1010,sid:1010,0,Links,0,1,1\r\nvti_navsequence:BW|true\r\n"
      "1011,http://example.com/a\\,b,1,Elsewhere,1010,1,0\r\n");
  ASSERT_EQ(nodes.size(), 2u);
  EXPECT_TRUE(nodes[0].IsLinkBar());
  EXPECT_FALSE(nodes[1].IsLinkBar());
  EXPECT_TRUE(nodes[1].leaves_web);
  EXPECT_EQ(nodes[1].page, "http://example.com/a,b");
}

TEST_F(StructureFileTest, ALineWithTooFewFieldsIsReportedAndSkipped) {
  const auto nodes = ParseNodes("1000,a.htm,0,A,0,1,0\r\n1001,b.htm,0\r\n1002,c.htm,0,C,0,1,0\r\n");
  ASSERT_EQ(nodes.size(), 2u);
  EXPECT_EQ(nodes[1].page, "c.htm");
  EXPECT_EQ(Reported(report), "structure.cnf:4: 3 fields instead of 7\n");
}

TEST_F(StructureFileTest, ALineWithTooManyFieldsIsReportedAndSkipped) {
  EXPECT_TRUE(ParseNodes("1000,a.htm,0,Hello, World,0,1,0\r\n").empty());
  EXPECT_EQ(Reported(report), "structure.cnf:3: 8 fields instead of 7\n");
}

TEST_F(StructureFileTest, ALineThatIsNoNodeAtAllIsReported) {
  EXPECT_TRUE(ParseNodes("<<<<<<< HEAD\n").empty());
  EXPECT_EQ(Reported(report), "structure.cnf:3: 1 field instead of 7\n");
}

TEST_F(StructureFileTest, EachFieldThatShouldBeANumberMustBeOne) {
  for (const char* line : {"x,a.htm,0,A,0,1,0", "1000,a.htm,x,A,0,1,0", "1000,a.htm,0,A,x,1,0",
                           "1000,a.htm,0,A,0,x,0", "1000,a.htm,0,A,0,1,x", "1000,a.htm,0,A,0,1,",
                           "-1,a.htm,0,A,0,1,0", "99999999999999999999,a.htm,0,A,0,1,0"}) {
    report.problems.clear();
    EXPECT_TRUE(ParseNodes(line).empty()) << line;
    EXPECT_EQ(Reported(report), "structure.cnf:3: a field that should be a number is not\n")
        << line;
  }
}

TEST_F(StructureFileTest, ThePropertiesOfASkippedNodeAreSkippedWithIt) {
  const auto nodes =
      ParseNodes("1000,a.htm,x,A,0,1,1\r\nvti_globalpage:BW|true\r\n1001,b.htm,0,B,0,1,0");
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(report.problems.size(), 1u);
}

TEST_F(StructureFileTest, AFileThatEndsInsideANodeKeepsTheNodesBefore) {
  const auto nodes = ParseNodes("1000,a.htm,0,A,0,1,0\r\n1001,b.ht");
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(Reported(report), "structure.cnf:4: 2 fields instead of 7\n");
}

TEST_F(StructureFileTest, AFileThatEndsBeforeAPropertyKeepsItsNode) {
  EXPECT_EQ(ParseNodes("1000,a.htm,0,A,0,1,2\r\nvti_globalpage:BW|true\r\n").size(), 1u);
  EXPECT_EQ(Reported(report),
            "structure.cnf:4: the file ends within the properties of its last entry\n");
}

TEST_F(StructureFileTest, AnEndlessCountOfPropertiesEndsWithTheFile) {
  EXPECT_EQ(ParseNodes("1000,a.htm,0,A,0,1,18446744073709551615\r\n").size(), 1u);
  EXPECT_EQ(report.problems.size(), 1u);
}

TEST_F(StructureFileTest, ABinaryFileIsReportedOnceAndHasNoNodes) {
  EXPECT_TRUE(Parse(std::string("\x7F"
                                "ELF\0\0\n1000,a.htm,0,A,0,1,0\n",
                                29))
                  .empty());
  EXPECT_EQ(Reported(report), "structure.cnf:0: not a text file; no navigation structure read\n");
}

TEST_F(StructureFileTest, AMissingHeaderLosesNoNode) {
  const auto nodes = Parse("1000,a.htm,0,A,0,1,0\r\n1001,b.htm,0,B,0,1,0\r\n1002,c.htm,0,C,0,1,0");
  EXPECT_EQ(nodes.size(), 3u);
  EXPECT_EQ(Reported(report),
            "structure.cnf:1: the version is missing\n"
            "structure.cnf:2: the next free number is missing\n");
}

TEST_F(StructureFileTest, AByteOrderMarkIsNoPartOfTheVersion) {
  EXPECT_EQ(Parse("\xEF\xBB\xBF"
                  "3.0.0.507\n1001\n1000,a.htm,0,A,0,1,0\n")
                .size(),
            1u);
  EXPECT_EQ(Reported(report), "");
}

TEST_F(StructureFileTest, EmptyLinesBetweenNodesAreNoNodes) {
  EXPECT_EQ(ParseNodes("\r\n1000,a.htm,0,A,0,1,0\r\n \t\r\n1001,b.htm,0,B,0,1,0\r\n\r\n").size(),
            2u);
  EXPECT_EQ(Reported(report), "");
}

}  // namespace
}  // namespace scrivo

#include "exporter/markdown.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace scrivo {
namespace {

std::string Convert(std::string_view html, int shift = 0, std::string_view title = "") {
  MarkdownRules rules;
  rules.heading_shift = shift;
  rules.known_title = title;
  rules.link = [](std::string_view address) {
    return address.starts_with("javascript:") ? std::string() : std::string(address);
  };
  rules.picture = rules.link;
  return PageAsMarkdown(html, rules);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Markdown, IsThatOfTheGoldenFiles) {
  const std::filesystem::path folder = std::filesystem::path(EXPORTER_TEST_DATA) / "golden";
  int pages = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".htm") continue;
    std::filesystem::path golden = entry.path();
    golden.replace_extension(".md");
    EXPECT_EQ(Convert(ReadFile(entry.path())), ReadFile(golden)) << entry.path();
    ++pages;
  }
  EXPECT_GT(pages, 0);
}

TEST(Markdown, SetsHeadingsBelowTheTopics) {
  EXPECT_EQ(Convert("<h1>A</h1><h2>B</h2><h6>C</h6>", 2), "### A\n\n#### B\n\n###### C\n");
  EXPECT_EQ(Convert("<h1>The page</h1>x<h1>The page</h1>", 1, "the Page"), "x\n\n## The page\n");
}

TEST(Markdown, EscapesWhatWouldMeanSomething) {
  EXPECT_EQ(Convert("<p>*a* _b_ c_d [e] `f` &lt;g&gt; &amp;amp;"),
            "\\*a\\* \\_b\\_ c_d \\[e\\] \\`f\\` \\<g> \\&amp;\n");
  EXPECT_EQ(Convert("<p># no heading<p>1. no list<p>- nor this<p>+ x<p>> y"),
            "\\# no heading\n\n1\\. no list\n\n\\- nor this\n\n\\+ x\n\n\\> y\n");
}

TEST(Markdown, TakesTwoLineEndsForTheEndOfAParagraph) {
  EXPECT_EQ(Convert("a<br>b<br> <br><br>c<br>"), "a\\\nb\n\nc\n");
  EXPECT_EQ(Convert("<b>a<br><br><a href=p>b<br><br>c</a></b> d\\<br>"),
            "**a**\n\n**[b](p)**\n\n**[c](p)** d\\\\\n");
  EXPECT_EQ(Convert("<i>a<br></i>b"), "*a*\\\nb\n");
}

TEST(Markdown, LinksToThePagesInFrames) {
  EXPECT_EQ(Convert("<frameset><frame name=menu src=m.htm><frame src=a.htm><frame name=none>"
                    "<noframes>no</noframes></frameset>"),
            "[menu](m.htm)\n\n[a.htm](a.htm)\n");
  EXPECT_EQ(Convert("a<iframe title='The map' src=b.htm>no</iframe>b"),
            "a\n\n[The map](b.htm)\n\nb\n");
}

TEST(Markdown, LeavesOutLinesAndRowsOfBlanks) {
  EXPECT_EQ(Convert("a<p>&nbsp;<br>&nbsp;</p><h2>&nbsp;</h2><p>\xE3\x80\x80</p>b"), "a\n\nb\n");
  EXPECT_EQ(Convert("<table><tr><th>a<th>b<tr><td>&nbsp;<td><tr><td>&nbsp;<td>c</table>"),
            "| a | b |\n| --- | --- |\n| | c |\n");
}

TEST(Markdown, KeepsMarksOffTheBlanksAroundThem) {
  EXPECT_EQ(Convert("a<b> bold </b>b <i></i><b><i>both</i></b>"), "a **bold** b ***both***\n");
}

TEST(Markdown, LeavesTheTextOfLinksThatLeadNowhere) {
  EXPECT_EQ(Convert("<a href='javascript:x'>a</a> <a name=n>b</a> <a href=p.htm>c</a>"),
            "a b [c](p.htm)\n");
}

TEST(Markdown, FencesCodeWithMoreTicksThanItHas) {
  EXPECT_EQ(Convert("<pre>\na ``` b\n  c &lt;d&gt;\n</pre>"), "````\na ``` b\n  c <d>\n````\n");
  EXPECT_EQ(Convert("x <code>a`b</code> y"), "x ``a`b`` y\n");
}

TEST(Markdown, NamesTheAnchorsThatAreAskedFor) {
  MarkdownRules rules;
  rules.link = [](std::string_view address) { return std::string(address); };
  rules.picture = rules.link;
  rules.anchor = [](std::string_view name) {
    return name == "no" ? std::string() : std::string(name);
  };
  const auto convert = [&](std::string_view html) { return PageAsMarkdown(html, rules); };
  EXPECT_EQ(convert("<p id=a>x <a name=b>y</a> <i id=no>z</i>"),
            "<a id=\"a\"></a>x <a id=\"b\"></a>y *z*\n");
  EXPECT_EQ(convert("x<h2 id=a><a name=b>H</a></h2>"),
            "x\n\n<a id=\"a\"></a><a id=\"b\"></a>\n\n## H\n");
  // One link cannot hold another.
  EXPECT_EQ(convert("<a href=p id=a>b <b id=c>d</b></a> e"),
            "<a id=\"a\"></a>[b **d**](p) <a id=\"c\"></a>e\n");
  EXPECT_EQ(convert("<ul><li id=a>x</ul><pre id=b>y</pre><table id=c><tr><td>1<td id=d>2</table>"),
            "- <a id=\"a\"></a>x\n\n<a id=\"b\"></a>\n\n```\ny\n```\n\n<a id=\"c\"></a>\n\n"
            "| | |\n| --- | --- |\n| 1 | <a id=\"d\"></a>2 |\n");
  rules.known_title = "H";
  EXPECT_EQ(convert("<h1 id=a>H</h1>x<p id=b>"), "<a id=\"a\"></a>\n\nx\n\n<a id=\"b\"></a>\n");
}

TEST(Markdown, TakesTablesOfLayoutForText) {
  EXPECT_EQ(Convert("<table><tr><td><h1>A</h1></td><td>b<table><tr><td>c</td><td>d</td></tr>"
                    "</table></td></tr></table>"),
            "# A\n\nb\n\n| | |\n| --- | --- |\n| c | d |\n");
}

TEST(Markdown, StandsWhatIsNeverClosedAndWhatIsClosedTwice) {
  EXPECT_EQ(Convert("<ul><li>a<ul><li>b"), "- a\n  - b\n");
  EXPECT_EQ(Convert("</ul></li></table></b></a></blockquote>x"), "x\n");
  EXPECT_EQ(Convert("<blockquote><ul><li>a</blockquote>b"), "> - a\n\nb\n");
  std::string deep;
  for (int i = 0; i < 5000; ++i) deep += "<ul><li>";
  EXPECT_LT(Convert(deep + "x").size(), 1000u);
  deep.clear();
  for (int i = 0; i < 5000; ++i) deep += "<b>";
  EXPECT_LT(Convert(deep + "x").size(), 1000u);
}

}  // namespace
}  // namespace scrivo

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class CheckCommand : public ScrivoRun {
 protected:
  void PutPage(const std::string& name, const std::string& body) {
    web.Write(name,
              "<html><head><title>T</title><meta name=\"keywords\" content=\"k\"></head>"
              "<body>" +
                  body + "</body></html>");
  }
};

TEST_F(CheckCommand, FindsNothingInAWebThatIsRight) {
  PutPage("index.htm", "");
  EXPECT_EQ(Run({"check", WebPath()}), 0);
  EXPECT_EQ(out, "Nothing found in 2 pages\n");
  EXPECT_EQ(Plain(err), "Checking WEB\n" + ContentsLine("all of 2"));
}

TEST_F(CheckCommand, ReportsByKindWithASum) {
  PutPage("index.htm", "<a href=\"none.htm\">\n<img src=\"none.gif\">");
  PutPage("docs/b.htm", "<a href=\"none.htm\">");
  EXPECT_EQ(Run({"check", WebPath(), "-q"}), 1);
  EXPECT_EQ(out,
            "Pages that the contents do not show (1). Put them into the navigation structure, or "
            "remove them.\n"
            "  docs/b.htm: T\n"
            "\n"
            "Links that lead nowhere (2). Correct the links or add the files.\n"
            "  index.htm:1: none.htm does not exist\n"
            "  docs/b.htm:1: none.htm does not exist\n"
            "\n"
            "Missing pictures (1). Add the pictures, or remove what shows them.\n"
            "  index.htm:2: none.gif does not exist\n"
            "\n"
            "4 findings of 3 kinds in 3 pages\n");
  EXPECT_EQ(err, "");
}

TEST_F(CheckCommand, ShowsTwentyOfAKindUnlessAskedForAll) {
  std::string body;
  for (int i = 1; i <= 25; ++i) body += "<a href=\"n" + std::to_string(i) + ".htm\">";
  PutPage("index.htm", body);
  EXPECT_EQ(Run({"check", WebPath()}), 1);
  EXPECT_NE(
      out.find("n20.htm does not exist\n  and 5 more. To see them all, add --all-messages.\n\n25 "
               "findings in 2 pages\n"),
      std::string::npos)
      << out;
  EXPECT_EQ(Run({"check", WebPath(), "--all-messages"}), 1);
  EXPECT_NE(out.find("n25.htm does not exist\n\n25 findings"), std::string::npos) << out;
}

TEST_F(CheckCommand, LeavesOutWhatACompileLeavesOut) {
  PutPage("index.htm",
          "<a href=\"_private/form.htm\">a</a><img src=\"_Private/logo.gif\">"
          "<a href=\".notes/a.htm\">b</a><a href=\"docs/.draft.htm\">c</a>"
          "<a href=\"docs/_vti_cnf/a.htm\">d</a>");
  PutPage("_private/form.htm", "<a href=\"none.htm\">");
  web.Write("_private/logo.gif", "GIF");
  PutPage(".notes/a.htm", "");
  PutPage("docs/.draft.htm", "");
  web.Write("docs/_vti_cnf/a.htm", "vti_title:SR|A");
  EXPECT_EQ(Run({"check", WebPath()}), 1);
  EXPECT_NE(err.find("Left out: 4 files (.notes, _private and docs/.draft.htm), also where pages "
                     "link to them. To take them in, add --with-hidden.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(out,
            "Links that lead nowhere (4). Correct the links or add the files.\n"
            "  index.htm:1: _private/form.htm is left out of the help file\n"
            "  index.htm:1: .notes/a.htm is left out of the help file\n"
            "  index.htm:1: docs/.draft.htm is left out of the help file\n"
            "  index.htm:1: docs/_vti_cnf/a.htm is left out of the help file\n"
            "\n"
            "Missing pictures (1). Add the pictures, or remove what shows them.\n"
            "  index.htm:1: _Private/logo.gif is left out of the help file\n"
            "\n"
            "5 findings of 2 kinds in 2 pages\n");
  EXPECT_EQ(Run({"check", WebPath(), "--with-hidden"}), 1);
  EXPECT_EQ(out.find("is left out"), std::string::npos) << out;
  EXPECT_NE(out.find("  _private/form.htm:1: none.htm does not exist\n"), std::string::npos) << out;
  EXPECT_EQ(err.find("Left out"), std::string::npos) << err;
}

TEST_F(CheckCommand, TellsOfServiceNotesThatCannotBeRead) {
  PutPage("index.htm", "");
  std::filesystem::create_directories(web.path() / "_vti_pvt" / "service.cnf");
  EXPECT_EQ(Run({"check", WebPath(), "-q"}), 1);
  EXPECT_NE(out.find("  _vti_pvt/service.cnf: the web's charset, language and welcome pages cannot "
                     "be read: "),
            std::string::npos)
      << out;
  const std::vector<std::vector<std::string>> others = {
      {"compile", WebPath(), "-o", Output()}, {"tree", WebPath()}, {"project", WebPath()}};
  for (const std::vector<std::string>& arguments : others) {
    EXPECT_EQ(Run(arguments), 0);
    EXPECT_NE(err.find("service.cnf: the web's charset, language and welcome pages cannot be read"),
              std::string::npos)
        << arguments[0] << err;
  }
}

TEST_F(CheckCommand, PrintsJson) {
  PutPage("index.htm", "<a href=\"a&quot;b\\c.htm\">");
  EXPECT_EQ(Run({"check", WebPath(), "--json"}), 1);
  std::string text = out;
  const std::size_t start = text.find("\"web\": \""), end = text.find("\",\n", start);
  text.replace(start + 8, end - start - 8, "WEB");
  EXPECT_EQ(text,
            "{\n"
            "  \"format\": 1,\n"
            "  \"web\": \"WEB\",\n"
            "  \"pages\": 2,\n"
            "  \"contentsEntries\": 2,\n"
            "  \"counts\": {\"contents-entry\": 0, \"page-outside-contents\": 0, "
            "\"missing-link\": 1, \"link-case\": 0, \"missing-picture\": 0, \"no-title\": 0, "
            "\"no-keywords\": 0, \"lost-text\": 0, \"server-component\": 0, \"wrong-charset\": 0, "
            "\"cut-off\": 0, \"unreadable\": 0},\n"
            "  \"findings\": [\n"
            "    {\"kind\": \"missing-link\", \"file\": \"index.htm\", \"line\": 1, "
            "\"subject\": \"a\\\"b\\\\c.htm\", \"text\": \"a\\\"b\\\\c.htm does not exist\"}\n"
            "  ]\n"
            "}\n");
}

TEST_F(CheckCommand, PrintsJsonWithoutFindings) {
  PutPage("index.htm", "");
  EXPECT_EQ(Run({"check", WebPath(), "--json"}), 0);
  EXPECT_TRUE(out.ends_with("\"unreadable\": 0},\n  \"findings\": []\n}\n")) << out;
}

TEST_F(CheckCommand, FailsForWhatIsNoWeb) {
  EXPECT_EQ(Run({"check", output.PathOf("none")}), 1);
  EXPECT_NE(err.find("the web does not exist"), std::string::npos) << err;
  EXPECT_EQ(out, "");
  EXPECT_EQ(Run({"check"}), 2);
}

TEST_F(CheckCommand, LeavesTheWebAsItIs) {
  const auto changed = std::filesystem::last_write_time(web.path());
  Run({"check", WebPath()});
  EXPECT_EQ(std::filesystem::last_write_time(web.path()), changed);
}

}  // namespace
}  // namespace scrivo

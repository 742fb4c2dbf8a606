// What the real programs print of names and titles that would play tricks on a terminal.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

// Everything that a program prints, on both streams.
std::string Told(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += "'" + word + "' ";
  FILE* const output = popen((line + "2>&1 </dev/null").c_str(), "r");
  std::string told;
  char piece[4096];
  while (const std::size_t got = fread(piece, 1, sizeof piece, output)) told.append(piece, got);
  pclose(output);
  return told;
}

class TerminalText : public testing::Test {
 protected:
  TerminalText() {
    folder.Write("web/index.htm", "<title>Home</title><a href=none\x1B]0;link\x07.htm>x</a>");
    folder.Write("web/" + page, "<title>Title &#27;[2J \x1B[2J</title>");
    folder.Write("web/_vti_pvt/structure.cnf",
                 "3.0.0.507\r\n1003\r\n1000,index.htm,0,Home,0,100,0\r\n"
                 "1001," +
                     page +
                     ",0,Label \x1B[31m\x08,1000,100,0\r\n"
                     "1002,gone\x1B.htm,0,Gone,1000,100,0\r\n");
    folder.Write("p.hhp",
                 "[OPTIONS]\nTitle=T\x1B[2J\nOdd\x1B=1\nDisplay compile progress=Yes\n"
                 "[FILES]\nweb/" +
                     page + "\nno\x1B[0m.htm\n");
  }
  // Both the escape must be seen, and nothing that a terminal would obey.
  static void ExpectVisible(const std::string& told) {
    EXPECT_NE(told.find("\\x1B"), std::string::npos) << told;
    EXPECT_TRUE(std::all_of(told.begin(), told.end(), [](unsigned char c) {
      return c == '\n' || c == '\t' || (c >= 0x20 && c != 0x7F);
    })) << told;
    EXPECT_EQ(told.find("\u009B"), std::string::npos) << told;
  }

  TestFolder folder;
  const std::string page = "page\x1B[31m\u009B.htm";
  const std::string web = folder.PathOf("web"), file = folder.PathOf("a.chm");
};

TEST_F(TerminalText, OfAWebIsVisible) {
  const std::string scrivo = TestProgram("scrivo");
  ExpectVisible(Told({scrivo, "tree", web}));
  ExpectVisible(Told({scrivo, "compile", web, "-o", file}));
  ExpectVisible(Told({scrivo, "project", web}));
  ExpectVisible(Told({scrivo, "tree", folder.PathOf("no\x1B[0m")}));
  ExpectVisible(Told({scrivo, "com\x1B[0mpile"}));
  ExpectVisible(Told({scrivo, "tree", "--no\x1B[0m"}));
}

TEST_F(TerminalText, OfAHelpFileIsVisible) {
  const std::string scrivo = TestProgram("scrivo"), hh = TestProgram("hh");
  ASSERT_NE(Told({scrivo, "compile", web, "-o", file, "--title", "T"}).find("Made"),
            std::string::npos);
  ExpectVisible(Told({scrivo, "list", file}));
  ExpectVisible(Told({scrivo, "info", file}));
  ExpectVisible(Told({scrivo, "text", file}));
  ExpectVisible(Told({scrivo, "list", folder.PathOf("no\x1B[0m.chm")}));
  ExpectVisible(Told({scrivo, "decompile", folder.PathOf("no\x1B[0m.chm"), folder.PathOf("out")}));
  ExpectVisible(Told({hh, "-decompile", "-v", folder.PathOf("out"), file}));
  folder.Write("no help\x1B.chm", "text");
  ExpectVisible(Told({hh, "-decompile", folder.PathOf("out"), folder.PathOf("no help\x1B.chm")}));
}

TEST_F(TerminalText, OfAProjectIsVisible) {
  const std::string hhc = TestProgram("hhc");
  ExpectVisible(Told({hhc, folder.PathOf("p.hhp")}));
  ExpectVisible(Told({hhc, folder.PathOf("no\x1B.hhp")}));
  ExpectVisible(Told({hhc, "--no\x1B"}));
}

}  // namespace
}  // namespace scrivo

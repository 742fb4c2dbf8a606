#include "platform/command_line.h"

#include <gtest/gtest.h>

#include "platform/user_dirs.h"

namespace scrivo {
namespace {

using Words = std::vector<std::string>;

TEST(SplitCommandLine, PartsWordsAtBlanksAndTabs) {
  EXPECT_EQ(SplitCommandLine("hhc project.hhp"), (Words{"hhc", "project.hhp"}));
  EXPECT_EQ(SplitCommandLine("  a \t b  "), (Words{"a", "b"}));
  EXPECT_EQ(SplitCommandLine(""), Words{});
  EXPECT_EQ(SplitCommandLine(" \t "), Words{});
}

TEST(SplitCommandLine, TakesAQuotedProgramAsItStands) {
  EXPECT_EQ(SplitCommandLine("\"/opt/my tools/hhc\" Scr1A2.hhp"),
            (Words{"/opt/my tools/hhc", "Scr1A2.hhp"}));
  EXPECT_EQ(SplitCommandLine("\"C:\\tools\\\" x"), (Words{"C:\\tools\\", "x"}));
  EXPECT_EQ(SplitCommandLine("\"open end"), Words{"open end"});
  EXPECT_EQ(SplitCommandLine("\"\" x"), (Words{"", "x"}));
}

TEST(SplitCommandLine, HoldsBlanksTogetherInQuotes) {
  EXPECT_EQ(SplitCommandLine("p \"a b\" c"), (Words{"p", "a b", "c"}));
  EXPECT_EQ(SplitCommandLine("p a\"b c\"d"), (Words{"p", "ab cd"}));
  EXPECT_EQ(SplitCommandLine("p \"\" x"), (Words{"p", "", "x"}));
  EXPECT_EQ(SplitCommandLine("p \"a \\\"b\\\\ c\\d\""), (Words{"p", "a \"b\\ c\\d"}));
}

TEST(SplitCommandLine, LetsABackslashTakeTheMeaningAway) {
  EXPECT_EQ(SplitCommandLine("p a\\ b\\\tc"), (Words{"p", "a b\tc"}));
  EXPECT_EQ(SplitCommandLine("p \\\"a\\\\b"), (Words{"p", "\"a\\b"}));
}

TEST(SplitCommandLine, LeavesOtherBackslashesAlone) {
  EXPECT_EQ(SplitCommandLine("p a\\b c\\"), (Words{"p", "a\\b", "c\\"}));
}

TEST(EscapeWord, MakesOneWordOfAnything) {
  EXPECT_EQ(EscapeWord("/home/me/my web"), "/home/me/my\\ web");
  EXPECT_EQ(EscapeWord("/plain/path-1.chm"), "/plain/path-1.chm");
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  for (const std::string& word : {all, std::string("a\\"), std::string("\"q\" \\\" \n")}) {
    EXPECT_EQ(SplitCommandLine("\"hh\" -decompile " + EscapeWord(word) + " " + EscapeWord(word)),
              (Words{"hh", "-decompile", word, word}));
  }
}

TEST(DocumentsFolder, IsWhatTheUsersFileTells) {
  EXPECT_EQ(DocumentsFolder("# comment\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
                            "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n",
                            "/home/me"),
            "/home/me/Dokumente");
  EXPECT_EQ(DocumentsFolder("XDG_DOCUMENTS_DIR=\"/data/my \\\"docs\\\"/\"", "/home/me"),
            "/data/my \"docs\"");
  EXPECT_EQ(DocumentsFolder("  XDG_DOCUMENTS_DIR=\"/a\"\nXDG_DOCUMENTS_DIR=\"/b\"\n", "/h"), "/b");
  EXPECT_EQ(DocumentsFolder("XDG_DOCUMENTS_DIR=\"$HOME/\"", "/home/me"), "/home/me");
}

TEST(DocumentsFolder, IsCalledDocumentsWithoutOne) {
  for (const char* const text : {"", "XDG_DOCUMENTS_DIR=relative", "XDG_DOCUMENTS_DIR=\"relative\"",
                                 "#XDG_DOCUMENTS_DIR=\"/x\"", "\n\n"}) {
    EXPECT_EQ(DocumentsFolder(text, "/home/me"), "/home/me/Documents") << text;
  }
}

}  // namespace
}  // namespace scrivo

#include "unpack/safe_path.h"

#include <gtest/gtest.h>

#include <string>

#include "text/code_page.h"

namespace scrivo {
namespace {

struct Case {
  std::string name;
  std::string posix;
  std::string windows;
};

TEST(SafePathTest, MapsNamesToPlacesThatTheSystemCanHold) {
  const Case cases[] = {
      {"/index.htm", "index.htm", "index.htm"},
      {"/a/b/c.htm", "a/b/c.htm", "a/b/c.htm"},
      {"no slash.htm", "no slash.htm", "no slash.htm"},
      {"/#SYSTEM", "#SYSTEM", "#SYSTEM"},
      {"::DataSpace/NameList", "DataSpace/NameList", "DataSpace/NameList"},
      {"/\u0413\u043B.htm", "\u0413\u043B.htm", "\u0413\u043B.htm"},
      {"/a\\b.htm", "a/b.htm", "a/b.htm"},
      {"/a//b.htm", "a/b.htm", "a/b.htm"},
      {"/./a/./b.htm", "a/b.htm", "a/b.htm"},
      {"/a.htm:stream", "a.htm_stream", "a.htm_stream"},
      {"/a.htm::$DATA", "a.htm__$DATA", "a.htm__$DATA"},
      {"/a/c:/b", "a/c_/b", "a/c_/b"},
      {"/a\nb\x7F.htm", "a_b_.htm", "a_b_.htm"},
      {std::string("/a\0b", 4), "a_b", "a_b"},
      {"/a.", "a_", "a_"},
      {"/a. . ", "a____", "a____"},
      {"/...", "___", "___"},
      {"/.. /b", "___/b", "___/b"},
      {"/.hidden", ".hidden", ".hidden"},
      {"/CON", "_CON", "_CON"},
      {"/a/nul.txt", "a/_nul.txt", "a/_nul.txt"},
      {"/Aux .tar.gz", "_Aux .tar.gz", "_Aux .tar.gz"},
      {"/com1", "_com1", "_com1"},
      {"/LPT9.htm", "_LPT9.htm", "_LPT9.htm"},
      {"/COM\u00B2", "_COM\u00B2", "_COM\u00B2"},
      {"/conin$", "_conin$", "_conin$"},
      {"/prn/b", "_prn/b", "_prn/b"},
      {"/console.htm", "console.htm", "console.htm"},
      {"/com10.htm", "com10.htm", "com10.htm"},
      {"/a?b*c<d>e\"f|g", "a?b*c<d>e\"f|g", "a_b_c_d_e_f_g"},
      {"/\xE4.htm", "\xE4.htm", "_.htm"},
      {"/a\xC3", "a\xC3", "a_"},
      {"/\uFFFD.htm", "\uFFFD.htm", "\uFFFD.htm"},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(MakeSafePath(one.name, NameRules::kPosix).path, one.posix) << one.name;
    EXPECT_EQ(MakeSafePath(one.name, NameRules::kWindows).path, one.windows) << one.name;
    EXPECT_EQ(MakeSafePath(one.name, NameRules::kPosix).refusal, "") << one.name;
  }
}

TEST(SafePathTest, RefusesNamesThatLeadElsewhere) {
  const std::string deep = [] {
    std::string name;
    for (int i = 0; i < 101; ++i) name += "/a";
    return name;
  }();
  const std::pair<std::string, std::string> cases[] = {
      {"//server/share/a.htm", "is an absolute path"},
      {"/\\server\\share\\a.htm", "is an absolute path"},
      {"\\a.htm", "is an absolute path"},
      {"/C:/a.htm", "names a drive"},
      {"/c:a.htm", "names a drive"},
      {"c:\\a.htm", "names a drive"},
      {"/../a.htm", "leads out of the folder"},
      {"/a/../../b.htm", "leads out of the folder"},
      {"/a\\..\\..\\b.htm", "leads out of the folder"},
      {"/a/..", "leads out of the folder"},
      {"..", "leads out of the folder"},
      {deep, "is too many folders deep"},
      {"", "has no name"},
      {"/", "has no name"},
      {"/.", "has no name"},
      {"::", "has no name"},
  };
  for (const NameRules rules : {NameRules::kPosix, NameRules::kWindows}) {
    for (const auto& [name, refusal] : cases) {
      EXPECT_EQ(MakeSafePath(name, rules).refusal, refusal) << name;
      EXPECT_EQ(MakeSafePath(name, rules).path, "") << name;
    }
  }
}

TEST(SafePathTest, CutsLongPartsBeforeTheExtension) {
  const std::string long_name = "/" + std::string(300, 'x') + ".html";
  EXPECT_EQ(MakeSafePath(long_name, NameRules::kPosix).path, std::string(235, 'x') + ".html");
  EXPECT_EQ(MakeSafePath(long_name, NameRules::kWindows).path, std::string(235, 'x') + ".html");
  const std::string no_extension = "/" + std::string(300, 'x') + "." + std::string(40, 'y');
  EXPECT_EQ(MakeSafePath(no_extension, NameRules::kPosix).path, std::string(240, 'x'));
}

TEST(SafePathTest, CutsBetweenCharactersAndCountsAsTheSystemDoes) {
  std::string name = "/";
  for (int i = 0; i < 200; ++i) name += "\u0416";
  EXPECT_EQ(MakeSafePath(name, NameRules::kWindows).path, name.substr(1));
  EXPECT_EQ(MakeSafePath(name, NameRules::kPosix).path, name.substr(1, 240));
  const std::string odd = MakeSafePath("/x" + name.substr(1), NameRules::kPosix).path;
  EXPECT_EQ(odd.size(), 239U);
  EXPECT_TRUE(IsUtf8(odd));
}

TEST(SafePathTest, LeavesNoTrapBehindWhenItCuts) {
  const std::string path =
      MakeSafePath("/" + std::string(239, 'x') + "...." + std::string(300, 'y'),
                   NameRules::kWindows)
          .path;
  EXPECT_EQ(path, std::string(239, 'x') + "_");
}

TEST(SafePathTest, IsNeverTheNameOfAGrowingFile) {
  for (const NameRules rules : {NameRules::kPosix, NameRules::kWindows}) {
    EXPECT_EQ(MakeSafePath("/a.htm.scrivo-new", rules).path, "a.htm.scrivo-new_");
    EXPECT_EQ(MakeSafePath("/a.SCRIVO-New/b", rules).path, "a.SCRIVO-New_/b");
    EXPECT_EQ(MakeSafePath("/scrivo-new", rules).path, "scrivo-new");
  }
}

TEST(SafePathTest, CutsHugePartsInNoTime) {
  const std::string path = MakeSafePath("/" + std::string(1 << 20, 'x'), NameRules::kWindows).path;
  EXPECT_EQ(path, std::string(240, 'x'));
}

TEST(NumberedPathTest, PutsTheNumberBeforeTheExtension) {
  EXPECT_EQ(NumberedPath("a.htm", 2), "a~2.htm");
  EXPECT_EQ(NumberedPath("b.c/a", 3), "b.c/a~3");
  EXPECT_EQ(NumberedPath(".hidden", 2), ".hidden~2");
  EXPECT_EQ(NumberedPath("a.tar.gz", 10), "a.tar~10.gz");
}

}  // namespace
}  // namespace scrivo

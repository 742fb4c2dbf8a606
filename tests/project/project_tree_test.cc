#include "project/project_tree.h"

#include <gtest/gtest.h>

#include "tests/hhc/project_folder.h"

namespace scrivo {
namespace {

TEST(TakeApart, TellsSchemesPathsAndFragments) {
  EXPECT_TRUE(TakeApart("http://a/b").web);
  EXPECT_TRUE(TakeApart("//cdn/x.js").external);
  EXPECT_TRUE(TakeApart("mailto:a@b").external);
  EXPECT_FALSE(TakeApart("mailto:a@b").web);
  EXPECT_TRUE(TakeApart("ms-its:x./a.htm").external);
  EXPECT_FALSE(TakeApart("C:\\a.htm").external);
  EXPECT_FALSE(TakeApart("a/b:c.htm").external);
  const Reference reference = TakeApart("a.htm?q=1#part?x");
  EXPECT_EQ(reference.path, "a.htm");
  EXPECT_EQ(reference.fragment, "#part?x");
}

TEST(NormalPath, WorksOutSteps) {
  EXPECT_EQ(NormalPath("a/./b/../c//d.htm"), "a/c/d.htm");
  EXPECT_EQ(NormalPath("/a/../../x.htm"), "../x.htm");
  EXPECT_EQ(NormalPath(""), "");
}

TEST(PercentDecoded, LeavesWhatIsNoCodeAlone) {
  EXPECT_EQ(PercentDecoded("a%20b%2"), "a b%2");
  EXPECT_EQ(PercentDecoded("100%zz"), "100%zz");
}

class ProjectTreeTest : public testing::Test {
 protected:
  std::string Found(const std::string& name, const std::string& from = "") {
    ProjectTree tree(files_, folder_.Path("web"), 1252, false);
    const auto found = tree.Find(name, from, 1252);
    return found ? found->archive_path : "-";
  }
  std::string Listed(const std::string& name) {
    ProjectTree tree(files_, folder_.Path("web"), 1252, false);
    const auto found = tree.FindListed(name);
    return found ? found->archive_path : "-";
  }

  ProjectFolder folder_;
  DiskFiles files_;
};

TEST_F(ProjectTreeTest, FindsNamesInAnyCaseAndSeparator) {
  folder_.Write("web/Sub/Page.HTM", "x");
  EXPECT_EQ(Found("sub\\page.htm"), "Sub/Page.HTM");
  EXPECT_EQ(Found("page.htm", "Sub"), "Sub/Page.HTM");
  EXPECT_EQ(Found("/SUB/PAGE.HTM", "Sub"), "Sub/Page.HTM");
  EXPECT_EQ(Found("sub"), "-");
  EXPECT_EQ(Found("other.htm"), "-");
  EXPECT_EQ(Found("Sub/Page.HTM/x"), "-");
}

TEST_F(ProjectTreeTest, KeepsTheSpellingOfTheReferenceAsAddress) {
  folder_.Write("web/Sub/Page.HTM", "x");
  ProjectTree tree(files_, folder_.Path("web"), 1252, false);
  EXPECT_EQ(tree.Find("sub\\page.htm", "", 1252)->address, "sub/page.htm");
}

TEST_F(ProjectTreeTest, TriesANameAsItIsAndThenDecoded) {
  folder_.Write("web/a b.htm", "x");
  folder_.Write("web/c%20d.htm", "x");
  EXPECT_EQ(Found("a%20b.htm"), "a b.htm");
  EXPECT_EQ(Found("c%20d.htm"), "c%20d.htm");
}

TEST_F(ProjectTreeTest, TriesBytesAsUtf8AndInTheCodePage) {
  folder_.Write("web/caf\u00E9.htm", "x");
  EXPECT_EQ(Found("caf\u00E9.htm"), "caf\u00E9.htm");
  EXPECT_EQ(Found("caf\xE9.htm"), "caf\u00E9.htm");
  EXPECT_EQ(Found("CAF%C3%89.htm"), "caf\u00E9.htm");
}

TEST_F(ProjectTreeTest, TriesTheCodePageInWhichTheSystemNamesFiles) {
  folder_.Write("web/\u76EE\u5F55.htm", "x");
  EXPECT_EQ(Found("\xC4\xBF\xC2\xBC.htm"), "-");
  ProjectTree tree(files_, folder_.Path("web"), 1252, false, 936);
  EXPECT_EQ(tree.FindListed("\xC4\xBF\xC2\xBC.htm")->archive_path, "\u76EE\u5F55.htm");
}

TEST_F(ProjectTreeTest, StoresFilesFromOutsideAtTheTop) {
  folder_.Write("web/in.htm", "x");
  folder_.Write("shared/out.htm", "x");
  EXPECT_EQ(Found("../shared/out.htm"), "out.htm");
  EXPECT_EQ(Listed(folder_.Path("shared/out.htm")), "out.htm");
  EXPECT_EQ(Listed(folder_.Path("web/in.htm")), "in.htm");
}

TEST_F(ProjectTreeTest, DropsFoldersWhenFlat) {
  folder_.Write("web/Sub/Page.htm", "x");
  ProjectTree tree(files_, folder_.Path("web"), 1252, true);
  EXPECT_EQ(tree.FindListed("Sub\\Page.htm")->archive_path, "Page.htm");
}

TEST_F(ProjectTreeTest, ExpandsWildcardsInOrder) {
  folder_.Write("web/h/b.htm", "x");
  folder_.Write("web/h/a.HTM", "x");
  folder_.Write("web/h/c.gif", "x");
  ProjectTree tree(files_, folder_.Path("web"), 1252, false);
  std::vector<std::string> names;
  for (const FoundFile& found : tree.FindMatching("h\\*.htm")) names.push_back(found.archive_path);
  EXPECT_EQ(names, (std::vector<std::string>{"h/a.HTM", "h/b.htm"}));
}

TEST_F(ProjectTreeTest, ExpandsWildcardsInFoldersOfAnyCase) {
  folder_.Write("web/Docs/Deep/a.htm", "x");
  folder_.Write("shared/B.HTM", "x");
  ProjectTree tree(files_, folder_.Path("web"), 1252, false);
  const auto first = [&](const std::string& pattern) {
    const auto found = tree.FindMatching(pattern);
    return found.size() == 1 ? found[0].archive_path : std::to_string(found.size());
  };
  EXPECT_EQ(first("docs\\DEEP\\*.HTM"), "Docs/Deep/a.htm");
  EXPECT_EQ(first("..\\Shared\\*.htm"), "B.HTM");
  EXPECT_EQ(first(folder_.Path("web/docs/deep/?.htm")), "Docs/Deep/a.htm");
  EXPECT_EQ(first(folder_.Path("SHARED/*.htm")), "B.HTM");
  EXPECT_EQ(first("docs\\*.htm"), "0");
  EXPECT_EQ(first("none\\*.htm"), "0");
}

TEST_F(ProjectTreeTest, FindsFullPathsInAnyCase) {
  folder_.Write("web/in.htm", "x");
  folder_.Write("Shared/Out.htm", "x");
  EXPECT_EQ(Listed(folder_.Path("shared/OUT.HTM")), "Out.htm");
}

TEST_F(ProjectTreeTest, SpellsAPathAsTheDiskDoesAsFarAsItGoes) {
  folder_.Write("Out/Help.CHM", "x");
  const auto found = [&](const std::string& path) {
    return PathOnDisk(files_, folder_.Path(path));
  };
  // A system that ignores case finds the folder as it is spelled, and only the name is corrected.
  const auto spelled = [&](const std::string& folder) {
    return folder_.Has(folder) ? folder : "Out";
  };
  EXPECT_EQ(found("out/help.chm"), folder_.Path(spelled("out") + "/Help.CHM"));
  EXPECT_EQ(found("OUT/New/b.chm"), folder_.Path(spelled("OUT") + "/New/b.chm"));
  EXPECT_EQ(found("Out/../OUT/b.chm"), folder_.Path("Out/../" + spelled("OUT") + "/b.chm"));
  EXPECT_EQ(found("none/b.chm"), folder_.Path("none/b.chm"));
}

}  // namespace
}  // namespace scrivo

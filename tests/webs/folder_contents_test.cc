#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/webs/memory_web.h"
#include "webs/folder_tree.h"

namespace scrivo {
namespace {

// The folders of a web as its contents.
class FolderContentsTest : public WithMemoryWeb {
 protected:
  std::string DrawnWeb() { return Drawn(*Open(ContentsChoice::kFolders)); }
};

TEST_F(FolderContentsTest, FoldersAreHeadingsWithTheirIndexPageAsTarget) {
  PutPage("index.htm", "Welcome");
  PutPage("docs/index.htm", "Documents");
  PutPage("docs/a.htm", "A");
  PutPage("docs/deep/b.htm", "B");
  EXPECT_EQ(DrawnWeb(),
            "Welcome: index.htm\nDocuments: docs/index.htm\n-A: docs/a.htm\n-deep: (no file)\n"
            "--B: docs/deep/b.htm\n");
}

TEST_F(FolderContentsTest, EveryWelcomeNameMakesAnIndexPageTheBestOneFirst) {
  PutPage("a/DEFAULT.HTM", "Default");
  PutPage("a/index.html", "Index");
  EXPECT_EQ(DrawnWeb(), "Index: a/index.html\n-Default: a/DEFAULT.HTM\n");
}

TEST_F(FolderContentsTest, PagesAndHeadingsStandTogetherByLabelAsAPersonWouldSortThem) {
  PutPage("1.htm", "Step 10");
  PutPage("2.htm", "step 9");
  PutPage("3.htm", "apple");
  PutPage("4.htm", "Zebra");
  PutPage("Mango/x.htm", "X");
  EXPECT_EQ(DrawnWeb(),
            "apple: 3.htm\nMango: (no file)\n-X: Mango/x.htm\nstep 9: 2.htm\n"
            "Step 10: 1.htm\nZebra: 4.htm\n");
}

TEST_F(FolderContentsTest, EqualTitlesStandInNameOrder) {
  PutPage("b.htm", "Same");
  PutPage("a.htm", "same");
  EXPECT_EQ(DrawnWeb(), "same: a.htm\nSame: b.htm\n");
}

TEST_F(FolderContentsTest, TheHomePageComesFirstWhateverItsTitle) {
  PutPage("a.htm", "A");
  PutPage("index.htm", "Zoo");
  const auto web = Open(ContentsChoice::kFolders);
  EXPECT_EQ(Drawn(*web), "Zoo: index.htm\nA: a.htm\n");
  EXPECT_EQ(web->HomeNode()->Label(), "Zoo");
}

TEST_F(FolderContentsTest, FoldersWithoutPagesAndOtherFilesAreLeftOut) {
  PutPage("a.htm", "A");
  Put("images/x.gif", "");
  Put("server/index.asp", "<title>Not in a help file</title>");
  disk->folders.insert("/web/empty");
  EXPECT_EQ(DrawnWeb(), "A: a.htm\n");
}

TEST_F(FolderContentsTest, AFolderWhoseIndexPageIsForServersOnlyIsALabel) {
  PutPage("shop/default.asp", "Shop");
  PutPage("shop/a.htm", "A");
  EXPECT_EQ(DrawnWeb(), "shop: (no file)\n-A: shop/a.htm\n");
}

TEST_F(FolderContentsTest, APageThatAHelpFileShowsGoesBeforeOneForServers) {
  Put("_vti_pvt/service.cnf", "vti_welcomenames:VX|default.asp index.htm\r\n");
  PutPage("shop/default.asp", "Shop");
  PutPage("shop/index.htm", "The shop");
  EXPECT_EQ(DrawnWeb(), "The shop: shop/index.htm\n");
}

TEST_F(FolderContentsTest, TheNamesThatTheHostNotedGoBeforeTheUsualOnes) {
  Put("_vti_pvt/service.cnf", "vti_welcomenames:VX|Start.htm index.htm\r\n");
  for (const char* folder : {"", "docs/", "shop/", "shop/old/"}) {
    PutPage(folder + std::string("default.htm"), "Default");
    PutPage(folder + std::string("index.htm"), "Index");
    PutPage(folder + std::string("start.htm"), "Start");
  }
  PutPage("plain/default.htm", "Usual name");
  Put("shop/_vti_pvt/service.cnf", "vti_welcomenames:VX|default.htm\r\n");
  const auto web = Open(ContentsChoice::kFolders);
  EXPECT_EQ(Drawn(*web),
            "Start: start.htm\nDefault: default.htm\n"
            "Default: shop/default.htm\n-Default: shop/old/default.htm\n"
            "--Index: shop/old/index.htm\n--Start: shop/old/start.htm\n-Index: shop/index.htm\n"
            "-Start: shop/start.htm\n"
            "Index: index.htm\nStart: docs/start.htm\n-Default: docs/default.htm\n"
            "-Index: docs/index.htm\nUsual name: plain/default.htm\n");
  EXPECT_EQ(web->HomePage()->Url(), "file:///web/start.htm");
}

TEST_F(FolderContentsTest, AFolderOfAnIndexPageAloneIsAnEntry) {
  PutPage("about/index.htm", "About us");
  const auto web = Open(ContentsChoice::kFolders);
  EXPECT_EQ(Drawn(*web), "About us: about/index.htm\n");
  EXPECT_EQ(AllFiles(*web)[0]->NavigationEntry()->Label(), "About us");
}

TEST_F(FolderContentsTest, TitlesInTheAnsiCodePageAreSortedInAnyCase) {
  Put("1.htm",
      "<title>\xD6"
      "b</title>");  // Öb
  Put("2.htm",
      "<title>\xF6"
      "a</title>");  // öa
  EXPECT_EQ(DrawnWeb(),
            "\xC3\xB6"
            "a: 2.htm\n\xC3\x96"
            "b: 1.htm\n");
}

TEST_F(FolderContentsTest, AFolderNameBecomesALabel) {
  PutPage("Caf\xC3\xA9/a.htm", "A");
  EXPECT_EQ(DrawnWeb(), "Caf\xC3\xA9: (no file)\n-A: Caf\xC3\xA9/a.htm\n");
}

TEST_F(FolderContentsTest, AFolderNameThatIsNoUtf8IsTakenForAnsiText) {
  PutPage("Caf\xE9/a.htm", "A");
  EXPECT_EQ(DrawnWeb(), "Caf\xC3\xA9: (no file)\n-A: Caf\xE9/a.htm\n");
}

TEST_F(FolderContentsTest, EachPageIsReadOnce) {
  PutPage("docs/index.htm", "D");
  PutPage("docs/a.htm", "A");
  const auto web = Open(ContentsChoice::kFolders);
  Drawn(*web);
  for (const auto& file : AllFiles(*web)) file->Title();
  EXPECT_EQ(TimesOpened("/web/docs/index.htm"), 1);
  EXPECT_EQ(TimesOpened("/web/docs/a.htm"), 1);
}

TEST(PersonOrderKey, PutsTextsAsAPersonWould) {
  const std::vector<std::string> ordered = {"",
                                            "(draft)",
                                            "2 first",
                                            "10 last",
                                            "apple",
                                            "Banana",
                                            "Step 2",
                                            "step 002b",
                                            "Step 10",
                                            "Step 10a",
                                            "Step 99999999999999999999",
                                            "Step 100000000000000000000",
                                            "steps",
                                            "zebra"};
  std::vector<std::string> sorted(ordered.rbegin(), ordered.rend());
  std::sort(sorted.begin(), sorted.end(), [](const std::string& a, const std::string& b) {
    return PersonOrderKey(a) < PersonOrderKey(b);
  });
  EXPECT_EQ(sorted, ordered);
}

TEST(PersonOrderKey, LeadingZerosDoNotCount) {
  EXPECT_EQ(PersonOrderKey("Part 007"), PersonOrderKey("part 7"));
  EXPECT_EQ(PersonOrderKey("000"), PersonOrderKey("0"));
  EXPECT_LT(PersonOrderKey("0"), PersonOrderKey("1"));
}

}  // namespace

}  // namespace scrivo

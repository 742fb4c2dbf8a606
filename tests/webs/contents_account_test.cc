// Which contents a web gets when nobody chooses.

#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

class ContentsAccountTest : public WithMemoryWeb {
 protected:
  // A web of index.htm and `others` more pages p0.htm, p1.htm …
  void PutPages(int others) {
    PutPage("index.htm", "Home");
    for (int i = 0; i < others; ++i) PutPage("p" + std::to_string(i) + ".htm", "P");
  }
  // Node lines of the pages from `first` to before `end`.
  static std::string Nodes(int first, int end) {
    std::string nodes;
    for (int i = first; i < end; ++i) {
      nodes += std::to_string(2000 + i) + ",p" + std::to_string(i) + ".htm,0,L,0,1,0\n";
    }
    return nodes;
  }
  ContentsAccount Account(const std::string& nodes) {
    PutStructure(nodes);
    return Open()->AccountOfContents();
  }
  const std::string kHome = "1000,index.htm,0,Home,0,1,0\n";
};

TEST_F(ContentsAccountTest, AStructureOfOnePageInALargeWebGivesTheFolders) {
  PutPages(126);
  const ContentsAccount account = Account(kHome);
  EXPECT_EQ(account.used, ContentsChoice::kFolders);
  EXPECT_TRUE(account.is_home_only);
  EXPECT_EQ(account.pages, 127u);
  EXPECT_EQ(account.shown, 1u);
}

TEST_F(ContentsAccountTest, AStructureOfMissingPagesGivesTheFoldersAndNoWarnings) {
  PutPages(3);
  const ContentsAccount account = Account(kHome + Nodes(100, 916));
  EXPECT_EQ(account.used, ContentsChoice::kFolders);
  EXPECT_EQ(account.entries, 817u);
  EXPECT_EQ(account.missing, 816u);
  EXPECT_EQ(Reported(), "");
}

TEST_F(ContentsAccountTest, AStructureCountsFromAQuarterOfThePagesOn) {
  PutPages(11);
  EXPECT_EQ(Account(kHome + Nodes(0, 2)).used, ContentsChoice::kNavigation) << "3 of 12";
  EXPECT_EQ(Account(kHome + Nodes(0, 1)).used, ContentsChoice::kFolders) << "2 of 12";
  EXPECT_EQ(Account(Nodes(0, 1) + Nodes(0, 1) + Nodes(0, 1)).shown, 1u) << "one page";
}

TEST_F(ContentsAccountTest, OfTheEntriesHalfMayLeadNowhere) {
  PutPages(3);
  EXPECT_EQ(Account(kHome + Nodes(0, 3) + Nodes(50, 54)).used, ContentsChoice::kNavigation);
  EXPECT_NE(Reported(), "") << "each is told";
  PutPages(4);
  EXPECT_EQ(Account(kHome + Nodes(0, 3) + Nodes(50, 55)).used, ContentsChoice::kFolders);
}

TEST_F(ContentsAccountTest, LinksThatLeaveTheWebLeadSomewhere) {
  PutPages(3);
  const ContentsAccount account =
      Account(kHome + Nodes(0, 1) + "3000,http://a/,1,Out,0,1,0\n3001,http://b/,1,Out,0,1,0\n" +
              "3002,http://c/,1,Out,0,1,0\n");
  EXPECT_EQ(account.used, ContentsChoice::kNavigation);
  EXPECT_EQ(account.missing, 0u);
}

TEST_F(ContentsAccountTest, AWebOfOnePageKeepsTheLabelThatItsAuthorGaveIt) {
  PutPages(0);
  EXPECT_EQ(Account("1000,index.htm,0,Label,0,1,0\n").used, ContentsChoice::kNavigation);
}

TEST_F(ContentsAccountTest, AStructureThatCannotBeReadIsNotNone) {
  PutPages(1);
  EXPECT_FALSE(Open()->AccountOfContents().has_structure);
  EXPECT_TRUE(Account("").is_readable) << "but empty";
  Put("_vti_pvt/structure.cnf", std::string("\0\0", 2));
  const ContentsAccount binary = Open()->AccountOfContents();
  EXPECT_TRUE(binary.has_structure);
  EXPECT_FALSE(binary.is_readable);
  PutStructure(kHome);
  disk->failures.insert(
      {"open /web/_vti_pvt/structure.cnf", Error(kPermissionDenied, "", "Permission denied")});
  const ContentsAccount refused = Open()->AccountOfContents();
  EXPECT_TRUE(refused.has_structure);
  EXPECT_FALSE(refused.is_readable);
}

TEST_F(ContentsAccountTest, TheHomePageIsFoundWhereverTheContentsShowIt) {
  PutPages(2);
  EXPECT_EQ(Open(ContentsChoice::kNavigation)->HomePage(), nullptr);
  PutStructure("2000,p0.htm,0,First,0,1,0\n1000,index.htm,0,Home,2000,1,0\n");
  EXPECT_EQ(Open()->HomePage()->Url(), "file:///web/index.htm");
}

TEST_F(ContentsAccountTest, WebsInsideItAreKnown) {
  PutPages(1);
  PutPage("shop/index.htm", "Shop");
  Put("shop/_vti_pvt/service.cnf", "");
  PutPage("news/old/index.htm", "Old");
  Put("news/old/_vti_pvt/service.cnf", "");
  EXPECT_EQ(Open()->Subwebs(), (std::vector<std::string>{"shop", "news/old"}));
  EXPECT_FALSE(Open()->HasHostsNotes());
  Put("_vti_pvt/service.cnf", "");
  EXPECT_TRUE(Open()->HasHostsNotes());
}

}  // namespace
}  // namespace scrivo

#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

// The navigation structure as the contents of a web.
class NavigationTest : public WithMemoryWeb {
 protected:
  NavigationTest() {
    for (const char* name : {"index", "a", "b", "c", "d"})
      PutPage(std::string(name) + ".htm", name);
  }
  std::string DrawnFrom(const std::string& nodes) {
    PutStructure(nodes);
    return Drawn(*Open(ContentsChoice::kNavigation));
  }
  const std::string kFile = "/web/_vti_pvt/structure.cnf";
};

TEST_F(NavigationTest, SiblingsKeepTheFilesOrderWhateverTheirNumbers) {
  EXPECT_EQ(DrawnFrom("1005,c.htm,0,C,0,1,0\n1001,a.htm,0,A,0,1,0\n1003,b.htm,0,B,0,1,0\n"),
            "C: c.htm\nA: a.htm\nB: b.htm\n");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, AParentMayStandBehindItsChildrenAndBetweenThem) {
  EXPECT_EQ(DrawnFrom("1002,b.htm,0,B,1001,1,0\n1001,a.htm,0,A,0,1,0\n1004,d.htm,0,D,0,1,0\n"
                      "1003,c.htm,0,C,1001,1,0\n"),
            "A: a.htm\n-B: b.htm\n-C: c.htm\nD: d.htm\n");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, LinkBarsAndWhatHangsBelowThemAreNoPartOfTheTree) {
  EXPECT_EQ(DrawnFrom("1000,index.htm,0,Home,0,1,0\n"
                      "1010,sid:1010,0,Bar,0,1,1\nvti_navsequence:BW|true\n"
                      "1001,a.htm,0,A,1000,1,0\n"
                      "1011,http://example.com/,1,Elsewhere,1010,1,0\n"
                      "1012,a.htm,0,A again,1010,1,0\n"
                      "1013,missing.htm,0,Deep,1012,1,0\n"),
            "Home: index.htm\n-A: a.htm\n");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, ALinkThatLeavesTheWebIsANodeWithoutAFile) {
  PutStructure("1000,http://example.com/,1,Elsewhere,0,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_EQ(Drawn(*web), "Elsewhere: (no file)\n");
  EXPECT_EQ(AllNodes(*web)[0]->Url(), "http://example.com/");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, ANodeWithoutAPageIsALabelOnly) {
  PutStructure("1000,,0,Heading,0,1,0\n1001,a.htm,0,A,1000,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_EQ(Drawn(*web), "Heading: (no file)\n-A: a.htm\n");
  EXPECT_EQ(AllNodes(*web)[0]->Url(), "");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, APageMissingOnDiskKeepsItsNodeAndIsReported) {
  PutStructure("1000,docs/gone.htm,0,Gone,0,1,0\n1001,a.htm,0,A,1000,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_EQ(Drawn(*web), "Gone: (no file)\n-A: a.htm\n");
  EXPECT_EQ(AllNodes(*web)[0]->Url(), "file:///web/docs/gone.htm");
  EXPECT_EQ(Reported(),
            kFile + ":3: the page \"docs/gone.htm\" of the entry \"Gone\" does not exist\n");
}

TEST_F(NavigationTest, APageThatDiffersInCaseOnlyIsSpeltAsOnDisk) {
  PutPage("Docs/Read Me.HTM", "R");
  EXPECT_EQ(DrawnFrom("1000,A.HTM,0,A,0,1,0\n1001,docs/READ me.htm,0,R,0,1,0\n"),
            "A: a.htm\nR: Docs/Read Me.HTM\n");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, AnExactNameGoesBeforeOneThatDiffersInCase) {
  PutPage("A.htm", "capital");
  PutPage("Docs/x.htm", "X");
  PutPage("docs/x.htm", "X");
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,small,0,1,0\n1001,A.htm,0,capital,0,1,0\n"
                      "1002,docs/x.htm,0,x,0,1,0\n1003,Docs/x.htm,0,X,0,1,0\n"),
            "small: a.htm\ncapital: A.htm\nx: docs/x.htm\nX: Docs/x.htm\n");
}

TEST_F(NavigationTest, LettersOutsideAsciiAreFoundInAnyCaseToo) {
  PutPage(
      "\xC3\x9C"
      "ber.htm",
      "U");                                      // Über.htm
  PutPage("\xD0\xB4\xD0\xBE\xD0\xBC.htm", "D");  // дом.htm
  EXPECT_EQ(DrawnFrom("1000,\xC3\xBC"
                      "ber.htm,0,U,0,1,0\n"
                      "1001,\xD0\x94\xD0\x9E\xD0\x9C.htm,0,D,0,1,0\n"),
            "U: \xC3\x9C"
            "ber.htm\nD: \xD0\xB4\xD0\xBE\xD0\xBC.htm\n");
}

TEST_F(NavigationTest, ANameOnDiskThatIsNoUtf8IsTakenForAnsiText) {
  PutPage(
      "\xFC"
      "ber.htm",
      "U");  // über.htm in windows-1252
  EXPECT_EQ(DrawnFrom("1000,\xC3\xBC"
                      "ber.htm,0,U,0,1,0\n"),
            "U: \xFC"
            "ber.htm\n");
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, ANoBreakSpaceInANameIsNoBlank) {
  PutPage(
      "a\xC2\xA0"
      "b.htm",
      "N");
  PutPage("a b.htm", "B");
  EXPECT_EQ(DrawnFrom("1000,a\xC2\xA0"
                      "b.htm,0,N,0,1,0\n1001,a b.htm,0,B,0,1,0\n"),
            "N: a\xC2\xA0"
            "b.htm\nB: a b.htm\n");
}

TEST_F(NavigationTest, APageOfAFolderThatIsAFileIsMissing) {
  EXPECT_EQ(DrawnFrom("1000,a.htm/b.htm,0,A,0,1,0\n1001,/a.htm,0,B,0,1,0\n"),
            "A: (no file)\nB: (no file)\n");
}

TEST_F(NavigationTest, SeveralNodesMayShowOnePage) {
  PutStructure(
      "1000,index.htm,0,Home,0,1,0\n1001,b.htm,0,B,1000,1,0\n1002,a.htm,0,Late,0,1,0\n"
      "1003,a.htm,0,Early,1001,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_EQ(Drawn(*web), "Home: index.htm\n-B: b.htm\n--Early: a.htm\nLate: a.htm\n");
  // The first in the tree, read from top to bottom, not the first in the file.
  EXPECT_EQ(web->BaseFolder()->Files()[0]->NavigationEntry()->Label(), "Early");
}

TEST_F(NavigationTest, HundredsOfIdenticalRootsAreAllKept) {
  std::string nodes, drawn;
  for (int i = 0; i < 800; ++i) {
    nodes += std::to_string(1000 + i) + ",a.htm,0,A,0,1,0\n";
    drawn += "A: a.htm\n";
  }
  EXPECT_EQ(DrawnFrom(nodes), drawn);
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, AnOrphanBecomesATopLevelEntryInItsPlaceAndIsReported) {
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,A,0,1,0\n1001,b.htm,0,B,77,1,0\n1002,c.htm,0,C,1001,1,0\n"
                      "1003,d.htm,0,D,0,1,0\n"),
            "A: a.htm\nB: b.htm\n-C: c.htm\nD: d.htm\n");
  EXPECT_EQ(
      Reported(),
      kFile + ":4: the entry \"B\" has parent 77, which does not exist; moved to the top level\n");
}

TEST_F(NavigationTest, TheChildrenOfASkippedLineAreOrphans) {
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,A, with a comma,0,1,0\n1001,b.htm,0,B,1000,1,0\n"),
            "B: b.htm\n");
  EXPECT_EQ(report.problems.size(), 2u);
}

TEST_F(NavigationTest, ANodeThatIsItsOwnParentBecomesATopLevelEntry) {
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,A,1000,1,0\n1001,b.htm,0,B,1000,1,0\n"),
            "A: a.htm\n-B: b.htm\n");
  EXPECT_EQ(Reported(), kFile + ":3: the entry \"A\" is below itself; moved to the top level\n");
}

TEST_F(NavigationTest, ACircleIsBrokenAtItsFirstNodeAndLosesNothing) {
  EXPECT_EQ(DrawnFrom("1000,index.htm,0,Home,0,1,0\n1003,d.htm,0,D,1002,1,0\n"
                      "1001,a.htm,0,A,1002,1,0\n1002,b.htm,0,B,1001,1,0\n"),
            "Home: index.htm\nA: a.htm\n-B: b.htm\n--D: d.htm\n");
  EXPECT_EQ(Reported(), kFile + ":5: the entry \"A\" is below itself; moved to the top level\n");
}

TEST_F(NavigationTest, ACircleThroughALinkBarIsBrokenOutsideIt) {
  EXPECT_EQ(DrawnFrom("1010,sid:1010,0,Bar,1001,1,0\n1001,a.htm,0,A,1010,1,0\n"), "A: a.htm\n");
}

TEST_F(NavigationTest, ANumberUsedTwiceKeepsBothNodes) {
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,A,0,1,0\n1000,b.htm,0,B,0,1,0\n1001,c.htm,0,C,1000,1,0\n"),
            "A: a.htm\n-C: c.htm\nB: b.htm\n");
  EXPECT_EQ(
      Reported(),
      kFile +
          ":4: id 1000 is already used on line 3; the entry \"B\" is kept, but without children\n");
}

TEST_F(NavigationTest, AStructureTenThousandLevelsDeepIsShown) {
  std::string nodes;
  for (int i = 0; i < 10000; ++i) {
    nodes +=
        std::to_string(1001 + i) + ",a.htm,0,A," + std::to_string(i == 0 ? 0 : 1000 + i) + ",1,0\n";
  }
  PutStructure(nodes);
  EXPECT_EQ(AllNodes(*Open(ContentsChoice::kNavigation)).size(), 10000u);
}

TEST_F(NavigationTest, LabelsAreUtf8) {
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,Caf\xC3\xA9 & \"more\",0,1,0\n"),
            "Caf\xC3\xA9 & \"more\": a.htm\n");
}

TEST_F(NavigationTest, ALabelThatIsNoUtf8IsTakenForAnsiText) {
  EXPECT_EQ(DrawnFrom("1000,a.htm,0,Caf\xE9,0,1,0\n"), "Caf\xC3\xA9: a.htm\n");
}

TEST_F(NavigationTest, CharactersThatTheCodePageLacksAreReportedOnceWithTheCodePageThatHasThem) {
  PutStructure("1000,a.htm,0,\xD0\x94\xD0\xBE\xD0\xBC,0,1,0\n1001,b.htm,0,\xD0\xAF,0,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_EQ(Drawn(*web), "\xD0\x94\xD0\xBE\xD0\xBC: a.htm\n\xD0\xAF: b.htm\n");
  web->ReportLostCharacters();
  web->ReportLostCharacters();
  EXPECT_EQ(
      Reported(),
      "/web:0: 4 characters of titles, labels and keywords are not in code page 1252 and will "
      "be \"?\" in the help file; the first is in \"\xD0\x94\xD0\xBE\xD0\xBC\" in " +
          kFile + ":3; --code-page 1251 keeps them all\n");
}

TEST_F(NavigationTest, CharactersThatNoCodePageHasTogetherAreReportedAsSuch) {
  PutStructure("1000,a.htm,0,\xD0\x94\xD0\x94 \xD7\x90,0,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  Drawn(*web);
  web->ReportLostCharacters();
  EXPECT_EQ(
      Reported(),
      "/web:0: 3 characters of titles, labels and keywords are not in code page 1252 and will "
      "be \"?\" in the help file; the first is in \"\xD0\x94\xD0\x94 \xD7\x90\" in " +
          kFile + ":3; --code-page 1251 keeps all but 1\n");
}

TEST_F(NavigationTest, TellsTheLineOfEachEntry) {
  PutStructure("1000,a.htm,0,A,0,1,0\n1010,sid:1010,0,Bar,0,1,0\n1001,b.htm,0,B,1000,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  const SiteNodes nodes = AllNodes(*web);
  EXPECT_EQ(web->LineOf(*nodes[0]), 3u);
  EXPECT_EQ(web->LineOf(*nodes[1]), 5u);
  const auto of_folders = Open(ContentsChoice::kFolders);
  EXPECT_EQ(of_folders->LineOf(*AllNodes(*of_folders)[0]), 0u);
}

TEST_F(NavigationTest, LabelsOfAStructureThatIsNotUsedAreNotLost) {
  for (int i = 0; i < 20; ++i) PutPage("docs/" + std::to_string(i) + ".htm", "Page");
  PutStructure("1000,index.htm,0,\xD0\x94\xD0\xBE\xD0\xBC,0,1,0\n");
  const auto web = Open();
  ASSERT_EQ(web->ContentsUsed(), ContentsChoice::kFolders);
  EXPECT_FALSE(web->ReportLostCharacters()) << Reported();
  const auto chosen = Open(ContentsChoice::kNavigation);
  Drawn(*chosen);
  EXPECT_TRUE(chosen->ReportLostCharacters());
}

TEST_F(NavigationTest, NothingLostIsNotReported) {
  PutStructure("1000,a.htm,0,Caf\xC3\xA9,0,1,0\n");
  const auto web = Open(ContentsChoice::kNavigation);
  Drawn(*web);
  web->ReportLostCharacters();
  EXPECT_EQ(Reported(), "");
}

TEST_F(NavigationTest, TheHomeNodeIsTheRootOfTheWelcomePageWhereverItStands) {
  EXPECT_EQ(DrawnFrom("1001,a.htm,0,A,0,1,0\n1007,INDEX.HTM,0,Start,0,1,0\n"),
            "A: a.htm\nStart: index.htm\n");
  EXPECT_EQ(Open(ContentsChoice::kNavigation)->HomeNode()->Label(), "Start");
}

TEST_F(NavigationTest, EveryWelcomeNameMakesAHomePage) {
  for (const char* name :
       {"index.html", "Default.htm", "default.html", "welcome.htm", "home.htm", "default.asp"}) {
    PutPage(name, "W");
    PutStructure(std::string("1000,a.htm,0,A,0,1,0\n1001,") + name + ",0,W,0,1,0\n");
    const auto home = Open(ContentsChoice::kNavigation)->HomeNode();
    ASSERT_NE(home, nullptr) << name;
    EXPECT_EQ(home->Label(), "W") << name;
  }
}

TEST_F(NavigationTest, IndexGoesBeforeDefaultAsTheHomePage) {
  PutPage("default.htm", "D");
  PutStructure("1000,default.htm,0,D,0,1,0\n1001,index.htm,0,I,0,1,0\n");
  EXPECT_EQ(Open(ContentsChoice::kNavigation)->HomeNode()->Label(), "I");
}

TEST_F(NavigationTest, TheNamesThatTheHostNotedGoBeforeTheUsualOnes) {
  Put("_vti_pvt/service.cnf", "vti_welcomenames:VX|start.htm A.HTM\r\n");
  PutStructure("1000,index.htm,0,I,0,1,0\n1001,a.htm,0,A,0,1,0\n");
  EXPECT_EQ(Open(ContentsChoice::kNavigation)->HomeNode()->Label(), "A");
  PutStructure("1000,b.htm,0,B,0,1,0\n1001,index.htm,0,I,0,1,0\n");
  EXPECT_EQ(Open(ContentsChoice::kNavigation)->HomeNode()->Label(), "I");
}

TEST_F(NavigationTest, AnIndexPageOfASubfolderIsNoHomePage) {
  PutPage("docs/index.htm", "D");
  PutStructure(
      "1000,docs/index.htm,0,D,0,1,0\n1001,a.htm,0,A,0,1,0\n1002,index.htm,0,I,1001,1,0\n");
  EXPECT_EQ(Open(ContentsChoice::kNavigation)->HomeNode(), nullptr);
}

TEST_F(NavigationTest, AWebWithoutAStructureFileHasAnEmptyNavigationAndSaysSo) {
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_TRUE(AllNodes(*web).empty());
  EXPECT_EQ(web->HomeNode(), nullptr);
  EXPECT_EQ(Reported(),
            kFile + ":0: the file does not exist; the web has no navigation structure\n");
}

TEST_F(NavigationTest, AStructureFileThatCannotBeReadIsReported) {
  PutStructure("1000,a.htm,0,A,0,1,0\n");
  disk->failures.insert({"open " + kFile, Error(kPermissionDenied, "", "Permission denied: x")});
  EXPECT_TRUE(AllNodes(*Open(ContentsChoice::kNavigation)).empty());
  EXPECT_EQ(Reported(),
            kFile + ":0: the navigation structure cannot be read: Permission denied: x\n");
}

TEST_F(NavigationTest, PagesOfThePrivateFolderMayStandInIt) {
  PutPage("_private/notes.htm", "N");
  EXPECT_EQ(DrawnFrom("1000,_private/notes.htm,0,N,0,1,0\n"), "N: _private/notes.htm\n");
}

TEST_F(NavigationTest, ListsThePagesOutsideIt) {
  PutPage("docs/z.HTML", "Z");
  Put("logo.gif", "");
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,b.htm,0,B,1000,1,0\n");
  std::string urls;
  for (const auto& page : Open()->PagesOutsideContents()) urls += page->Url() + "\n";
  EXPECT_EQ(urls,
            "file:///web/a.htm\nfile:///web/c.htm\nfile:///web/d.htm\n"
            "file:///web/docs/z.HTML\n");
}

}  // namespace
}  // namespace scrivo

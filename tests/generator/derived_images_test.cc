#include "system/system_services.h"
#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

constexpr char kPageStart[] = "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n";
constexpr char kPageEnd[] = "</BODY></HTML>\r\n";
constexpr char kDerivedPage[] = "C:\\Webs\\site\\Scr1A2.tmp.htm";

class DerivedImagesTest : public GeneratorTest {
 protected:
  void AddDerived(const std::string& name) {
    files->folders.insert("C:\\Webs\\site\\_derived");
    files->files["C:\\Webs\\site\\_derived\\" + name] = "image";
  }
  std::string Page() {
    Form()->LinksToDerived();
    EXPECT_EQ(Form()->DerivedPath(), kDerivedPage);
    return Written(kDerivedPage);
  }
};

TEST_F(DerivedImagesTest, EveryFileOfTheFolderIsLinkedOneALine) {
  AddDerived("a.gif");
  AddDerived("b.gif");
  EXPECT_EQ(Page(), std::string(kPageStart) +
                        "<img src=\"_derived/a.gif\">\r\n<img src=\"_derived/b.gif\">\r\n" +
                        kPageEnd);
}

TEST_F(DerivedImagesTest, WithoutTheFolderThePageIsEmpty) {
  EXPECT_EQ(Page(), std::string(kPageStart) + kPageEnd);
  EXPECT_EQ(Reports(), 0);
}

TEST_F(DerivedImagesTest, FilesOfSubfoldersAreNotLinked) {
  AddDerived("a.gif");
  files->folders.insert("C:\\Webs\\site\\_derived\\sub");
  files->files["C:\\Webs\\site\\_derived\\sub\\b.gif"] = "image";
  EXPECT_EQ(Page(), std::string(kPageStart) + "<img src=\"_derived/a.gif\">\r\n" + kPageEnd);
}

TEST_F(DerivedImagesTest, NamesAreWrittenAsTheyAreWhateverTheirType) {
  AddDerived("a \"b\" & <c>.txt");
  EXPECT_EQ(Page(),
            std::string(kPageStart) + "<img src=\"_derived/a \"b\" & <c>.txt\">\r\n" + kPageEnd);
}

TEST_F(DerivedImagesTest, NamesComeInTheOrderOfAFolderOnWindows) {
  // The last three are a, O and u with two dots.
  const char* const ordered[] = {"A",   "a",        "a.gif",    "A1",      "aa.gif", "AB",
                                 "az",  "a_b.gif",  "b",        "C",       "Z",      "_a",
                                 "{a}", "\xC3\xA4", "\xC3\x96", "\xC3\xBC"};
  std::string expected = kPageStart;
  for (const char* name : ordered) {
    AddDerived(name);
    expected += "<img src=\"_derived/" + ToAnsi(name) + "\">\r\n";
  }
  EXPECT_EQ(Page(), expected + kPageEnd);
}

TEST_F(DerivedImagesTest, TheTemporaryNameKeepsItsEndingAndIsFreed) {
  Page();
  EXPECT_EQ(files->files.count("C:\\Webs\\site\\Scr1A2.tmp"), 0U);
}

TEST_F(DerivedImagesTest, TheTemporaryNameIsFreedASecondTimeWithoutForce) {
  const std::string name = "C:\\Webs\\site\\Scr1A2.tmp";
  Form();
  files->log.clear();
  Page();
  EXPECT_EQ(files->log, (std::vector<std::string>{"unique " + name, "remove! " + name,
                                                  "remove " + name, "write " + name + ".htm"}));
}

TEST_F(DerivedImagesTest, TheFolderIsTheOneThatTheHostNames) {
  AddDerived("not this.gif");
  site.local_path = "D:\\Elsewhere";
  files->folders.insert("D:\\Elsewhere\\_derived");
  files->files["D:\\Elsewhere\\_derived\\b.gif"] = "image";
  EXPECT_EQ(Page(), std::string(kPageStart) + "<img src=\"_derived/b.gif\">\r\n" + kPageEnd);
}

TEST_F(DerivedImagesTest, ABaseFolderThatFailsCountsAsNoImages) {
  AddDerived("a.gif");
  Form();
  site.Fail("LocalPath", 1);
  EXPECT_EQ(Page(), std::string(kPageStart) + kPageEnd);
  EXPECT_EQ(Reports(), 0);
}

TEST_F(DerivedImagesTest, AFolderThatCannotBeListedIsAnsweredByTheUser) {
  AddDerived("a.gif");
  files->failures.emplace("list C:\\Webs\\site\\_derived",
                          Error(kPermissionDenied, "", "Permission denied"));
  dialog->answers = {"IGNORE"};
  EXPECT_EQ(Page(), std::string(kPageStart) + kPageEnd);
  EXPECT_TRUE(LastReportIsFrom("LinksToDerived"));
}

TEST_F(DerivedImagesTest, AnAbortLeavesNoPage) {
  AddDerived("a.gif");
  files->failures.emplace("list C:\\Webs\\site\\_derived",
                          Error(kPermissionDenied, "", "Permission denied"));
  Form()->LinksToDerived();
  EXPECT_EQ(files->files.count(kDerivedPage), 0U);
}

TEST_F(DerivedImagesTest, APageThatCannotBeWrittenIsReported) {
  Form();
  files->failures.emplace(std::string("write ") + kDerivedPage, Error(kDiskFull, "", "disk full"));
  Form()->LinksToDerived();
  EXPECT_TRUE(LastReportIsFrom("LinksToDerived"));
}

TEST_F(DerivedImagesTest, AWebThatIsNotOnDiskIsReported) {
  site.url = "http://example.com/site";
  Form()->LinksToDerived();
  EXPECT_EQ(Reports(), 1);
  EXPECT_TRUE(files->files.empty());
}

TEST_F(DerivedImagesTest, PosixPathsFollowTheirOwnRules) {
  Globals().path_style = PathStyle::kPosix;
  site.url = "file:///srv/web";
  site.local_path = "/srv/web";
  files->folders = {"/srv/web", "/srv/web/_derived"};
  files->files["/srv/web/_derived/a.gif"] = "image";
  Form()->LinksToDerived();
  EXPECT_EQ(Written("/srv/web/Scr1A2.tmp.htm"),
            std::string(kPageStart) + "<img src=\"_derived/a.gif\">\r\n" + kPageEnd);
}

}  // namespace
}  // namespace scrivo

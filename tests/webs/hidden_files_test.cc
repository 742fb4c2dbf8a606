#include "webs/hidden_files.h"

#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

TEST(HiddenFiles, AreKnownByTheirNames) {
  for (const char* hidden : {"_private/a.htm", "docs/_Private/x/a.htm", ".git/config", ".htaccess",
                             "docs/.old/a.htm", "_vti_inf.html", "_VTI_pvt/service.cnf"}) {
    EXPECT_TRUE(IsHiddenLocation(hidden)) << hidden;
  }
  for (const char* shown : {"index.htm", "_derived/a.gif", "_themes/x/theme.css",
                            "_borders/top.htm", "_privates/a.htm", "a.b/c.htm", "vti_/a.htm", ""}) {
    EXPECT_FALSE(IsHiddenLocation(shown)) << shown;
  }
}

class HiddenFilesOfAWeb : public WithMemoryWeb {
 protected:
  HiddenFilesOfAWeb() {
    PutPage("index.htm", "Home");
    PutPage("_private/results.htm", "Results");
    Put("_private/old/form.txt", "");
    Put(".git/objects/12", "");
    PutPage("docs/a.htm", "A");
    PutPage("docs/.draft.htm", "Draft");
    Put("_vti_cnf/index.htm", "");
  }
  std::shared_ptr<DiskWeb> OpenWithout(ContentsChoice contents = ContentsChoice::kFolders) {
    DiskWebOptions options;
    options.contents = contents;
    options.leaves_out_hidden = true;
    return Open(options);
  }
  static std::string Locations(SiteWeb& web) {
    std::string all;
    for (const auto& file : AllFiles(web)) all += file->Url().substr(web.Url().size() + 1) + "\n";
    return all;
  }
};

TEST_F(HiddenFilesOfAWeb, AreListedLikeOthersUnlessTheyAreNotWanted) {
  EXPECT_EQ(Locations(*Open(ContentsChoice::kFolders)),
            "index.htm\n.git/objects/12\n_private/results.htm\n_private/old/form.txt\n"
            "docs/.draft.htm\ndocs/a.htm\n");
  EXPECT_TRUE(Open(ContentsChoice::kFolders)->LeftOut().empty());
}

TEST_F(HiddenFilesOfAWeb, AreCountedWhereTheyAreLeftOut) {
  const auto web = OpenWithout();
  EXPECT_EQ(Locations(*web), "index.htm\ndocs/a.htm\n");
  EXPECT_EQ(Drawn(*web), "Home: index.htm\ndocs: (no file)\n-A: docs/a.htm\n");
  const std::vector<std::pair<std::string, std::size_t>> left_out = {
      {".git", 1}, {"_private", 2}, {"docs/.draft.htm", 1}};
  EXPECT_EQ(web->LeftOut(), left_out) << "the host's own folders do not count";
}

TEST_F(HiddenFilesOfAWeb, AnEntryOfTheNavigationGoesWithItsPage) {
  PutStructure(
      "1000,index.htm,0,Home,0,1,0\n1001,_private/results.htm,0,Results,1000,1,0\n"
      "1002,docs/.draft.htm,0,Draft,1000,1,0\n1003,docs/a.htm,0,A,1002,1,0\n");
  EXPECT_EQ(Drawn(*OpenWithout(ContentsChoice::kNavigation)),
            "Home: index.htm\n-Draft: (no file)\n--A: docs/a.htm\n");
  EXPECT_EQ(Reported(), "");
}

TEST_F(HiddenFilesOfAWeb, AFolderThatLinksToItselfIsCountedOnce) {
  disk->folders.insert("/web/_private/self");
  disk->real_paths["/web/_private/self"] = "/web/_private";
  EXPECT_EQ(OpenWithout()->LeftOut()[1], (std::pair<std::string, std::size_t>("_private", 2)));
}

}  // namespace
}  // namespace scrivo

#include "webs/disk_web.h"

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

class DiskWebTest : public WithMemoryWeb {
 protected:
  static std::string Urls(const SiteFiles& files) {
    std::string urls;
    for (const auto& file : files) urls += file->Url() + "\n";
    return urls;
  }
  // The description of the error that opening the folder gives.
  std::string OpeningError(const std::string& path, std::int32_t number) {
    try {
      OpenDiskWeb(path, {}, report, PathStyle::kPosix);
    } catch (const Error& error) {
      EXPECT_EQ(error.number, number);
      return error.description;
    }
    return "(opened)";
  }
};

TEST_F(DiskWebTest, ListsFilesInNameOrderFolderByFolder) {
  for (const char* name : {"b.htm", "A.htm", "a.htm", "C.gif", "a/z.htm", "a/B/y.htm", "Z/x.htm",
                           "\xC3\xA4.htm", "_x.htm"}) {
    Put(name, "");
  }
  EXPECT_EQ(Urls(AllFiles(*Open())),
            "file:///web/_x.htm\nfile:///web/A.htm\nfile:///web/a.htm\nfile:///web/b.htm\n"
            "file:///web/C.gif\nfile:///web/\xC3\xA4.htm\nfile:///web/a/z.htm\n"
            "file:///web/a/B/y.htm\nfile:///web/Z/x.htm\n");
}

TEST_F(DiskWebTest, TheHostsOwnFoldersAreNoPartOfTheWebAtAnyDepthAndInAnyCase) {
  Put("a.htm", "");
  Put("docs/b.htm", "");
  for (const char* folder : {"_vti_pvt", "_vti_cnf", "_VTI_bin", "_borders", "_Derived", "_fpclass",
                             "_overlay", "_themes"}) {
    Put(std::string(folder) + "/x.htm", "");
    Put("docs/" + std::string(folder) + "/below/x.htm", "");
  }
  EXPECT_EQ(Urls(AllFiles(*Open())), "file:///web/a.htm\nfile:///web/docs/b.htm\n");
}

TEST_F(DiskWebTest, ThePrivateFolderAndNamesLikeTheHostsArePartOfTheWeb) {
  for (const char* name :
       {"_private/a.htm", "_derived.htm", "derived/b.htm", "_themes2/c.htm", "_vti/d.htm"}) {
    Put(name, "");
  }
  EXPECT_EQ(AllFiles(*Open()).size(), 5u);
}

TEST_F(DiskWebTest, FoldersTellTheirPathsAndFilesTheirExtensions) {
  Put("docs/sub/a.tar.GZ", "");
  Put("docs/readme", "");
  Put("page.htm", "");
  const auto web = Open();
  const auto docs = web->BaseFolder()->Folders()[0];
  EXPECT_EQ(web->BaseFolder()->LocalPath(), "/web");
  EXPECT_EQ(docs->LocalPath(), "/web/docs");
  EXPECT_EQ(docs->Folders()[0]->LocalPath(), "/web/docs/sub");
  EXPECT_EQ(docs->Folders()[0]->Files()[0]->Extension(), "GZ");
  EXPECT_EQ(docs->Files()[0]->Extension(), "");
}

TEST_F(DiskWebTest, AnAddressIsTheUnencodedPath) {
  disk->folders.insert("/srv/My web #1");
  disk->files["/srv/My web #1/a b%.htm"] = "";
  const auto web = OpenDiskWeb("/srv/My web #1/", {}, report, PathStyle::kPosix);
  EXPECT_EQ(web->Url(), "file:///srv/My web #1");
  EXPECT_EQ(Urls(AllFiles(*web)), "file:///srv/My web #1/a b%.htm\n");
}

TEST_F(DiskWebTest, InTheWindowsStyleAddressesHaveSlashesAndPathsBackslashes) {
  disk->folders = {"C:\\Webs\\site", "C:\\Webs\\site\\docs", "C:\\Webs\\site\\docs\\_vti_cnf",
                   "C:\\Webs\\site\\_vti_pvt"};
  disk->files["C:\\Webs\\site\\docs\\a.htm"] = "";
  disk->files["C:\\Webs\\site\\docs\\_vti_cnf\\a.htm"] = "vti_title:SR|Noted\r\n";
  disk->files["C:\\Webs\\site\\_vti_pvt\\structure.cnf"] =
      "3.0.0.507\r\n1001\r\n1000,DOCS/a.htm,0,A,0,1,0";
  const auto web = OpenDiskWeb("C:/Webs/site\\", {}, report, PathStyle::kWindows);
  EXPECT_EQ(web->Url(), "file:///C:/Webs/site");
  EXPECT_EQ(web->BaseFolder()->Folders()[0]->LocalPath(), "C:\\Webs\\site\\docs");
  const auto file = AllNodes(*web).at(0)->File();
  EXPECT_EQ(file->Url(), "file:///C:/Webs/site/docs/a.htm");
  EXPECT_EQ(file->Title(), "Noted");
  EXPECT_EQ(Reported(), "");
}

TEST_F(DiskWebTest, AWebWithFilesOnlyHasAnEmptyNavigation) {
  Put("a.htm", "");
  const auto web = Open(ContentsChoice::kNavigation);
  EXPECT_EQ(AllFiles(*web).size(), 1u);
  EXPECT_TRUE(AllNodes(*web).empty());
  EXPECT_EQ(web->HomeNode(), nullptr);
}

TEST_F(DiskWebTest, HasNoOpenPages) {
  Put("a.htm", "");
  EXPECT_TRUE(Open()->OpenPages().empty());
}

TEST_F(DiskWebTest, ShowsNewFilesAfterARefreshOnly) {
  Put("a.htm", "");
  const auto web = Open();
  const auto old = web->BaseFolder();
  Put("b.htm", "");
  EXPECT_EQ(AllFiles(*web).size(), 1u);
  web->Refresh();
  EXPECT_EQ(AllFiles(*web).size(), 2u);
  EXPECT_EQ(old->Files().size(), 1u);  // what was handed out keeps showing what was there
}

TEST_F(DiskWebTest, WhatItHandedOutOutlivesIt) {
  PutPage("a.htm", "A");
  PutStructure("1000,a.htm,0,Label,0,1,0");
  auto web = Open();
  const auto node = AllNodes(*web)[0];
  web.reset();
  EXPECT_EQ(node->File()->Title(), "A");
  EXPECT_EQ(node->File()->NavigationEntry()->Label(), "Label");
}

TEST_F(DiskWebTest, AutomaticContentsAreTheNavigationWhenItHoldsMoreThanTheHomePage) {
  PutPage("index.htm", "I");
  PutPage("a.htm", "A");
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,a.htm,0,Label,1000,1,0\n");
  const auto web = Open();
  EXPECT_EQ(Drawn(*web), "Home: index.htm\n-Label: a.htm\n");
  EXPECT_EQ(web->ContentsUsed(), ContentsChoice::kNavigation);
}

TEST_F(DiskWebTest, AutomaticContentsAreTheFoldersWhenTheNavigationHoldsTheHomePageOnly) {
  PutPage("index.htm", "I");
  PutPage("a.htm", "A");
  for (const char* nodes :
       {"", "1000,index.htm,0,Home,0,1,0\n", "1000,index.htm,0,H,0,1,0\n1001,Index.htm,0,H,0,1,0\n",
        "1000,index.htm,0,Home,0,1,0\n1010,sid:1010,0,B,0,1,0\n1011,a.htm,0,A,1010,1,0\n"}) {
    PutStructure(nodes);
    const auto web = Open();
    EXPECT_EQ(Drawn(*web), "I: index.htm\nA: a.htm\n") << nodes;
    EXPECT_EQ(web->ContentsUsed(), ContentsChoice::kFolders);
  }
  disk->files.erase("/web/_vti_pvt/structure.cnf");
  EXPECT_EQ(Open()->ContentsUsed(), ContentsChoice::kFolders);
  EXPECT_EQ(Reported(), "");
}

TEST_F(DiskWebTest, ASingleEntryThatIsNotTheHomePageIsANavigation) {
  PutPage("a.htm", "A");
  PutPage("b.htm", "B");
  PutStructure("1000,a.htm,0,Only,0,1,0\n");
  EXPECT_EQ(Drawn(*Open()), "Only: a.htm\n");
}

TEST_F(DiskWebTest, ChosenContentsAreTakenWhateverTheyHold) {
  PutPage("index.htm", "I");
  PutPage("a.htm", "A");
  PutStructure("1000,index.htm,0,Home,0,1,0\n");
  EXPECT_EQ(Drawn(*Open(ContentsChoice::kNavigation)), "Home: index.htm\n");
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,a.htm,0,Label,0,1,0\n");
  EXPECT_EQ(Drawn(*Open(ContentsChoice::kFolders)), "I: index.htm\nA: a.htm\n");
}

TEST_F(DiskWebTest, AWebThatDoesNotExistIsAnErrorOfItsOwn) {
  EXPECT_EQ(OpeningError("/nowhere", kPathNotFound),
            "/nowhere: the web does not exist. Check the spelling of the path.");
}

TEST_F(DiskWebTest, AWebThatIsAFileIsAnErrorOfItsOwn) {
  Put("a.htm", "");
  EXPECT_EQ(OpeningError("/web/a.htm", kPathNotFound),
            "/web/a.htm: the web is a file. Name the folder that contains the web.");
}

TEST_F(DiskWebTest, AWebThatCannotBeReadIsAnErrorOfItsOwn) {
  Put("a.htm", "");
  disk->failures.insert({"list /web", Error(kPermissionDenied, "", "Permission denied: /web")});
  EXPECT_EQ(OpeningError("/web", kPermissionDenied),
            "/web: the web cannot be read: Permission denied: /web. Ask for permission to read the "
            "folder.");
}

TEST_F(DiskWebTest, AWebWithoutFilesIsAnErrorOfItsOwn) {
  PutStructure("");
  disk->folders.insert("/web/images");
  EXPECT_EQ(OpeningError("/web", kFileNotFound),
            "/web: the web has no files. Name the folder that contains its pages.");
}

TEST_F(DiskWebTest, AWebWithoutPagesIsAnErrorOfItsOwn) {
  Put("style.css", "");
  EXPECT_EQ(OpeningError("/web", kFileNotFound),
            "/web: the web has no pages (.htm or .html). Name the folder that contains its pages.");
}

TEST_F(DiskWebTest, AWebBehindAFolderThatMayNotBeEnteredIsUnreadableNotMissing) {
  disk->failures.insert({"list /shut/web", Error(kPermissionDenied, "", "Permission denied: x")});
  EXPECT_EQ(OpeningError("/shut/web", kPermissionDenied),
            "/shut/web: the web cannot be read: Permission denied: x. Ask for permission to read "
            "the folder.");
}

TEST_F(DiskWebTest, AStructureWithAMissingHomePageOnlyGivesTheFolders) {
  PutPage("index.htm", "I");
  PutPage("a.htm", "A");
  PutStructure("1000,default.htm,0,Home,0,1,0\n");
  EXPECT_EQ(Open()->ContentsUsed(), ContentsChoice::kFolders);
}

TEST_F(DiskWebTest, ANameWithALineBreakIsReportedAndLeftOut) {
  Put("a.htm", "");
  Put("b.htm\r\nTitle=x.htm", "");
  Put("Icon\r", "");
  EXPECT_EQ(Urls(AllFiles(*Open())), "file:///web/a.htm\n");
  const std::string problem =
      ":0: skipped: the name contains a line break, and a project file has one name per line\n";
  EXPECT_EQ(Reported(), "/web/Icon\r" + problem + "/web/b.htm\r\nTitle=x.htm" + problem);
}

TEST_F(DiskWebTest, ThePageOfAKeptProjectIsNotAPageOfTheWeb) {
  for (const char* name : {"a.htm", "Scr1A2.tmp.htm", "Scrivo.tmp.htm", "Scrivo12.tmp.htm",
                           "ScrXYZ.tmp.htm", "Scr.tmp.htm", "docs/Scr1A2.tmp.htm"}) {
    Put(name, "");
  }
  EXPECT_EQ(Urls(AllFiles(*Open())),
            "file:///web/a.htm\nfile:///web/Scr.tmp.htm\nfile:///web/ScrXYZ.tmp.htm\n"
            "file:///web/docs/Scr1A2.tmp.htm\n");
}

TEST_F(DiskWebTest, WhatRunsLeaveBesideAnOutputIsNoPartOfTheWeb) {
  for (const char* name :
       {"a.htm", "a.chm.scrivo-work/web/a.htm", "docs/a.chm.scrivo-work-12/a.htm",
        "a.htm.scrivo-new", "a.htm.scrivo-new-2", "b.scrivo-new-x.htm", "scrivo-work/c.htm",
        "d.scrivo-work2/d.htm"}) {
    Put(name, "");
  }
  EXPECT_EQ(Urls(AllFiles(*Open())),
            "file:///web/a.htm\nfile:///web/b.scrivo-new-x.htm\n"
            "file:///web/d.scrivo-work2/d.htm\nfile:///web/scrivo-work/c.htm\n");
}

TEST_F(DiskWebTest, ASubfolderThatCannotBeReadIsReportedAndLeftOut) {
  Put("a.htm", "");
  Put("docs/b.htm", "");
  disk->failures.insert({"list /web/docs", Error(kPermissionDenied, "", "Permission denied: x")});
  EXPECT_EQ(Urls(AllFiles(*Open())), "file:///web/a.htm\n");
  EXPECT_EQ(Reported(), "/web/docs:0: folder skipped: Permission denied: x\n");
}

TEST_F(DiskWebTest, AnInterruptionEndsReadingWhereverItComes) {
  Put("docs/a.htm", "<html>");
  Put("docs/_vti_cnf/a.htm", "vti_title:SR|T");
  PutStructure("1000,docs/a.htm,0,A,0,1,0\n");
  for (const char* operation : {"list /web", "list /web/docs", "open /web/_vti_pvt/structure.cnf",
                                "open /web/docs/a.htm", "open /web/docs/_vti_cnf/a.htm"}) {
    disk->failures = {{operation, Error(kUserInterrupt, "", "Interrupted")}};
    try {
      AllNodes(*Open()).at(0)->File()->Title();
      ADD_FAILURE() << operation;
    } catch (const Error& error) {
      EXPECT_EQ(error.number, kUserInterrupt) << operation;
      EXPECT_EQ(error.description, "Interrupted") << operation;
    }
  }
  EXPECT_EQ(Reported(), "");
}

TEST_F(DiskWebTest, ALinkToAFolderAboveItIsReportedAndNotFollowed) {
  Put("a.htm", "");
  disk->folders.insert({"/web/docs", "/web/docs/up"});
  disk->real_paths = {{"/web/docs/up", "/web"}};
  EXPECT_EQ(AllFiles(*Open()).size(), 1u);
  EXPECT_EQ(Reported(),
            "/web/docs/up:0: link skipped: it leads to /web, whose pages are already in the web\n");
}

TEST_F(DiskWebTest, ALinkToAFolderElsewhereIsFollowed) {
  Put("a.htm", "");
  Put("shared/b.htm", "");
  Put("shared/deep/c.htm", "");
  disk->real_paths = {{"/web/shared", "/common"}, {"/web/shared/deep", "/common/deep"}};
  EXPECT_EQ(AllFiles(*Open()).size(), 3u);
  EXPECT_EQ(Reported(), "");
}

TEST_F(DiskWebTest, FoldersThatLinkToEachOtherAreEnteredOnceEach) {
  Put("a.htm", "");
  // Every folder n holds links to all others, as deep as one cares to look.
  for (const char* path :
       {"/web/1", "/web/2", "/web/1/2", "/web/2/1", "/web/1/2/1", "/web/2/1/2"}) {
    disk->folders.insert(path);
    disk->files[std::string(path) + "/x.htm"] = "";
    disk->real_paths[path] = std::string("/web/") + path[std::string(path).size() - 1];
  }
  EXPECT_EQ(AllFiles(*Open()).size(), 1u + 2u + 2u);
  EXPECT_EQ(report.problems.size(), 2u);
}

TEST_F(DiskWebTest, AWebBehindALinkIsReadLikeOthers) {
  Put("a.htm", "");
  Put("docs/b.htm", "");
  disk->real_paths = {{"/web", "/real/web"}, {"/web/docs", "/real/web/docs"}};
  EXPECT_EQ(AllFiles(*Open()).size(), 2u);
  EXPECT_EQ(Reported(), "");
}

}  // namespace
}  // namespace scrivo

#include "host/session.h"

#include "host/web_outline.h"
#include "tests/webs/memory_web.h"

namespace scrivo::host {
namespace {

class SessionTest : public WithMemoryWeb {
 protected:
  SessionTest() {
    PutPage("index.htm", "Home page");
    PutPage("docs/a.htm", "A");
    PutPage("docs/loose.htm", "Loose");
    PutStructure(
        "1000,index.htm,0,Home,0,1,0\n1001,docs/a.htm,0,First,1000,1,0\n"
        "1002,,0,Heading,1000,1,0\n1003,index.htm,0,Again,0,1,0\n");
    session.on_change = [this] { ++changes; };
  }

  Session session{PathStyle::kPosix};
  int changes = 0;
};

TEST_F(SessionTest, OpensAWebByPathOrAddressOnce) {
  const auto web = session.Open("/web");
  EXPECT_EQ(web->Url(), "file:///web");
  EXPECT_EQ(web->Title(), "web");
  EXPECT_EQ(session.Active(), web);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(session.Open("/web/"), web);
  disk->folders.insert("/webs/one");
  disk->files["/webs/one/a.htm"] = "";
  EXPECT_EQ(session.Open("/webs//one")->Url(), "file:///webs/one");
  session.Close(session.Active());
  EXPECT_EQ(session.Open("file:///web"), web);
  EXPECT_EQ(session.Webs().size(), 1u);
}

TEST_F(SessionTest, AFailureChangesNothing) {
  const auto web = session.Open("/web");
  changes = 0;
  disk->folders.insert("/empty");
  EXPECT_THROW(session.Open("/nowhere"), Error);
  EXPECT_THROW(session.Open("/empty"), Error);
  EXPECT_THROW(session.Open("http://server/web"), Error);
  EXPECT_EQ(session.Active(), web);
  EXPECT_EQ(changes, 0);
}

TEST_F(SessionTest, ClosingAWebMakesAnotherTheActiveOne) {
  disk->folders.insert("/other");
  disk->files["/other/a.htm"] = "<title>A</title>";
  const auto web = session.Open("/web"), other = session.Open("/other");
  EXPECT_EQ(session.Active(), other);
  session.Close(other);
  EXPECT_EQ(session.Active(), web);
  EXPECT_FALSE(other->is_open);
  session.Close(web);
  EXPECT_EQ(session.Active(), nullptr);
}

TEST_F(SessionTest, FindsFilesAndFoldersByLocationAndAddress) {
  const auto web = session.Open("/web");
  EXPECT_EQ(web->FindFile("docs/a.htm")->Title(), "A");
  EXPECT_EQ(web->FindFile("file:///web/DOCS/a.htm")->Title(), "A");
  EXPECT_EQ(web->FindFile("a.htm"), nullptr);
  EXPECT_EQ(web->FindFolder("docs")->LocalPath(), "/web/docs");
  EXPECT_EQ(web->FindFolder("file:///web/docs/")->LocalPath(), "/web/docs");
  EXPECT_EQ(web->FindFolder("docs/a.htm"), nullptr);
  EXPECT_TRUE(session.NamesFolder("file:///web"));
  EXPECT_FALSE(session.NamesFolder("file:///web/index.htm"));
}

TEST_F(SessionTest, ARefreshListsTheFoldersAnew) {
  const auto web = session.Open("/web");
  PutPage("new.htm", "New");
  EXPECT_EQ(web->FindFile("new.htm"), nullptr);
  const auto before = web->Navigation();
  PutStructure("1000,new.htm,0,New,0,1,0\n");
  session.Refresh(web.get());
  EXPECT_EQ(web->FindFile("new.htm")->Title(), "New");
  EXPECT_EQ(web->Navigation()->Places().size(), 2u);
  EXPECT_EQ(before->Places().size(), 5u);
}

TEST_F(SessionTest, TheNavigationHasWaysInEveryDirection) {
  const auto navigation = session.Open("/web")->Navigation();
  ASSERT_EQ(navigation->Places().size(), 5u);
  const auto label = [&](std::size_t place) { return navigation->At(place).node->Label(); };
  EXPECT_EQ(label(1) + label(2) + label(3) + label(4), "HomeFirstHeadingAgain");
  EXPECT_EQ(navigation->At(2).parent, 1u);
  EXPECT_EQ(navigation->Sibling(2, 1), 3u);
  EXPECT_EQ(navigation->Sibling(3, -1), 2u);
  EXPECT_EQ(navigation->Sibling(1, 1), 4u);
  EXPECT_EQ(navigation->Sibling(2, -1), NavigationIndex::kNone);
  EXPECT_EQ(navigation->Sibling(3, 1), NavigationIndex::kNone);
  EXPECT_EQ(navigation->Sibling(NavigationIndex::kRoot, 1), NavigationIndex::kNone);
  EXPECT_EQ(navigation->Find(navigation->At(3).node.get()), 3u);
  EXPECT_EQ(navigation->Find(nullptr), NavigationIndex::kNone);
}

TEST_F(SessionTest, TheOutlineShowsEveryPageOnceInOneOfItsTwoParts) {
  const auto web = session.Open("/web");
  const WebOutline outline = OutlineOf(web.get(), PathStyle::kPosix);
  std::string text;
  for (const OutlineRow& row : outline.navigation) {
    text += std::string(static_cast<std::size_t>(row.depth), '-') + row.label + "|" + row.title +
            "|" + row.location + "|" + row.path + "\n";
  }
  EXPECT_EQ(text,
            "Home|Home page|index.htm|/web/index.htm\n-First|A|docs/a.htm|/web/docs/a.htm\n"
            "-Heading|||\nAgain|Home page|index.htm|/web/index.htm\n");
  ASSERT_EQ(outline.outside.size(), 1u);
  EXPECT_EQ(outline.outside[0].location, "docs/loose.htm");
  EXPECT_EQ(outline.PageCountText(), "3 pages, 1 outside the navigation");
}

TEST_F(SessionTest, OnePageIsCountedInTheSingular) {
  WebOutline outline;
  outline.navigation.push_back({"Home", "Home", "index.htm", "/web/index.htm", 0});
  EXPECT_EQ(outline.PageCountText(), "1 page");
  EXPECT_EQ(WebOutline().PageCountText(), "0 pages");
}

TEST_F(SessionTest, PagesAreEditedOnceEach) {
  const auto web = session.Open("/web");
  const auto page = web->Edit(web->FindFile("docs/a.htm"));
  const auto other = web->Edit(web->FindFile("index.htm"));
  EXPECT_EQ(web->Edit(web->FindFile("docs/a.htm")), page);
  EXPECT_EQ(web->active_page, page);
  web->ClosePage(page.get());
  EXPECT_EQ(web->active_page, other);
  EXPECT_EQ(web->FindPage("file:///web/docs/a.htm"), nullptr);
  web->ClosePage(other.get());
  EXPECT_EQ(web->active_page, nullptr);
}

TEST_F(SessionTest, MetaTagsAreNamedOnceInTheirOrder) {
  Put("m.htm",
      "<meta name=Keywords content=a><meta name=author content=b><meta name=KEYWORDS content=c>");
  EXPECT_EQ(MetaTagNames("/web/m.htm"), (std::vector<std::string>{"keywords", "author"}));
  EXPECT_TRUE(MetaTagNames("/web/missing.htm").empty());
}

}  // namespace
}  // namespace scrivo::host

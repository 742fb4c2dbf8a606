#include "tests/host/win32/model_test.h"

namespace scrivo::host {
namespace {

std::string Slashes(std::string path) {
  for (char& c : path) c = c == '\\' ? '/' : c;
  return path;
}

class WebModelTest : public ModelTest {
 protected:
  const std::string url = "file:///" + Slashes(web_path);
};

TEST_F(WebModelTest, OpensAWebWithFourArgumentsOrTheOneThatMatters) {
  const LateBound webs = Object(application, L"Webs");
  const LateBound web = OpenWeb();
  EXPECT_EQ(Text(web, L"Url"), url);
  EXPECT_EQ(Text(Object(application, L"ActiveWeb"), L"Url"), url);
  EXPECT_EQ(Number(webs, L"Count"), 1);
  // Once open it is not opened again, whatever names it.
  EXPECT_EQ(Text(ObjectOf(webs.Get(L"Open", Variant::Text(url))), L"Url"), url);
  EXPECT_EQ(Text(ObjectOf(webs.Get(L"Open", Variant::Text(web_path + "\\"))), L"Url"), url);
  EXPECT_EQ(Number(webs, L"Count"), 1);
}

TEST_F(WebModelTest, AWebThatCannotBeOpenedFailsWithItsReasonAndLeavesTheOthers) {
  const LateBound web = OpenWeb();
  const LateBound webs = Object(application, L"Webs");
  std::filesystem::create_directories(InFolder("empty"));
  const Variant missing = Variant::Text(InFolder("nowhere")),
                empty = Variant::Text(InFolder("empty"));
  Outcome outcome = Invoke(webs, L"Open", kMethod, {missing.get()});
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_NE(outcome.description.find("does not exist"), std::string::npos) << outcome.description;
  outcome = Invoke(webs, L"Open", kMethod, {empty.get()});
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_NE(outcome.description.find(InFolder("empty")), std::string::npos) << outcome.description;
  const Variant server = Variant::Text("http://example.com/web");
  EXPECT_EQ(Invoke(webs, L"Open", kMethod, {server.get()}).code, DISP_E_EXCEPTION);
  EXPECT_EQ(Text(Object(application, L"ActiveWeb"), L"Url"), url);
}

TEST_F(WebModelTest, OpenRefusesArgumentsOutOfOrder) {
  const LateBound webs = Object(application, L"Webs");
  const Variant path = Variant::Text(web_path), none = Variant::Text(""), flags = Variant::Long(0);
  Outcome outcome =
      Invoke(webs, L"Open", kMethod, {path.get(), flags.get(), none.get(), none.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 0u);
  EXPECT_EQ(Invoke(webs, L"Open", kMethod).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(
      Invoke(webs, L"Open", kMethod, {path.get(), none.get(), none.get(), flags.get(), flags.get()})
          .code,
      DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Invoke(webs, L"Open", kGet, {path.get()}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Number(webs, L"Count"), 0);
}

TEST_F(WebModelTest, CountsWebsFromZero) {
  const LateBound web = OpenWeb();
  const LateBound webs = Object(application, L"Webs");
  EXPECT_EQ(Text(Item(webs, Variant::Long(0)), L"Url"), url);
  EXPECT_EQ(Text(Item(webs, Variant::Text(web_path)), L"Url"), url);
  EXPECT_EQ(EnumeratedTexts(webs, L"Url"), url + "\n");
  const Variant one = Variant::Long(1), minus = Variant::Long(-1),
                object = Variant::Object(web.get());
  EXPECT_EQ(Invoke(webs, L"Item", kGet, {one.get()}).scode, kBadValue);
  EXPECT_EQ(Invoke(webs, L"Item", kGet, {minus.get()}).scode, kBadValue);
  const Outcome outcome = Invoke(webs, L"Item", kGet, {object.get()});
  EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(outcome.argument, 0u);
  EXPECT_EQ(Invoke(webs, L"Item", kGet).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Invoke(webs, L"Item", kMethod, {one.get()}).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(WebModelTest, WalksFoldersAndFilesInTheirOrder) {
  const LateBound root = Object(OpenWeb(), L"RootFolder");
  EXPECT_EQ(EnumeratedTexts(Object(root, L"Files"), L"Name"), "index.htm\nloose.htm\n");
  EXPECT_EQ(EnumeratedTexts(Object(root, L"Folders"), L"Name"), "docs\nimages\nsub\n");
  EXPECT_EQ(Text(root, L"Url"), url);
  EXPECT_EQ(Text(root, L"Name"), "my web");
  const LateBound docs = Item(Object(root, L"Folders"), Variant::Text("DOCS"));
  EXPECT_EQ(Text(docs, L"Url"), url + "/docs");
  EXPECT_EQ(EnumeratedTexts(Object(docs, L"Files"), L"Url"),
            url + "/docs/b.htm\n" + url + "/docs/my page.htm\n");
  EXPECT_EQ(Text(Object(docs, L"Web"), L"Url"), url);
  EXPECT_EQ(Text(Object(docs, L"Parent"), L"Url"), url);
  EXPECT_EQ(Number(Object(docs, L"Folders"), L"Count"), 0);
  const LateBound web = Object(application, L"ActiveWeb");
  EXPECT_EQ(Number(Object(web, L"AllFiles"), L"Count"), 6);
  EXPECT_EQ(EnumeratedTexts(Object(web, L"AllFolders"), L"Name"), "docs\nimages\nsub\n");
}

TEST_F(WebModelTest, AFolderKnowsWhetherItIsTheRootOfAWeb) {
  const LateBound root = Object(OpenWeb(), L"RootFolder");
  const LateBound folders = Object(root, L"Folders");
  EXPECT_TRUE(TruthOf(root.Get(L"IsRoot")));
  EXPECT_TRUE(TruthOf(root.Get(L"IsWeb")));
  EXPECT_FALSE(TruthOf(Item(folders, Variant::Text("docs")).Get(L"IsWeb")));
  EXPECT_TRUE(TruthOf(Item(folders, Variant::Text("sub")).Get(L"IsWeb")));
  EXPECT_FALSE(TruthOf(Item(folders, Variant::Text("sub")).Get(L"IsRoot")));
}

TEST_F(WebModelTest, TakesIndexesBehindTheNameOfACollection) {
  const LateBound root = Object(OpenWeb(), L"RootFolder");
  EXPECT_EQ(Text(ObjectOf(root.Get(L"Files", Variant::Text("loose.htm"))), L"Title"), "Loose");
  EXPECT_EQ(Text(ObjectOf(root.Get(L"Folders", Variant::Long(0))), L"Name"), "docs");
  const Variant missing = Variant::Text("missing.htm");
  EXPECT_EQ(Invoke(root, L"Files", kGet, {missing.get()}).scode, kBadValue);
}

TEST_F(WebModelTest, AFileTellsWhatItIs) {
  const LateBound web = OpenWeb();
  const LateBound file = ObjectOf(web.Get(L"LocateFile", Variant::Text("docs/my page.htm")));
  EXPECT_EQ(Text(file, L"Url"), url + "/docs/my page.htm");
  EXPECT_EQ(Text(file, L"Name"), "my page.htm");
  EXPECT_EQ(Text(file, L"Extension"), "htm");
  EXPECT_EQ(Text(file, L"Title"), "My page");
  EXPECT_EQ(Text(Object(file, L"NavigationNode"), L"Label"), "First");
  EXPECT_FALSE(TruthOf(file.Get(L"IsOpen")));
  EXPECT_FALSE(ObjectOf(web.Get(L"LocateFile", Variant::Text("missing.htm"))));
  const LateBound loose = ObjectOf(web.Get(L"LocateFile", Variant::Text(url + "/LOOSE.htm")));
  EXPECT_FALSE(Object(loose, L"NavigationNode"));
  EXPECT_EQ(Invoke(file, L"LocalPath", kGet).code, DISP_E_UNKNOWNNAME);
}

TEST_F(WebModelTest, PropertiesGiveKeysWhenEnumeratedAndValuesByKey) {
  const LateBound file = ObjectOf(OpenWeb().Get(L"LocateFile", Variant::Text("index.htm")));
  const LateBound properties = Object(file, L"Properties");
  const auto keys = Enumerated(properties);
  ASSERT_EQ(keys.size(), 1u);
  EXPECT_EQ(TextOf(keys[0]), "vti_title");
  EXPECT_EQ(TextOf(properties.Get(L"Item", Variant::Text("VTI_title"))), "Home page");
  EXPECT_EQ(TextOf(file.Get(L"Properties", Variant::Text("vti_title"))), "Home page");
  const Variant keywords = Variant::Text("keywords");
  EXPECT_EQ(Invoke(properties, L"Item", kGet, {keywords.get()}).scode, kBadValue);
}

TEST_F(WebModelTest, MetaTagsGiveNamesWhenEnumeratedAndContentsByName) {
  const LateBound web = OpenWeb();
  const LateBound tags =
      Object(ObjectOf(web.Get(L"LocateFile", Variant::Text("index.htm"))), L"MetaTags");
  const auto names = Enumerated(tags);
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(TextOf(names[0]), "keywords");
  EXPECT_EQ(TextOf(tags.Get(L"Item", Variant::Text("Keywords"))), "start, home");
  const LateBound none =
      Object(ObjectOf(web.Get(L"LocateFile", Variant::Text("loose.htm"))), L"MetaTags");
  EXPECT_EQ(Number(none, L"Count"), 0);
  const Variant keywords = Variant::Text("keywords");
  EXPECT_EQ(Invoke(none, L"Item", kGet, {keywords.get()}).code, DISP_E_EXCEPTION);
}

TEST_F(WebModelTest, WalksTheNavigationInEveryDirection) {
  const LateBound web = OpenWeb();
  const LateBound root = Object(web, L"RootNavigationNode");
  EXPECT_EQ(EnumeratedTexts(Object(root, L"Children"), L"Label"), "Home\nHeading\n");
  EXPECT_FALSE(Object(root, L"File"));
  EXPECT_FALSE(Object(root, L"Parent"));
  EXPECT_FALSE(Object(root, L"Next"));
  const LateBound home = ObjectOf(root.Get(L"Children", Variant::Long(0)));
  EXPECT_EQ(EnumeratedTexts(Object(home, L"Children"), L"Label"), "First\nSecond\n");
  const LateBound first = ObjectOf(home.Get(L"Children", Variant::Long(0)));
  EXPECT_EQ(Text(Object(first, L"Next"), L"Label"), "Second");
  EXPECT_FALSE(Object(first, L"Prev"));
  EXPECT_FALSE(Object(Object(first, L"Next"), L"Next"));
  EXPECT_EQ(Text(Object(Object(first, L"Next"), L"Prev"), L"Label"), "First");
  EXPECT_EQ(Text(Object(first, L"Parent"), L"Label"), "Home");
  EXPECT_EQ(Text(Object(first, L"Home"), L"Label"), "Home");
  EXPECT_EQ(Text(first, L"Url"), url + "/docs/my page.htm");
  EXPECT_EQ(Text(Object(first, L"File"), L"Title"), "My page");
  EXPECT_EQ(Text(Object(first, L"Web"), L"Url"), url);
  EXPECT_EQ(Number(Object(first, L"Children"), L"Count"), 0);
  const LateBound heading = ObjectOf(root.Get(L"Children", Variant::Long(1)));
  EXPECT_FALSE(Object(heading, L"File"));
  EXPECT_EQ(EnumeratedTexts(Object(web, L"AllNavigationNodes"), L"Label"),
            "Home\nFirst\nSecond\nHeading\n");
  EXPECT_EQ(Text(Object(web, L"HomeNavigationNode"), L"Label"), "Home");
  const Variant label = Variant::Text("x");
  EXPECT_EQ(Invoke(Object(root, L"Children"), L"Item", kGet, {label.get()}).code,
            DISP_E_TYPEMISMATCH);
}

TEST_F(WebModelTest, RefreshShowsWhatIsThereNow) {
  const LateBound web = OpenWeb();
  int changes = 0;
  world->session.on_change = [&] { ++changes; };
  Put("new.htm", "<title>New</title>");
  EXPECT_FALSE(ObjectOf(web.Get(L"LocateFile", Variant::Text("new.htm"))));
  web.Call(L"Refresh");
  EXPECT_EQ(Text(ObjectOf(web.Get(L"LocateFile", Variant::Text("new.htm"))), L"Title"), "New");
  EXPECT_EQ(changes, 1);
  const Variant argument = Variant::Boolean(true);
  EXPECT_EQ(Invoke(web, L"Refresh", kMethod, {argument.get()}).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Invoke(web, L"Refresh", kGet).code, DISP_E_MEMBERNOTFOUND);
  world->session.on_change = nullptr;
}

TEST_F(WebModelTest, TheWebActivatedLastIsTheActiveOne) {
  const LateBound first = OpenWeb();
  std::filesystem::create_directories(InFolder("other"));
  std::ofstream(InFolder("other") + "\\a.htm") << "<title>A</title>";
  const LateBound webs = Object(application, L"Webs");
  const LateBound second = ObjectOf(webs.Get(L"Open", Variant::Text(InFolder("other"))));
  EXPECT_EQ(Text(Object(application, L"ActiveWeb"), L"Title"), "other");
  first.Call(L"Activate");
  EXPECT_EQ(Text(Object(application, L"ActiveWeb"), L"Title"), "my web");
  first.Call(L"Close");
  EXPECT_EQ(Text(Object(application, L"ActiveWeb"), L"Title"), "other");
  EXPECT_EQ(Number(webs, L"Count"), 1);
}

TEST_F(WebModelTest, AClosedWebRefusesEveryCallOnWhatIsStillHeldOfIt) {
  const LateBound web = OpenWeb();
  const LateBound root = Object(web, L"RootFolder"), node = Object(web, L"RootNavigationNode");
  const LateBound file = ObjectOf(web.Get(L"LocateFile", Variant::Text("index.htm")));
  web.Call(L"Close");
  for (const LateBound* object : {&web, &root, &file}) {
    const Outcome outcome = Invoke(*object, L"Url", kGet);
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_NE(outcome.description.find("has been closed"), std::string::npos);
  }
  EXPECT_EQ(Invoke(node, L"Children", kGet).code, DISP_E_EXCEPTION);
  EXPECT_FALSE(Object(application, L"ActiveWeb"));
}

TEST_F(WebModelTest, PagesOpenInTheEditorAreTheWindowsOfTheirWeb) {
  const LateBound web = OpenWeb();
  const auto page = world->session.Active()->Edit(world->session.Active()->FindFile("docs/b.htm"));
  page->dirty = true;
  const LateBound window = Object(web, L"ActiveWebWindow");
  const LateBound pages = Object(window, L"PageWindows");
  ASSERT_EQ(Number(pages, L"Count"), 1);
  const LateBound shown = Item(pages, Variant::Long(0));
  EXPECT_TRUE(TruthOf(shown.Get(L"IsDirty")));
  EXPECT_EQ(Text(Object(shown, L"File"), L"Title"), "B");
  EXPECT_EQ(Text(shown, L"Caption"), url + "/docs/b.htm");
  EXPECT_TRUE(TruthOf(Object(shown, L"File").Get(L"IsOpen")));
  shown.Call(L"Save");
  EXPECT_FALSE(TruthOf(shown.Get(L"IsDirty")));
  shown.Call(L"Save", Variant::Boolean(true));
  EXPECT_EQ(page->saves, 2);
  const Variant object = Variant::Object(web.get());
  EXPECT_EQ(Invoke(shown, L"Save", kMethod, {object.get()}).code, DISP_E_TYPEMISMATCH);
  const Variant dirty = Variant::Boolean(true);
  EXPECT_EQ(Invoke(shown, L"IsDirty", kPut, {dirty.get()}).code, DISP_E_MEMBERNOTFOUND);
  shown.Call(L"Close");
  EXPECT_EQ(Number(pages, L"Count"), 0);
  EXPECT_EQ(Invoke(shown, L"Save", kMethod).code, DISP_E_EXCEPTION);
}

TEST_F(WebModelTest, EditOpensAPageInItsProgramAndAsAWindow) {
  std::string opened;
  world->open_document = [&](const std::string& path) { opened = path; };
  const LateBound file = ObjectOf(OpenWeb().Get(L"LocateFile", Variant::Text("loose.htm")));
  const LateBound window = ObjectOf(file.Get(L"Edit"));
  EXPECT_EQ(opened, web_path + "\\loose.htm");
  EXPECT_EQ(Text(window, L"Caption"), url + "/loose.htm");
  file.Get(L"Edit", Variant::Long(0));
  EXPECT_EQ(world->session.Active()->pages.size(), 1u);
  world->open_document = nullptr;
}

TEST_F(WebModelTest, ClosingTheLastWebWindowEndsTheHost) {
  OpenWeb();
  bool ended = false;
  world->quit = [&] { ended = true; };
  const LateBound windows = Object(application, L"WebWindows");
  EXPECT_EQ(Text(Item(windows, Variant::Long(0)), L"Caption"), "my web");
  EXPECT_EQ(EnumeratedTexts(windows, L"Caption"), "my web\n");
  windows.Call(L"Close", Variant::Long(0));
  EXPECT_TRUE(ended);
  EXPECT_EQ(Number(windows, L"Count"), 0);
  world->quit = nullptr;
}

}  // namespace
}  // namespace scrivo::host

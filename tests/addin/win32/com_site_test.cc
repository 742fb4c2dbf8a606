#include "addin/win32/com_site.h"

#include <gtest/gtest.h>

#include "platform/globals.h"
#include "system/error.h"
#include "tests/addin/win32/scripted_collection.h"

namespace scrivo {
namespace {

class ComSiteTest : public testing::Test {
 protected:
  ComSiteTest() { Globals() = GlobalState(PathStyle::kWindows); }
  ~ComSiteTest() override {
    object.Reset();
    other.Reset();
    EXPECT_EQ(ScriptedObject::Living(), 0);
    EXPECT_EQ(ScriptedEnumerator::Living(), 0);
    Globals() = GlobalState();
  }

  // A member that tells of nothing in one of the ways that hosts have.
  static void TellNothing(ScriptedObject& of, const wchar_t* member, int way) {
    switch (way) {
      case 0:
        of.Gives(member, PlainVariant(VT_NULL));
        break;
      case 1:
        of.Gives(member, PlainVariant(VT_EMPTY));
        break;
      case 2:
        of.Gives(member, PlainVariant(VT_DISPATCH));
        break;
      case 3:
        of.Fails(member, E_FAIL);
        break;
      default:
        break;  // the object has no such member
    }
  }

  ComPtr<ScriptedObject> object = ScriptedObject::Make();
  ComPtr<ScriptedObject> other = ScriptedObject::Make();
};

class WaysOfNothing : public ComSiteTest, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(All, WaysOfNothing, testing::Range(0, 5));

TEST_F(ComSiteTest, AFileTellsItsAddressExtensionAndTitle) {
  object->GivesText(L"Url", L"file:///C:/Webs/site/docs/a.htm");
  object->GivesText(L"Extension", L"htm");
  object->GivesText(L"Title", L"M\u00E4rz");
  ComFile file(Called(object));
  EXPECT_EQ(file.Url(), "file:///C:/Webs/site/docs/a.htm");
  EXPECT_EQ(file.Extension(), "htm");
  EXPECT_EQ(file.Title(), "M\xC3\xA4rz");
}

// A collection that has one item under a name.
void GiveTag(ScriptedObject& collection, const char* name, const wchar_t* text) {
  collection.On(L"Item", [name, text](ScriptedCall& call) {
    if (TextOf(call.Argument(0).bstrVal) != name) return DISP_E_BADINDEX;
    call.result->vt = VT_BSTR;
    call.result->bstrVal = SysAllocString(text);
    return S_OK;
  });
}

TEST_F(ComSiteTest, APropertyIsThePagesMetaTag) {
  GiveTag(*other, "keywords", L"spring; summer");
  object->GivesObject(L"MetaTags", other);
  EXPECT_EQ(ComFile(Called(object)).Property("keywords"), "spring; summer");
}

TEST_F(ComSiteTest, WithoutMetaTagsAPropertyIsTheOneThatTheHostKeepsWithTheFile) {
  GiveTag(*other, "keywords", L"autumn");
  object->GivesObject(L"Properties", other);
  EXPECT_EQ(ComFile(Called(object)).Property("keywords"), "autumn");
}

TEST_F(ComSiteTest, AMetaTagThatIsMissingIsLookedForAmongTheFilesProperties) {
  const ComPtr<ScriptedObject> no_tags = ScriptedObject::Make();
  no_tags->Gives(L"Item", PlainVariant(VT_EMPTY));
  GiveTag(*other, "keywords", L"winter");
  object->GivesObject(L"MetaTags", no_tags);
  object->GivesObject(L"Properties", other);
  EXPECT_EQ(ComFile(Called(object)).Property("keywords"), "winter");
}

TEST_P(WaysOfNothing, APropertyThatIsInNeitherFails) {
  const ComPtr<ScriptedObject> tags = ScriptedObject::Make();
  TellNothing(*tags, L"Item", GetParam());
  object->GivesObject(L"MetaTags", tags);
  object->GivesObject(L"Properties", tags);
  EXPECT_THROW(ComFile(Called(object)).Property("keywords"), Error);
}

TEST_F(ComSiteTest, AFileTellsItsPlaceInTheNavigationStructure) {
  other->GivesText(L"Label", L"First");
  object->GivesObject(L"NavigationNode", other);
  const std::shared_ptr<SiteNode> node = ComFile(Called(object)).NavigationEntry();
  ASSERT_TRUE(node);
  EXPECT_EQ(node->Label(), "First");
}

TEST_P(WaysOfNothing, AFileOutsideTheNavigationStructureHasNoPlaceInIt) {
  TellNothing(*object, L"NavigationNode", GetParam());
  EXPECT_EQ(ComFile(Called(object)).NavigationEntry(), nullptr);
}

TEST_F(ComSiteTest, AFolderListsItsFilesAndFolders) {
  object->GivesObject(L"Files", Enumerable(NumberedObjects(3)));
  object->GivesObject(L"Folders", Countable(NumberedObjects(2)));
  ComFolder folder(Called(object));
  const SiteFiles files = folder.Files();
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[2]->Url(), "2");
  EXPECT_EQ(folder.Folders().size(), 2u);
}

TEST_F(ComSiteTest, AFolderThatIsAWebOfItsOwnIsAFolderLikeAnyOther) {
  ScriptedObjects folders = NumberedObjects(2);
  folders[1]->Gives(L"IsWeb", PlainVariant(VT_BOOL, VARIANT_TRUE));
  object->GivesObject(L"Folders", Enumerable(folders));
  EXPECT_EQ(ComFolder(Called(object)).Folders().size(), 2u);
}

TEST_F(ComSiteTest, AFoldersPathIsToldByItsAddress) {
  object->GivesText(L"Url", L"file:///C:/My Webs/site/images");
  EXPECT_EQ(ComFolder(Called(object)).LocalPath(), "C:\\My Webs\\site\\images");
  other->GivesText(L"Url", L"file:///C:/Webs/site/");
  EXPECT_EQ(ComFolder(Called(other)).LocalPath(), "C:\\Webs\\site") << "without a separator";
}

TEST_F(ComSiteTest, ANodeTellsItsLabelAddressPageAndChildren) {
  other->GivesText(L"Title", L"A page");
  object->GivesText(L"Label", L"Start");
  object->GivesText(L"Url", L"file:///C:/Webs/site/index.htm");
  object->GivesObject(L"File", other);
  object->GivesObject(L"Children", Enumerable(NumberedObjects(2)));
  ComNode node(Called(object));
  EXPECT_EQ(node.Label(), "Start");
  EXPECT_EQ(node.Url(), "file:///C:/Webs/site/index.htm");
  ASSERT_TRUE(node.File());
  EXPECT_EQ(node.File()->Title(), "A page");
  EXPECT_EQ(node.Children().size(), 2u);
}

TEST_P(WaysOfNothing, ANodeThatIsOnlyALabelHasNoPage) {
  TellNothing(*object, L"File", GetParam());
  EXPECT_EQ(ComNode(Called(object)).File(), nullptr);
}

TEST_F(ComSiteTest, ANodeWithoutACollectionOfChildrenHasNone) {
  object->Gives(L"Children", PlainVariant(VT_DISPATCH));
  EXPECT_TRUE(ComNode(Called(object)).Children().empty());
}

TEST_F(ComSiteTest, APageTellsWhetherItWasChanged) {
  object->Gives(L"IsDirty", PlainVariant(VT_BOOL, static_cast<unsigned short>(VARIANT_TRUE)));
  EXPECT_TRUE(ComPage(Called(object)).IsModified());
}

TEST_F(ComSiteTest, APageIsSavedOverItself) {
  int saves = 0;
  object->On(L"Save", [&](ScriptedCall& call) {
    ++saves;
    EXPECT_EQ(call.flags, DISPATCH_METHOD);
    EXPECT_EQ(call.Count(), 1u);
    EXPECT_EQ(call.Argument(0).vt, VT_BOOL);
    EXPECT_EQ(call.Argument(0).boolVal, VARIANT_TRUE);
    return S_OK;
  });
  ComPage(Called(object)).Save(true);
  EXPECT_EQ(saves, 1);
}

class RefusedArguments : public ComSiteTest, public testing::WithParamInterface<HRESULT> {};
INSTANTIATE_TEST_SUITE_P(All, RefusedArguments,
                         testing::Values(DISP_E_BADPARAMCOUNT, DISP_E_NONAMEDARGS,
                                         DISP_E_PARAMNOTFOUND, DISP_E_TYPEMISMATCH,
                                         CTL_E_ILLEGALFUNCTIONCALL + 445));

TEST_P(RefusedArguments, AHostThatTakesNoArgumentToSaveIsGivenNone) {
  int saves = 0;
  object->On(L"Save", [&](ScriptedCall& call) -> HRESULT {
    if (call.Count() > 0) return GetParam();
    ++saves;
    return S_OK;
  });
  ComPage(Called(object)).Save(true);
  EXPECT_EQ(saves, 1);
}

TEST_F(ComSiteTest, APageThatCannotBeSavedIsNotTriedTwice) {
  int saves = 0;
  object->On(L"Save", [&](ScriptedCall&) {
    ++saves;
    return E_FAIL;
  });
  EXPECT_THROW(ComPage(Called(object)).Save(true), Error);
  EXPECT_EQ(saves, 1);
}

TEST_F(ComSiteTest, AWebTellsItsAddressFolderNodesAndPages) {
  const ComPtr<ScriptedObject> window = ScriptedObject::Make();
  window->GivesObject(L"PageWindows", Enumerable(NumberedObjects(2)));
  other->GivesText(L"Url", L"file:///C:/Webs/site");
  other->GivesText(L"Label", L"Home");
  object->GivesText(L"Url", L"file:///C:/Webs/site");
  for (const wchar_t* member : {L"RootFolder", L"RootNavigationNode", L"HomeNavigationNode"}) {
    object->GivesObject(member, other);
  }
  object->GivesObject(L"ActiveWebWindow", window);
  ComWeb web(Called(object));
  EXPECT_EQ(web.Url(), "file:///C:/Webs/site");
  EXPECT_EQ(web.BaseFolder()->LocalPath(), "C:\\Webs\\site");
  EXPECT_EQ(web.NavigationRoot()->Label(), "Home");
  EXPECT_EQ(web.HomeNode()->Label(), "Home");
  EXPECT_EQ(web.OpenPages().size(), 2u);
}

TEST_P(WaysOfNothing, AWebWithoutAHomePageHasNoHomeNode) {
  TellNothing(*object, L"HomeNavigationNode", GetParam());
  EXPECT_EQ(ComWeb(Called(object)).HomeNode(), nullptr);
}

TEST_F(ComSiteTest, AWebWithoutANavigationStructureHasNoRoot) {
  object->Gives(L"RootNavigationNode", PlainVariant(VT_DISPATCH));
  EXPECT_EQ(ComWeb(Called(object)).NavigationRoot(), nullptr);
}

TEST_F(ComSiteTest, TheOpenPagesAreThoseOfAllTheWebsWindows) {
  const ComPtr<ScriptedObject> window = ScriptedObject::Make(), second = ScriptedObject::Make();
  window->GivesObject(L"PageWindows", Enumerable(NumberedObjects(2)));
  second->GivesObject(L"PageWindows", Enumerable(NumberedObjects(3)));
  object->GivesObject(L"WebWindows", Enumerable({window, second}));
  object->GivesObject(L"ActiveWebWindow", window);
  EXPECT_EQ(ComWeb(Called(object)).OpenPages().size(), 5u);
}

TEST_F(ComSiteTest, AWebThatDoesNotTellItsAddressHasThatOfItsFolder) {
  other->GivesText(L"Url", L"file:///C:/Webs/site");
  object->GivesObject(L"RootFolder", other);
  EXPECT_EQ(ComWeb(Called(object)).Url(), "file:///C:/Webs/site");
}

class Breakdowns : public ComSiteTest, public testing::WithParamInterface<HRESULT> {};
INSTANTIATE_TEST_SUITE_P(All, Breakdowns,
                         testing::Values(E_OUTOFMEMORY, E_ACCESSDENIED, RPC_E_DISCONNECTED,
                                         CTL_E_PERMISSIONDENIED));

TEST_P(Breakdowns, AHostThatCannotAnswerHasNotSaidThatThereIsNothing) {
  object->Fails(L"NavigationNode", GetParam());
  object->Fails(L"HomeNavigationNode", GetParam());
  EXPECT_THROW(ComFile(Called(object)).NavigationEntry(), Error);
  EXPECT_THROW(ComWeb(Called(object)).HomeNode(), Error);
}

TEST_F(ComSiteTest, AWebWithoutAWindowHasNoOpenPages) {
  object->Gives(L"ActiveWebWindow", PlainVariant(VT_DISPATCH));
  EXPECT_TRUE(ComWeb(Called(object)).OpenPages().empty());
}

TEST_F(ComSiteTest, AWebIsRefreshedByAMethodWithoutArguments) {
  int refreshes = 0;
  object->On(L"Refresh", [&](ScriptedCall& call) {
    ++refreshes;
    EXPECT_EQ(call.flags, DISPATCH_METHOD);
    EXPECT_EQ(call.Count(), 0u);
    return S_OK;
  });
  ComWeb(Called(object)).Refresh();
  EXPECT_EQ(refreshes, 1);
}

}  // namespace
}  // namespace scrivo

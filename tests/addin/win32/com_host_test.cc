#include "addin/win32/com_host.h"

#include <gtest/gtest.h>

#include "system/error.h"
#include "tests/addin/win32/scripted_collection.h"

namespace scrivo {
namespace {

class ComHostTest : public testing::Test {
 protected:
  ~ComHostTest() override {
    application.Reset();
    other.Reset();
    EXPECT_EQ(ScriptedObject::Living(), 0);
  }

  ComHost Host() const { return ComHost(Called(application), {}); }
  // A bar "Tools" whose controls are `other`.
  void MakeToolsBar() {
    const ComPtr<ScriptedObject> bar = ScriptedObject::Make();
    bar->GivesObject(L"Controls", other);
    const ComPtr<ScriptedObject> bars = ScriptedObject::Make();
    bars->On(L"Item", [bar](ScriptedCall& call) {
      if (TextOf(call.Argument(0).bstrVal) != "Tools") return E_INVALIDARG;
      call.result->vt = VT_DISPATCH;
      call.result->pdispVal = ComPtr<ScriptedObject>(bar).Detach();
      return S_OK;
    });
    application->GivesObject(L"CommandBars", bars);
  }

  ComPtr<ScriptedObject> application = ScriptedObject::Make();
  ComPtr<ScriptedObject> other = ScriptedObject::Make();
};

TEST_F(ComHostTest, TheOpenWebIsTheActiveOne) {
  other->GivesText(L"Url", L"file:///C:/Webs/site");
  application->GivesObject(L"ActiveWeb", other);
  ASSERT_TRUE(Host().CurrentWeb());
  EXPECT_EQ(Host().CurrentWeb()->Url(), "file:///C:/Webs/site");
}

TEST_F(ComHostTest, NoWebIsOpenHoweverTheHostSaysIt) {
  EXPECT_EQ(Host().CurrentWeb(), nullptr) << "no such member";
  application->Gives(L"ActiveWeb", PlainVariant(VT_DISPATCH));
  EXPECT_EQ(Host().CurrentWeb(), nullptr);
  application = ScriptedObject::Make();
  application->Fails(L"ActiveWeb", E_FAIL);
  EXPECT_EQ(Host().CurrentWeb(), nullptr);
  application = ScriptedObject::Make();
  application->Gives(L"ActiveWeb", PlainVariant(VT_NULL));
  EXPECT_EQ(Host().CurrentWeb(), nullptr);
}

TEST_F(ComHostTest, APlaceInTheWebIsTheHostsToTell) {
  application->GivesObject(L"ActiveWeb", other);
  application->On(L"MakeRel", [&](ScriptedCall& call) {
    EXPECT_EQ(call.Count(), 2u);
    EXPECT_EQ(call.Argument(0).vt, VT_DISPATCH);
    EXPECT_EQ(call.Argument(0).pdispVal, other.get()) << "the web itself is the base";
    EXPECT_EQ(TextOf(call.Argument(1).bstrVal), "file:///C:/Webs/site/docs/a.htm");
    call.result->vt = VT_BSTR;
    call.result->bstrVal = SysAllocString(L"docs/a.htm");
    return S_OK;
  });
  ComHost host = Host();
  const std::shared_ptr<SiteWeb> web = host.CurrentWeb();
  EXPECT_EQ(host.RelativeLocation(*web, "file:///C:/Webs/site/docs/a.htm"), "docs/a.htm");
}

TEST_F(ComHostTest, TheVersionIsText) {
  application->Gives(L"Version", PlainVariant(VT_I4, 12));
  EXPECT_EQ(Host().Version(), "12");
}

TEST_F(ComHostTest, AWebIsOpenedWithEveryArgumentAndBroughtForward) {
  int activations = 0;
  other->On(L"Activate", [&](ScriptedCall& call) {
    ++activations;
    EXPECT_EQ(call.Count(), 0u);
    return S_OK;
  });
  const ComPtr<ScriptedObject> webs = ScriptedObject::Make();
  webs->On(L"Open", [&](ScriptedCall& call) {
    EXPECT_EQ(call.Count(), 4u);
    EXPECT_EQ(TextOf(call.Argument(0).bstrVal), "C:\\My web");
    EXPECT_EQ(call.Argument(1).vt, VT_BSTR);
    EXPECT_EQ(TextOf(call.Argument(1).bstrVal), "");
    EXPECT_EQ(call.Argument(2).vt, VT_BSTR);
    EXPECT_EQ(call.Argument(3).vt, VT_I4);
    EXPECT_EQ(call.Argument(3).lVal, 0);
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ComPtr<ScriptedObject>(other).Detach();
    return S_OK;
  });
  application->GivesObject(L"Webs", webs);
  const std::shared_ptr<OpenedWeb> web = Host().OpenWeb("C:\\My web", "", "", 0);
  ASSERT_TRUE(web);
  web->Activate();
  EXPECT_EQ(activations, 1);
}

TEST_F(ComHostTest, ABarIsFoundByItsName) {
  MakeToolsBar();
  EXPECT_TRUE(Host().Bar("Tools"));
  EXPECT_THROW(Host().Bar("Standard"), Error);
}

TEST_F(ComHostTest, AMissingBarMayBeNull) {
  other->Gives(L"Item", PlainVariant(VT_DISPATCH));
  application->GivesObject(L"CommandBars", other);
  EXPECT_EQ(Host().Bar("Tools"), nullptr);
}

TEST_F(ComHostTest, AControlIsAddedWithAllFivePlacesFilled) {
  MakeToolsBar();
  std::vector<VARTYPE> fifth;
  other->On(L"Add", [&](ScriptedCall& call) {
    EXPECT_EQ(call.Count(), 5u);
    EXPECT_EQ(call.Argument(0).vt, VT_I4);
    for (UINT i = 1; i < 4; ++i) {
      EXPECT_EQ(call.Argument(i).vt, VT_ERROR);
      EXPECT_EQ(call.Argument(i).scode, DISP_E_PARAMNOTFOUND);
    }
    fifth.push_back(call.Argument(4).vt);
    if (call.Argument(0).lVal != kControlPopup) return S_OK;  // nothing was made
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ScriptedObject::Make().Detach();
    return S_OK;
  });
  const std::shared_ptr<CommandBarControls> controls = Host().Bar("Tools")->Controls();
  EXPECT_TRUE(controls->Add(kControlPopup, true));
  EXPECT_EQ(controls->Add(kControlButton, std::nullopt), nullptr);
  EXPECT_EQ(fifth, (std::vector<VARTYPE>{VT_BOOL, VT_ERROR}));
}

TEST_F(ComHostTest, AControlIsSetReadAndDeleted) {
  MakeToolsBar();
  const ComPtr<ScriptedObject> control = ScriptedObject::Make();
  std::string seen;
  const auto note = [&](const char* what) {
    return [&seen, what](ScriptedCall& call) {
      seen += std::string(what) + "=" + TextOf([&] {
                Variant copy;
                VariantCopy(copy.Put(), &call.Argument(0));
                return copy;
              }()) +
              " ";
      return S_OK;
    };
  };
  control->On(L"Caption", note("Caption"));
  control->On(L"OnAction", note("OnAction"));
  control->On(L"FaceId", note("FaceId"));
  control->On(L"BeginGroup", [&](ScriptedCall& call) {
    EXPECT_EQ(call.Argument(0).vt, VT_BOOL);
    EXPECT_EQ(call.Argument(0).boolVal, VARIANT_TRUE);
    return S_OK;
  });
  control->Gives(L"Visible", PlainVariant(VT_BOOL, -1));
  control->GivesObject(L"Controls", other);
  int deletions = 0;
  control->On(L"Delete", [&](ScriptedCall& call) {
    ++deletions;
    EXPECT_EQ(call.Count(), 1u);
    EXPECT_EQ(call.Argument(0).vt, VT_ERROR) << "\"Temporary\" is left out";
    return S_OK;
  });
  other->GivesObject(L"Item", control);
  {
    const std::shared_ptr<CommandBarControl> found =
        Host().Bar("Tools")->Controls()->Item("Scrivo");
    ASSERT_TRUE(found);
    found->BeginGroup(true);
    found->Caption("Compile");
    found->OnAction("!<Kestrel.Connect>");
    found->FaceId(2138);
    EXPECT_EQ(seen, "Caption=Compile OnAction=!<Kestrel.Connect> FaceId=2138 ");
    EXPECT_TRUE(found->Visible());
    EXPECT_TRUE(found->Controls());
    found->Delete();
    EXPECT_EQ(deletions, 1);
  }
  control->Clear();  // it and its controls hold one another
}

TEST_F(ComHostTest, WithoutAHostEveryOperationFails) {
  ComHost host{LateBound(), {}};
  EXPECT_EQ(host.CurrentWeb(), nullptr);
  EXPECT_THROW(host.Version(), Error);
  EXPECT_THROW(host.Bar("Tools"), Error);
  EXPECT_THROW(ComAddInInstance(LateBound()).ProgId(), Error);
}

TEST_F(ComHostTest, TheAddInsInstanceTellsItsProgrammaticIdentifier) {
  other->GivesText(L"ProgId", L"Kestrel.Connect");
  EXPECT_EQ(ComAddInInstance(Called(other)).ProgId(), "Kestrel.Connect");
}

}  // namespace
}  // namespace scrivo

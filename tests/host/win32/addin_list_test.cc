#include <set>

#include "platform/registry.h"
#include "tests/host/win32/model_test.h"

namespace scrivo::host {
namespace {

constexpr char kProgId[] = "ScrivoTest.Addin";
constexpr char kAddinKey[] =
    "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\ScrivoTest.Addin";
const CLSID kClass = {0x5F0F6A51, 0x71B2, 0x4A5C, {0x9D, 0x0B, 0x31, 0x5B, 0x6F, 0x0E, 0x77, 0x21}};

// What add-ins were told, and how they answer.
struct Told {
  std::string calls;
  HRESULT answer = S_OK;
  bool is_addin = true, publishes = false;
  int living = 0;
  std::string prog_id, host_name;
  bool counts_as_connected = false;
} told;

// An add-in that writes down what it is told.
class TestAddin : public AddinInterface {
 public:
  TestAddin() { ++told.living; }
  virtual ~TestAddin() { --told.living; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool is_known = id == IID_IUnknown || (told.is_addin && id == kAddinInterfaceId);
    *object = is_known ? this : nullptr;
    if (is_known) AddRef();
    return is_known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG mode, IDispatch* instance,
                                         SAFEARRAY** custom) override {
    const LateBound host{ComPtr<IDispatch>::Share(application)};
    const LateBound own{ComPtr<IDispatch>::Share(instance)};
    told.host_name = TextOf(host.Get(L"Name"));
    told.prog_id = TextOf(own.Get(L"ProgId"));
    told.counts_as_connected = TruthOf(own.Get(L"Connect"));
    EXPECT_NE(*custom, nullptr);
    if (told.publishes) own.Put(L"Object", Variant::Object(application));
    Say("connect " + std::to_string(mode));
    return told.answer;
  }
  HRESULT STDMETHODCALLTYPE OnDisconnection(LONG mode, SAFEARRAY**) override {
    return Say("disconnect " + std::to_string(mode));
  }
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY**) override { return Say("update"); }
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY**) override { return Say("started"); }
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY**) override { return Say("shutdown"); }

 private:
  static HRESULT Say(const std::string& call) {
    told.calls += call + "\n";
    return S_OK;
  }

  ULONG references_ = 1;
};

class Factory : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool is_known = id == IID_IUnknown || id == IID_IClassFactory;
    *object = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    const auto addin = ComPtr<TestAddin>::Take(new TestAddin());
    return addin->QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

class AddinListTest : public ModelTest {
 protected:
  AddinListTest() {
    told = Told();
    CoInitialize(nullptr);
    CoRegisterClassObject(kClass, &factory_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    classes_.Init(kHkeyClassesRoot);
    classes_.SetValue(std::string(kProgId) + "\\CLSID", "",
                      std::string("{5F0F6A51-71B2-4A5C-9D0B-315B6F0E7721}"), kRegSz);
    user_.Init(kHkeyCurrentUser);
    RegisterAddin(3);
  }
  ~AddinListTest() override {
    application = LateBound();
    world->ShutDown();
    user_.DeleteKey(kAddinKey);
    classes_.DeleteKey(std::string(kProgId) + "\\CLSID");
    classes_.DeleteKey(kProgId);
    CoRevokeClassObject(cookie_);
    EXPECT_EQ(told.living, 0);
    CoUninitialize();
  }

  void RegisterAddin(std::int32_t load_behavior) {
    user_.SetValue(kAddinKey, "FriendlyName", std::string("Test add-in"), kRegSz);
    user_.SetValue(kAddinKey, "Description", std::string("For tests"), kRegSz);
    user_.SetValue(kAddinKey, "LoadBehavior", load_behavior, kRegDword);
    world->addins.Read();
  }
  LateBound AddinObject() {
    return Item(Object(application, L"COMAddIns"), Variant::Text(kProgId));
  }
  std::string Calls() { return std::exchange(told.calls, ""); }

 private:
  Factory factory_;
  DWORD cookie_ = 0;
  CRegistry classes_;

 protected:
  CRegistry user_;
};

TEST_F(AddinListTest, AnAddInIsLoadedWithTheHostAndToldWhatHappens) {
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_EQ(Calls(), "connect 1\nupdate\nstarted\n");
  EXPECT_EQ(told.host_name, "Scrivo Host");
  EXPECT_EQ(told.prog_id, kProgId);
  EXPECT_TRUE(told.counts_as_connected);
  world->ShutDown();
  EXPECT_EQ(Calls(), "shutdown\ndisconnect 0\n");
  EXPECT_EQ(told.living, 0);
}

TEST_F(AddinListTest, AnotherProgramConnectsItInAModeOfItsOwn) {
  world->addins.ConnectAtStart(kExternal);
  EXPECT_EQ(Calls(), "connect 2\nupdate\nstarted\n");
}

TEST_F(AddinListTest, OnlyAddInsForTheStartAreLoadedThen) {
  for (const std::int32_t behavior : {0, 1, 2, 8, 9}) {
    RegisterAddin(behavior);
    world->addins.ConnectAtStart(kAtStartup);
    EXPECT_EQ(Calls(), "") << behavior;
  }
}

TEST_F(AddinListTest, ItsObjectTellsAndChangesItsState) {
  const LateBound addin = AddinObject();
  EXPECT_EQ(Text(addin, L"ProgId"), kProgId);
  EXPECT_EQ(Text(addin, L"Description"), "For tests");
  EXPECT_EQ(Text(addin, L"Guid"), "{5F0F6A51-71B2-4A5C-9D0B-315B6F0E7721}");
  EXPECT_FALSE(TruthOf(addin.Get(L"Connect")));
  addin.Put(L"Connect", Variant::Boolean(true));
  EXPECT_EQ(Calls(), "connect 0\nupdate\n");
  EXPECT_TRUE(TruthOf(addin.Get(L"Connect")));
  addin.Put(L"Connect", Variant::Boolean(true));
  EXPECT_EQ(Calls(), "");
  addin.Put(L"Connect", Variant::Boolean(false));
  EXPECT_EQ(Calls(), "disconnect 1\n");
  EXPECT_EQ(told.living, 0);
  const Variant text = Variant::Text("x");
  EXPECT_EQ(Invoke(addin, L"ProgId", kPut, {text.get()}).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(addin, L"Connect", kPut, {text.get()}).code, DISP_E_TYPEMISMATCH);
}

TEST_F(AddinListTest, ItMayPublishAnObject) {
  const LateBound addin = AddinObject();
  EXPECT_FALSE(Object(addin, L"Object"));
  const Variant object = Variant::Object(addin.get()), nothing = Variant::Object(nullptr);
  EXPECT_EQ(Invoke(addin, L"Object", kPut, {object.get()}).code, S_OK);
  EXPECT_EQ(Object(addin, L"Object").get(), addin.get());
  EXPECT_EQ(Invoke(addin, L"Object", kPutRef, {nothing.get()}).code, S_OK);
  EXPECT_FALSE(Object(addin, L"Object"));
}

TEST_F(AddinListTest, IsFoundByNumberFromOneAndByName) {
  const LateBound addins = Object(application, L"COMAddIns");
  ASSERT_GE(Number(addins, L"Count"), 1);
  std::set<std::string> names;
  for (std::int32_t i = 1; i <= Number(addins, L"Count"); ++i) {
    names.insert(Text(Item(addins, Variant::Long(i)), L"ProgId"));
  }
  EXPECT_EQ(names.count(kProgId), 1u);
  const Variant zero = Variant::Long(0), other = Variant::Text("Other.Addin");
  EXPECT_EQ(Invoke(addins, L"Item", kMethod, {zero.get()}).scode, kBadValue);
  EXPECT_EQ(Invoke(addins, L"Item", kMethod, {other.get()}).scode, kBadValue);
  user_.DeleteKey(kAddinKey);
  addins.Call(L"Update");
  const Variant name = Variant::Text(kProgId);
  EXPECT_EQ(Invoke(addins, L"Item", kMethod, {name.get()}).code, DISP_E_EXCEPTION);
}

TEST_F(AddinListTest, AnAddInThatRefusesIsLetGoOf) {
  told.answer = E_FAIL;
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_EQ(Calls(), "connect 1\n");
  EXPECT_EQ(told.living, 0);
  EXPECT_EQ(world->addins.Find(kProgId)->problem,
            "The add-in Test add-in cannot be loaded: it refuses the connection with error "
            "0x80004005.");
  const Variant yes = Variant::Boolean(true);
  const Outcome outcome = Invoke(AddinObject(), L"Connect", kPut, {yes.get()});
  EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.description, world->addins.Find(kProgId)->problem);
}

TEST_F(AddinListTest, AnObjectThatWasPublishedBeforeTheRefusalGoesWithIt) {
  told.publishes = true;
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_TRUE(Object(AddinObject(), L"Object"));
  world->addins.Disconnect(world->addins.Find(kProgId), kUserClosed);
  told.answer = E_FAIL;
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_FALSE(Object(AddinObject(), L"Object"));
}

TEST_F(AddinListTest, OneThatIsLoadedAlreadyHearsNothingOfTheStart) {
  world->addins.ConnectOnDemand(kProgId);
  Calls();
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_EQ(Calls(), "");
}

TEST_F(AddinListTest, AClassThatIsNoAddInIsNotLoaded) {
  told.is_addin = false;
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_EQ(world->addins.Find(kProgId)->problem,
            "The add-in Test add-in cannot be loaded: it is not an add-in.");
  EXPECT_EQ(told.living, 0);
}

TEST_F(AddinListTest, AMissingClassIsAProblemOfItsAddInOnly) {
  constexpr char kOther[] =
      "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\ScrivoTest.Another";
  user_.SetValue(kOther, "LoadBehavior", std::int32_t{3}, kRegDword);
  world->addins.Read();
  world->addins.ConnectAtStart(kAtStartup);
  EXPECT_EQ(Calls(), "connect 1\nupdate\nstarted\n");
  EXPECT_EQ(world->addins.Find("ScrivoTest.Another")->problem,
            "The add-in ScrivoTest.Another cannot be loaded: its class is not registered for "
            "programs of this kind (32 or 64 bit).");
  user_.DeleteKey(kOther);
}

TEST_F(AddinListTest, AButtonLoadsTheAddInThatItsActionNames) {
  RegisterAddin(9);
  const auto button = world->bars.Find("Tools")->Add(kBarButton);
  button->on_action = "!<ScrivoTest.Addin>";
  world->Press(button);
  EXPECT_EQ(Calls(), "connect 0\nupdate\n");
  world->Press(button);
  EXPECT_EQ(Calls(), "");
  button->on_action = "!<Other.Addin>";
  world->Press(button);
}

}  // namespace
}  // namespace scrivo::host

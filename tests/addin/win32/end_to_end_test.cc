// The add-in in a host: connection, command bars, faults and references.

#include "tests/addin/win32/end_to_end.h"

#include "tests/compiler/leak_count.h"
#include "tests/host/win32/call_faults.h"

namespace scrivo {
namespace {

using Seen = std::vector<std::string>;

struct ExpectedButton {
  const char* caption;
  bool begin_group;
  std::int32_t face;
};
constexpr ExpectedButton kButtons[] = {
    {"Compile", false, 2138},
    {"Decompile", false, 2138},
    {"Scrivo Builder Sample Web", true, 23},
    {"Help", false, 983},
    {"Scrivo Builder Web site", true, 1445},
};

void ExpectPopup(const host::BarControl& popup) {
  EXPECT_EQ(popup.caption, "Scrivo");
  EXPECT_EQ(popup.type, host::kBarPopup);
  EXPECT_TRUE(popup.temporary);
  ASSERT_EQ(popup.bar->controls.size(), std::size(kButtons));
  for (std::size_t i = 0; i < std::size(kButtons); ++i) {
    const host::BarControl& button = *popup.bar->controls[i];
    EXPECT_EQ(button.type, host::kBarButton);
    EXPECT_EQ(button.id, 1);
    EXPECT_EQ(button.caption, kButtons[i].caption);
    EXPECT_EQ(button.begin_group, kButtons[i].begin_group) << button.caption;
    EXPECT_EQ(button.face, kButtons[i].face) << button.caption;
    EXPECT_EQ(button.on_action, "!<Kestrel.Connect>");
    EXPECT_FALSE(button.temporary);
    EXPECT_EQ(button.tag + button.parameter + button.description, "");
    EXPECT_EQ(button.style, 0);
  }
}

TEST_F(EndToEndTest, ConnectionPutsTheSamePopupOnTheToolsMenuAndTheStandardToolbar) {
  Connect();
  for (const char* bar : {"Tools", "Standard"}) {
    ASSERT_EQ(BarNamed(bar).controls.size(), 1u) << bar;
    ExpectPopup(*BarNamed(bar).controls[0]);
  }
  EXPECT_EQ(user.Seen(), Seen());
}

TEST_F(EndToEndTest, DisconnectionTakesThePopupFromTheMenuOnly) {
  Connect();
  Disconnect();
  EXPECT_TRUE(BarNamed("Tools").controls.empty());
  EXPECT_EQ(BarNamed("Standard").controls.size(), 1u);
}

TEST_F(EndToEndTest, ConnectingAgainAddsASecondPopupToTheToolbar) {
  Connect();
  Disconnect();
  Connect();
  EXPECT_EQ(BarNamed("Tools").controls.size(), 1u);
  EXPECT_EQ(BarNamed("Standard").controls.size(), 2u);
}

TEST_F(EndToEndTest, WithoutOneOfTheBarsTheOtherHasItsPopup) {
  for (const char* missing : {"Tools", "Standard"}) {
    const auto bars = world->bars.bars;
    std::erase(world->bars.bars, world->bars.Find(missing));
    Connect();
    const char* other = missing == std::string("Tools") ? "Standard" : "Tools";
    ASSERT_EQ(BarNamed(other).controls.size(), 1u);
    ExpectPopup(*BarNamed(other).controls[0]);
    Disconnect();
    world->bars.bars = bars;
    BarNamed("Standard").controls.clear();
  }
  EXPECT_EQ(user.Seen(), Seen());
}

TEST_F(EndToEndTest, AVisiblePopupLeftInTheMenuIsTakenForTheMenu) {
  const auto left_over = BarNamed("Tools").Add(host::kBarPopup);
  left_over->caption = "Scrivo";
  left_over->bar = std::make_shared<host::Bar>();
  Connect();
  EXPECT_EQ(BarNamed("Tools").controls.size(), 1u);
  EXPECT_TRUE(left_over->bar->controls.empty());
  ExpectPopup(*BarNamed("Standard").controls.at(0));
}

TEST_F(EndToEndTest, AHiddenPopupLeftInTheMenuGetsASecondOneBesideIt) {
  const auto left_over = BarNamed("Tools").Add(host::kBarPopup);
  left_over->caption = "Scrivo";
  left_over->bar = std::make_shared<host::Bar>();
  left_over->visible = false;
  Connect();
  ASSERT_EQ(BarNamed("Tools").controls.size(), 2u);
  ExpectPopup(*BarNamed("Tools").controls[1]);
}

TEST_F(EndToEndTest, AHostThatConnectsExternallyGetsTheCompileDialogAndNoButtons) {
  OpenWeb();
  Connect(host::kExternal);
  EXPECT_EQ(user.Seen(), Seen{"form: Scrivo - compile the open web"});
  EXPECT_TRUE(BarNamed("Tools").controls.empty());
  EXPECT_TRUE(BarNamed("Standard").controls.empty());
  Disconnect();
  EXPECT_EQ(user.Seen().size(), 1u);
}

TEST_F(EndToEndTest, ConnectingExternallyWithoutAWebTellsToOpenOne) {
  Connect(host::kExternal);
  EXPECT_EQ(user.Seen(), Seen{"message: Open site first"});
}

// The "Trace" setting of this user for as long as the object lives.
class TraceSetting {
 public:
  explicit TraceSetting(const std::string& value) {
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "Trace", REG_SZ, value.c_str(),
                    static_cast<DWORD>(value.size() + 1));
  }
  ~TraceSetting() { RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, "Trace"); }

 private:
  static constexpr const char* kKey = "Software\\VB and VBA Program Settings\\Scrivo\\Settings";
};

std::string TraceFile(HMODULE library) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(library, path, MAX_PATH);
  return std::filesystem::path(path).replace_extension(".trace").string();
}

TEST_F(EndToEndTest, ATraceSettingSwitchesTracingOnAndSaysWhere) {
  for (const char* value : {"1", "-1"}) {
    const TraceSetting setting(value);
    const std::size_t seen_before = user.Seen().size();
    Connect();
    const Seen seen = user.Seen();
    ASSERT_EQ(seen.size(), seen_before + 2) << value;
    EXPECT_EQ(seen[seen_before], "message: Trace enabled");
    EXPECT_EQ(seen[seen_before + 1], "message: " + TraceFile(library.module()));
    Press("Tools", "Compile");  // without a web; its procedure is traced
    Disconnect();
    EXPECT_TRUE(std::filesystem::remove(TraceFile(library.module()))) << value;
  }
}

TEST_F(EndToEndTest, ATraceSettingThatIsNoNumberIsSilent) {
  for (const char* value : {"abc", "0", ""}) {
    const TraceSetting setting(value);
    Connect();
    Press("Tools", "Compile");
    Disconnect();
    EXPECT_FALSE(std::filesystem::exists(TraceFile(library.module()))) << value;
  }
  EXPECT_EQ(user.Seen(), Seen(3, "message: Open site first"));
}

TEST_F(EndToEndTest, AThousandConnectionsLeaveNoReferenceToTheHost) {
  const long references = world->references;
  const std::size_t objects = world->objects.size();
  long long memory = 0;
  for (int i = 0; i < 1000; ++i) {
    if (i == 100) memory = UsedMemory();  // what is made once has been made
    Connect();
    Disconnect();
    ASSERT_EQ(world->references, references) << "after connection " << i + 1;
    ASSERT_EQ(world->objects.size(), objects);
    BarNamed("Standard").controls.clear();  // what the host does when it closes
  }
  EXPECT_LT(UsedMemory() - memory, MemorySlack(1));
  EXPECT_TRUE(library.CanUnload());
}

TEST_F(EndToEndTest, ConnectedAndDisconnectedTheObjectItselfHoldsTwoButtonsUntilItGoes) {
  ComPtr<IDispatch> connect;
  ASSERT_EQ(CoCreateInstance(ConnectClass(), nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                             connect.PutVoid()),
            S_OK);
  {
    const ComPtr<IDispatch> application = world->Application();
    const LateBound list = ObjectOf(LateBound(application).Get(L"COMAddIns"));
    const Variant instance = list.Get(L"Item", Variant::Text("Kestrel.Connect"));
    LateBound(connect).Call(L"AddinInstance_OnConnection", Variant::Object(application.get()),
                            Variant::Long(0), instance);
  }
  EXPECT_EQ(world->control_objects.size(), 10u) << "all ten buttons are held";
  LateBound(connect).Call(L"AddinInstance_OnDisconnection", Variant::Long(0));
  EXPECT_EQ(world->control_objects.size(), 2u) << "those for the home page stay";
  connect.Reset();
  EXPECT_TRUE(world->control_objects.empty());
}

TEST_F(EndToEndTest, AHostThatFailsEveryNthCallIsSurvivedInSilence) {
  host::CallFaults faults(*world);
  for (int n = 1; n <= 50; ++n) {
    faults.FailEvery(n);
    Connect();
    for (const char* bar : {"Tools", "Standard"}) {
      const auto button = Button(bar, "Scrivo Builder Sample Web");
      if (button) world->Press(button);
    }
    Disconnect();
    faults.FailEvery(0);
    ASSERT_EQ(world->references, 0) << "failing every call number " << n;
    BarNamed("Tools").controls.clear();
    BarNamed("Standard").controls.clear();
  }
  EXPECT_EQ(user.Seen(), Seen());
}

TEST_F(EndToEndTest, AHostThatFailsOneCallIsSurvivedWhicheverItIs) {
  host::CallFaults faults(*world);
  Connect();
  const long calls = faults.Calls();
  Disconnect();
  BarNamed("Standard").controls.clear();
  ASSERT_GT(calls, 50);
  for (long n = 1; n <= calls; ++n) {
    faults.FailOnly(n);
    Connect();
    for (const char* bar : {"Tools", "Standard"}) {
      // The buttons before the failure stay, whole.
      if (BarNamed(bar).controls.empty()) continue;
      const host::BarControl& popup = *BarNamed(bar).controls[0];
      for (std::size_t i = 0; popup.bar && i + 1 < popup.bar->controls.size(); ++i) {
        EXPECT_EQ(popup.bar->controls[i]->caption, kButtons[i].caption);
        EXPECT_EQ(popup.bar->controls[i]->face, kButtons[i].face);
      }
    }
    Disconnect();
    faults.FailEvery(0);
    ASSERT_EQ(world->references, 0) << "failing call number " << n;
    BarNamed("Tools").controls.clear();
    BarNamed("Standard").controls.clear();
  }
  EXPECT_EQ(user.Seen(), Seen());
}

}  // namespace
}  // namespace scrivo

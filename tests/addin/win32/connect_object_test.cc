#include "addin/win32/connect_object.h"

#include "com/win32/dispatch_call.h"
#include "tests/addin/addin_test.h"

namespace scrivo {
namespace {

// Counts its checks.
class CountingChecker : public VersionChecker {
 public:
  explicit CountingChecker(int& checks) : checks_(checks) {}

  void ProductName(const std::string&) override {}
  void Server(const std::string&) override {}
  std::string Result() override { return ""; }
  void Check() override { ++checks_; }

 private:
  int& checks_;
};

// A connected add-in, called by name as a macro of the host's would.
class ConnectObjectTest : public AddinTest {
 protected:
  ConnectObjectTest() {
    const auto make_checker = [this] { return std::make_shared<CountingChecker>(checks); };
    const auto connected = std::make_shared<Connect>(make_checker);
    connected->AddinInstance_OnConnection(host, 0, instance);
    object = LateBound(ComPtr<IDispatch>::Take(MakeObject<ConnectObject>(connected).Detach()));
  }

  // What the commands have done so far.
  std::string Done() {
    std::string done;
    const auto add = [&](const char* what, auto count) {
      for (auto i = count; i > 0; --i) done.append(what).append(" ");
    };
    add("compile", desktop->messages.size());  // no web is open, which it tells
    add("decompile", CountOf(views->decompile, "show"));
    add("help", desktop->help_calls.size());
    add("home", shell->requests.size());
    add("check", checks);
    add("sample", host->opened.size());
    add("hide compile", CountOf(views->main, "hide"));
    add("hide decompile", CountOf(views->decompile, "hide"));
    return done;
  }

  int checks = 0;
  LateBound object;
};

struct NamedOperation {
  const wchar_t* name;
  const char* done;
};

class Operations : public ConnectObjectTest, public testing::WithParamInterface<NamedOperation> {};

TEST_P(Operations, CalledByNameDoesWhatItIsFor) {
  object.Call(GetParam().name);
  EXPECT_EQ(Done(), GetParam().done);
}
INSTANTIATE_TEST_SUITE_P(All, Operations,
                         testing::Values(NamedOperation{L"HideKestrel", "hide compile "},
                                         NamedOperation{L"ShowKestrel", "compile "},
                                         NamedOperation{L"ShowDecompile", "decompile "},
                                         NamedOperation{L"HideDecompile", "hide decompile "},
                                         NamedOperation{L"ShowExample", "sample "}));

class ClickHandlers : public ConnectObjectTest,
                      public testing::WithParamInterface<NamedOperation> {};

TEST_P(ClickHandlers, CalledByNameRunTheCommandOfTheirButton) {
  object.Call(GetParam().name, Variant::Object(object.get()), Variant::Boolean(false));
  EXPECT_EQ(Done(), GetParam().done);
}
INSTANTIATE_TEST_SUITE_P(All, ClickHandlers,
                         testing::Values(NamedOperation{L"cbBtnKestrel_Click", "compile "},
                                         NamedOperation{L"cbBtnDecompile_Click", "decompile "},
                                         NamedOperation{L"cbBtnHelp_Click", "help "},
                                         NamedOperation{L"cbBtnHome_Click", "home "},
                                         NamedOperation{L"cbBtnCheckVersion_Click", "check "},
                                         NamedOperation{L"cbBtnOpenSample_Click", "sample "},
                                         NamedOperation{L"cbBtnPanelKestrel_Click", "compile "},
                                         NamedOperation{L"cbBtnPanelDecompile_Click", "decompile "},
                                         NamedOperation{L"cbBtnPanelHelp_Click", "help "},
                                         NamedOperation{L"cbBtnPanelHome_Click", "home "},
                                         NamedOperation{L"cbBtnPanelCheckVersion_Click", "check "},
                                         NamedOperation{L"cbBtnPanelOpenSample_Click", "sample "}));

TEST_F(ConnectObjectTest, AnotherObjectThatIsLetGoLeavesTheFormsOfTheConnectedOne) {
  frmMain::Load();
  frmDecompile::Load();
  LateBound other(
      ComPtr<IDispatch>::Take(MakeObject<ConnectObject>(std::make_shared<Connect>()).Detach()));
  other = LateBound();
  EXPECT_TRUE(frmMain::IsLoaded());
  EXPECT_TRUE(frmDecompile::IsLoaded());
  object = LateBound();
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_FALSE(frmDecompile::IsLoaded());
}

}  // namespace
}  // namespace scrivo

#include "tests/addin/addin_test.h"

namespace scrivo {
namespace {

class ConnectTest : public AddinTest {};

TEST_F(ConnectTest, ConnectionPublishesTheHostAndItself) {
  ConnectWith(0);
  EXPECT_EQ(Globals().HostApplication, host);
  EXPECT_EQ(Globals().ConnectInstance, connect.get());
  EXPECT_EQ(system->mutexes, std::vector<std::string>{"Scrivo"});
}

TEST_F(ConnectTest, AMutexThatCannotBeMadeIsSkipped) {
  class NoMutexes : public FakeSystem {
   public:
    void HoldMutex(const std::string&) override { throw Error(kPermissionDenied, "", "no mutex"); }
  };
  TheServices().system = std::make_shared<NoMutexes>();
  ConnectWith(0);
  EXPECT_EQ(Globals().HostApplication, host);
  EXPECT_EQ(ErrorHandler().ErrorHandlerActions(), 8);
  EXPECT_NE(Tools().Child("Scrivo"), nullptr);
  EXPECT_NE(Standard().Child("Scrivo"), nullptr);
}

TEST_F(ConnectTest, TheHostIsPublishedBeforeTheErrorHandlerIsConfigured) {
  // The host of an earlier connection is let go when the new one takes its place.
  std::int32_t actions_then = 0;
  Globals().HostApplication.reset(new FakeAddinHost, [&](FakeAddinHost* earlier) {
    actions_then = ErrorHandler().ErrorHandlerActions();
    delete earlier;
  });
  ConnectWith(0);
  EXPECT_EQ(actions_then, 2);
  EXPECT_EQ(ErrorHandler().ErrorHandlerActions(), 8);
}

TEST_F(ConnectTest, ConnectionConfiguresTheErrorHandler) {
  ConnectWith(1);
  EXPECT_EQ(ErrorHandler().ErrorHandlerActions(), 8);
  EXPECT_EQ(ErrorHandler().ErrorLogFile(), "Error Log.txt");
  EXPECT_TRUE(ErrorHandler().CallStackEnabled());
  EXPECT_FALSE(ErrorHandler().TracingEnabled());
  EXPECT_EQ(ErrorHandler().TracingFlags(), 2);
  EXPECT_EQ(ErrorHandler().TracingLogFile(), "Tracing Log.txt");
  EXPECT_EQ(ErrorHandler().SupportMail(), "support@scrivo.example");
}

TEST_F(ConnectTest, ErrorsAreShownInTheErrorDialog) {
  ConnectWith(0);
  views->error.on_show = [&] { views->error.events->ButtonClicked("RETRY"); };
  try {
    throw Error(kPathNotFound, "", "Path not found");
  } catch (...) {
    EXPECT_EQ(ErrorHandler().HandleError("Here"), ehrRetry);
  }
  EXPECT_NE(views->error.message.find("\tin Here at line 0"), std::string::npos);
}

TEST_F(ConnectTest, WithoutATraceSettingNothingIsTold) {
  ConnectWith(0);
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_FALSE(ErrorHandler().TracingEnabled());
}

TEST_F(ConnectTest, ATraceSettingOfZeroKeepsTracingOff) {
  SaveSetting("Scrivo", "Settings", "Trace", "0");
  ConnectWith(0);
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_FALSE(ErrorHandler().TracingEnabled());
}

class TracingSettings : public ConnectTest, public testing::WithParamInterface<const char*> {};

TEST_P(TracingSettings, AnyOtherIntegerSwitchesTracingOnAndSaysWhere) {
  SaveSetting("Scrivo", "Settings", "Trace", GetParam());
  ConnectWith(0);
  ASSERT_EQ(desktop->messages.size(), 2u);
  EXPECT_EQ(desktop->messages[0].text, "Trace enabled");
  EXPECT_EQ(desktop->messages[1].text, "C:\\Scrivo\\Scrivo.trace");
  for (const FakeDesktop::Shown& shown : desktop->messages) {
    EXPECT_EQ(shown.style, kOkOnly);
    EXPECT_EQ(shown.caption, "Scrivo");
  }
  EXPECT_TRUE(ErrorHandler().TracingEnabled());
  EXPECT_EQ(ErrorHandler().TracingFlags(), 2);
  EXPECT_EQ(ErrorHandler().TracingLogFile(), "C:\\Scrivo\\Scrivo.trace");
}
INSTANTIATE_TEST_SUITE_P(Integers, TracingSettings, testing::Values("1", "-1", "2", "1.0"));

TEST_F(ConnectTest, TracingIsToldBeforeItIsOn) {
  SaveSetting("Scrivo", "Settings", "Trace", "1");
  std::vector<bool> was_on;
  desktop->on_message = [&] { was_on.push_back(ErrorHandler().TracingEnabled()); };
  ConnectWith(0);
  EXPECT_EQ(was_on, (std::vector<bool>{false, true}));
}

TEST_F(ConnectTest, ATracingMessageThatCannotBeShownIsSkipped) {
  SaveSetting("Scrivo", "Settings", "Trace", "1");
  desktop->on_message = [&] {
    if (desktop->messages.size() == 1) throw Error(kOutOfMemory, "", "no box");
  };
  ConnectWith(0);
  EXPECT_TRUE(ErrorHandler().TracingEnabled());
  EXPECT_EQ(ErrorHandler().TracingFlags(), 2);
  ASSERT_EQ(desktop->messages.size(), 2u);
  EXPECT_EQ(desktop->messages[1].text, "C:\\Scrivo\\Scrivo.trace");
  EXPECT_NE(Tools().Child("Scrivo"), nullptr);
}

TEST_F(ConnectTest, TheNextConnectionSetsTheErrorHandlerUpAnew) {
  SaveSetting("Scrivo", "Settings", "Trace", "1");
  ConnectWith(0);
  connect->AddinInstance_OnDisconnection();
  ASSERT_TRUE(ErrorHandler().TracingEnabled());
  SaveSetting("Scrivo", "Settings", "Trace", "0");
  ConnectWith(0);
  EXPECT_FALSE(ErrorHandler().TracingEnabled());
  EXPECT_EQ(ErrorHandler().TracingLogFile(), "Tracing Log.txt");
  EXPECT_EQ(system->mutexes, (std::vector<std::string>{"Scrivo", "Scrivo"}));
}

TEST_F(ConnectTest, TracingIsToldBeforeAnyButtonIsMade) {
  SaveSetting("Scrivo", "Settings", "Trace", "1");
  desktop->on_message = [&] { EXPECT_TRUE(Tools().children.empty()); };
  ConnectWith(0);
  EXPECT_EQ(desktop->messages.size(), 2u);
  EXPECT_FALSE(Tools().children.empty());
}

class RoundedTracingSettings : public ConnectTest,
                               public testing::WithParamInterface<std::pair<const char*, bool>> {};

TEST_P(RoundedTracingSettings, ATextWithAFractionCountsAsTheNearestInteger) {
  SaveSetting("Scrivo", "Settings", "Trace", GetParam().first);
  ConnectWith(0);
  EXPECT_EQ(ErrorHandler().TracingEnabled(), GetParam().second);
}
INSTANTIATE_TEST_SUITE_P(Fractions, RoundedTracingSettings,
                         testing::Values(std::pair("0.4", false), std::pair("0.5", false),
                                         std::pair("0.6", true), std::pair("1.5", true)));

class ButtonModes : public ConnectTest, public testing::WithParamInterface<std::int32_t> {};

TEST_P(ButtonModes, EveryModeButTheExternalOneMakesTheButtons) {
  ConnectWith(GetParam());
  EXPECT_NE(Tools().Child("Scrivo"), nullptr);
  EXPECT_NE(Standard().Child("Scrivo"), nullptr);
  EXPECT_EQ(CountOf(views->main, "show"), 0);
}
INSTANTIATE_TEST_SUITE_P(Modes, ButtonModes, testing::Values(0, 1, 3, 4));

class BadTracingSettings : public ConnectTest, public testing::WithParamInterface<const char*> {};

TEST_P(BadTracingSettings, ATextThatIsNoIntegerLeavesTracingOffSilently) {
  SaveSetting("Scrivo", "Settings", "Trace", GetParam());
  ConnectWith(0);
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_FALSE(ErrorHandler().TracingEnabled());
  EXPECT_NE(Tools().Child("Scrivo"), nullptr) << "the steps behind it still run";
}
INSTANTIATE_TEST_SUITE_P(Texts, BadTracingSettings, testing::Values("abc", "yes", "99999999999"));

TEST_F(ConnectTest, ConnectedByAnotherProgramItShowsTheCompileDialogAndNoButtons) {
  host->web = site.Web();
  ConnectWith(2);
  EXPECT_EQ(CountOf(views->main, "show"), 1);
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_TRUE(Tools().children.empty());
  EXPECT_TRUE(Standard().children.empty());
  connect->AddinInstance_OnDisconnection();
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(ConnectTest, DisconnectionDeletesTheToolsPopupOnly) {
  ConnectWith(0);
  connect->AddinInstance_OnDisconnection();
  EXPECT_EQ(Tools().Child("Scrivo"), nullptr);
  EXPECT_NE(Standard().Child("Scrivo"), nullptr);
  EXPECT_EQ(Globals().HostApplication, nullptr);
  EXPECT_EQ(Globals().ConnectInstance, nullptr);
}

TEST_F(ConnectTest, DisconnectionReleasesEightButtonsAndKeepsFour) {
  ConnectWith(0);
  connect->AddinInstance_OnDisconnection();
  const Connect::ButtonReferences& buttons = connect->Buttons();
  EXPECT_EQ(buttons.cbBtnKestrel, nullptr);
  EXPECT_EQ(buttons.cbBtnDecompile, nullptr);
  EXPECT_EQ(buttons.cbBtnHelp, nullptr);
  EXPECT_EQ(buttons.cbBtnOpenSample, nullptr);
  EXPECT_EQ(buttons.cbBtnPanelKestrel, nullptr);
  EXPECT_EQ(buttons.cbBtnPanelDecompile, nullptr);
  EXPECT_EQ(buttons.cbBtnPanelHelp, nullptr);
  EXPECT_EQ(buttons.cbBtnPanelOpenSample, nullptr);
  EXPECT_NE(buttons.cbBtnHome, nullptr);
  EXPECT_NE(buttons.cbBtnPanelHome, nullptr);
  EXPECT_EQ(buttons.cbBtnCheckVersion, nullptr) << "there never was a button";
  EXPECT_EQ(buttons.cbBtnPanelCheckVersion, nullptr) << "there never was a button";
}

TEST_F(ConnectTest, DisconnectionUnloadsTheRunWindowAndTheCompileDialogButNotTheDecompileDialog) {
  ConnectWith(0);
  frmHHC::Load();
  frmMain::Load();
  frmDecompile::Load();
  connect->AddinInstance_OnDisconnection();
  EXPECT_FALSE(frmHHC::IsLoaded());
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_TRUE(frmDecompile::IsLoaded());
}

TEST_F(ConnectTest, DisconnectionUnloadsTheRunWindowFirst) {
  ConnectWith(0);
  frmHHC::Load();
  frmMain::Load();
  bool had_run_window = true;
  views->main.on_close = [&] { had_run_window = views->run.exists; };
  connect->AddinInstance_OnDisconnection();
  EXPECT_EQ(CountOf(views->main, "close"), 1);
  EXPECT_FALSE(had_run_window);
}

// The messages that a run lets through may bring a disconnection. Its window must outlive that,
// since the run still writes into it.
TEST_F(ConnectTest, DisconnectionInTheMiddleOfARunLeavesTheRunWindow) {
  ConnectWith(0);
  frmMain::Load();
  frmHHC::Load().Decompile(true);
  processes->outputs = {"one", "two"};
  processes->exit_code = 3;
  desktop->on_pass = [&] {
    if (!processes->requests.empty() && Globals().ConnectInstance) {
      connect->AddinInstance_OnDisconnection();
      EXPECT_TRUE(views->run.exists);
      EXPECT_FALSE(frmMain::IsLoaded());
    }
  };
  EXPECT_EQ(frmHHC::Load().Execute("C:\\out", "-decompile C:\\out C:\\a.chm"), 3);
  EXPECT_EQ(Globals().ConnectInstance, nullptr) << "it was disconnected";
  EXPECT_TRUE(frmHHC::IsLoaded());
  EXPECT_TRUE(views->run.transcript.ends_with("onetwo\r\nDone!"));
  EXPECT_TRUE(views->run.may_close);
}

TEST_F(ConnectTest, TheHostIsLetGoBeforeTheRunWindowWhichThusRefreshesNothing) {
  host->web = site.Web();
  ConnectWith(0);
  frmHHC::Load();
  int asked = 0;
  host->on_current_web = [&] { ++asked; };
  connect->AddinInstance_OnDisconnection();
  EXPECT_FALSE(frmHHC::IsLoaded());
  EXPECT_EQ(asked, 0);
}

TEST_F(ConnectTest, ReconnectingLeavesTwoPopupsOnTheToolbarAndOneInTheMenu) {
  ConnectWith(0);
  connect->AddinInstance_OnDisconnection();
  ConnectWith(0);
  const auto living = [](const FakeControl& bar) {
    return std::count_if(bar.children.begin(), bar.children.end(),
                         [](const auto& child) { return !child->deleted; });
  };
  EXPECT_EQ(living(Standard()), 2);
  EXPECT_EQ(living(Tools()), 1);
}

TEST_F(ConnectTest, AThousandConnectionsLeaveNoReferenceToTheHost) {
  for (int i = 0; i < 1000; ++i) {
    ConnectWith(0);
    connect->AddinInstance_OnDisconnection();
  }
  EXPECT_EQ(host->live_references, 2) << "the two buttons that stay until the object goes";
  connect.reset();
  EXPECT_EQ(host->live_references, 0);
}

TEST_F(ConnectTest, AHostThatFailsEveryNthCallIsSurvivedInSilence) {
  for (int n = 1; n <= 50; ++n) {
    host->fail_every = n;
    host->calls = 0;
    ConnectWith(0);
    for (FakeControl* bar : {&Tools(), &Standard()}) {
      if (FakeControl* popup = bar->Child("Scrivo")) {
        for (const auto& button : popup->children) button->Click();
      }
    }
    connect->AddinInstance_OnDisconnection();
  }
  connect.reset();
  EXPECT_EQ(host->live_references, 0);
  for (const FakeDesktop::Shown& shown : desktop->messages) {
    EXPECT_EQ(shown.text, "Open site first");
  }
}

TEST_F(ConnectTest, AHostThatGivesNoObjectEveryNthTimeIsSurvivedInSilence) {
  host->missing_is_null = true;
  host->web = site.Web();
  for (int n = 1; n <= 50; ++n) {
    host->null_every = n;
    host->objects = 0;
    ConnectWith(0);
    for (FakeControl* bar : {&Tools(), &Standard()}) {
      if (FakeControl* popup = bar->Child("Scrivo")) {
        for (const auto& button : popup->children) button->Click();
      }
    }
    connect->AddinInstance_OnDisconnection();
  }
  connect.reset();
  EXPECT_EQ(host->live_references, 0);
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(ConnectTest, WithoutAnInstanceObjectNoPopupIsMade) {
  instance = nullptr;
  ConnectWith(0);
  EXPECT_EQ(Globals().HostApplication, host);
  EXPECT_TRUE(Tools().children.empty());
}

}  // namespace
}  // namespace scrivo

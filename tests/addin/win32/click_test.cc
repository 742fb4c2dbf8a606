// A button's clicks, from the host's connection point to the handler.

#include <gtest/gtest.h>

#include "addin/win32/click_connection.h"
#include "addin/win32/com_host.h"
#include "com/win32/dispatch_object.h"
#include "system/error.h"
#include "tests/addin/win32/scripted_events.h"

namespace scrivo {
namespace {

constexpr DISPID kClick = 1;

class ClickTest : public testing::Test {
 protected:
  ClickTest() { button->other = Unknown(events); }
  ~ClickTest() override {
    control.reset();
    EXPECT_TRUE(events->sinks.empty());
    button.Reset();
    events.Reset();
    EXPECT_EQ(ScriptedObject::Living(), 0);
    EXPECT_EQ(ScriptedEvents::Living(), 0);
    EXPECT_EQ(DispatchObject::LiveObjects(), 0) << "the sinks are released";
  }

  void Listen() {
    control = std::make_shared<ComControl>(Called(button), listener);
    control->OnClick([this](CommandBarControl& Ctrl, bool& CancelDefault) {
      ++clicks;
      was_cancelled = CancelDefault;
      if (reads_caption) Ctrl.Visible();
      if (during_click) during_click();
      CancelDefault = cancels;
    });
  }
  // The host sends Click(Ctrl, CancelDefault).
  HRESULT Click(VARIANT ctrl, VARIANT cancel) {
    VARIANT last_first[] = {cancel, ctrl};
    DISPPARAMS arguments{last_first, nullptr, 2, 0};
    return events->Send(kClick, &arguments);
  }
  VARIANT Ctrl() const {
    VARIANT ctrl{};
    ctrl.vt = VT_DISPATCH;
    ctrl.pdispVal = button.get();
    return ctrl;
  }
  VARIANT Cancel() {
    VARIANT argument{};
    argument.vt = VT_BYREF | VT_BOOL;
    argument.pboolVal = &cancel_flag;
    return argument;
  }

  ComPtr<ScriptedObject> button = ScriptedObject::Make();
  ComPtr<ScriptedEvents> events = ScriptedEvents::Make();
  std::shared_ptr<int> listener = std::make_shared<int>();
  std::shared_ptr<ComControl> control;
  std::function<void()> during_click;
  VARIANT_BOOL cancel_flag = VARIANT_FALSE;
  int clicks = 0;
  bool was_cancelled = false;
  bool cancels = false;
  bool reads_caption = false;
};

TEST_F(ClickTest, AClickReachesItsHandlerWithTheClickedControl) {
  int reads = 0;
  button->On(L"Visible", [&](ScriptedCall& call) {
    ++reads;
    *call.result = PlainVariant(VT_BOOL);
    return S_OK;
  });
  reads_caption = true;
  Listen();
  EXPECT_EQ(Click(Ctrl(), Cancel()), S_OK);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(reads, 1);
}

TEST_F(ClickTest, TheControlMayComeInEveryKindOfReference) {
  Listen();
  IDispatch* dispatch = button.get();
  IUnknown* unknown = button.get();
  VARIANT inner = Ctrl();
  VARIANT forms[4] = {};
  forms[0].vt = VT_UNKNOWN;
  forms[0].punkVal = unknown;
  forms[1].vt = VT_BYREF | VT_DISPATCH;
  forms[1].ppdispVal = &dispatch;
  forms[2].vt = VT_BYREF | VT_UNKNOWN;
  forms[2].ppunkVal = &unknown;
  forms[3].vt = VT_BYREF | VT_VARIANT;
  forms[3].pvarVal = &inner;
  for (const VARIANT& form : forms) EXPECT_EQ(Click(form, Cancel()), S_OK) << form.vt;
  EXPECT_EQ(clicks, 4);
}

TEST_F(ClickTest, TheCancelFlagIsLeftAsItIs) {
  Listen();
  Click(Ctrl(), Cancel());
  EXPECT_EQ(cancel_flag, VARIANT_FALSE);
  EXPECT_FALSE(was_cancelled);
  cancels = true;
  cancel_flag = VARIANT_TRUE;
  Click(Ctrl(), Cancel());
  EXPECT_EQ(cancel_flag, VARIANT_TRUE);
  EXPECT_TRUE(was_cancelled);
}

TEST_F(ClickTest, AHandlerCanSetTheCancelFlag) {
  cancels = true;
  Listen();
  Click(Ctrl(), Cancel());
  EXPECT_EQ(cancel_flag, VARIANT_TRUE);
}

TEST_F(ClickTest, TheCancelFlagMayBeAVariant) {
  Listen();
  VARIANT flag = PlainVariant(VT_BOOL, -1);
  VARIANT argument{};
  argument.vt = VT_BYREF | VT_VARIANT;
  argument.pvarVal = &flag;
  cancels = true;
  EXPECT_EQ(Click(Ctrl(), argument), S_OK);
  EXPECT_TRUE(was_cancelled);
  EXPECT_EQ(flag.vt, VT_BOOL);
  EXPECT_EQ(flag.boolVal, VARIANT_TRUE);

  flag = PlainVariant(VT_EMPTY);
  EXPECT_EQ(Click(Ctrl(), argument), S_OK);
  EXPECT_FALSE(was_cancelled);
  EXPECT_EQ(flag.vt, VT_BOOL);
  EXPECT_EQ(flag.boolVal, VARIANT_TRUE);
}

TEST_F(ClickTest, ACancelFlagByValueCannotBeSetAndLosesNoClick) {
  cancels = true;
  Listen();
  EXPECT_EQ(Click(Ctrl(), PlainVariant(VT_BOOL)), S_OK);
  EXPECT_EQ(clicks, 1);
}

TEST_F(ClickTest, WhatIsNoClickIsRefused) {
  Listen();
  VARIANT last_first[] = {Cancel(), Ctrl()};
  DISPPARAMS both{last_first, nullptr, 2, 0};
  DISPPARAMS one{last_first, nullptr, 1, 0};
  EXPECT_EQ(events->Send(2, &both), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(events->Send(kClick, &one), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(events->Send(kClick, nullptr), DISP_E_BADPARAMCOUNT);
  EXPECT_TRUE(FAILED(Click(PlainVariant(VT_I4, 5), Cancel()))) << "a number is no control";
  EXPECT_EQ(clicks, 0);
}

TEST_F(ClickTest, TheReferenceToTheButtonKeepsItsClicksComing) {
  Listen();
  EXPECT_EQ(events->sinks.size(), 1u);
  control.reset();
  EXPECT_TRUE(events->sinks.empty());
}

TEST_F(ClickTest, OneButtonMayHaveSeveralListeners) {
  Listen();
  const std::shared_ptr<ComControl> first = control;
  Listen();
  Click(Ctrl(), Cancel());
  EXPECT_EQ(clicks, 2);
}

TEST_F(ClickTest, ASinkThatTheHostKeepsForTooLongCallsNobody) {
  Listen();
  ComPtr<IDispatch> kept = events->sinks.begin()->second;
  control.reset();
  VARIANT last_first[] = {Cancel(), Ctrl()};
  DISPPARAMS arguments{last_first, nullptr, 2, 0};
  EXPECT_EQ(
      kept->Invoke(kClick, IID_NULL, 0, DISPATCH_METHOD, &arguments, nullptr, nullptr, nullptr),
      S_OK);
  EXPECT_EQ(clicks, 0);
}

TEST_F(ClickTest, ADisconnectionDuringAClickIsSurvived) {
  Listen();
  during_click = [this] {
    control.reset();
    listener.reset();
  };
  EXPECT_EQ(Click(Ctrl(), Cancel()), S_OK);
  EXPECT_EQ(clicks, 1);
}

TEST_F(ClickTest, WhoeverListensIsKeptAliveDuringAClick) {
  Listen();
  std::weak_ptr<int> watched = listener;
  during_click = [&] {
    listener.reset();
    EXPECT_FALSE(watched.expired());
  };
  Click(Ctrl(), Cancel());
  EXPECT_TRUE(watched.expired());
}

TEST_F(ClickTest, NoExceptionGoesBackToTheHost) {
  Listen();
  during_click = [] { throw Error(kInternalError, "", "Internal error"); };
  EXPECT_EQ(Click(Ctrl(), Cancel()), E_UNEXPECTED);
}

TEST_F(ClickTest, AButtonWithoutEventsIsAnError) {
  const auto listen = [&] { ClickConnection(Called(button), {}, listener); };
  events->advise_result = CONNECT_E_CANNOTCONNECT;
  EXPECT_THROW(listen(), Error);
  events->find_result = CONNECT_E_NOCONNECTION;
  EXPECT_THROW(listen(), Error);
  button->other.Reset();
  EXPECT_THROW(listen(), Error);
  EXPECT_THROW(ClickConnection(LateBound(), {}, listener), Error);
}

}  // namespace
}  // namespace scrivo

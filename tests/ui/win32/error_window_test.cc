#include "ui/win32/error_window.h"

#include <gtest/gtest.h>

#include "tests/doubles/real_services.h"
#include "tests/ui/win32/live_window.h"

namespace scrivo {
namespace {

class ErrorListener : public ErrorViewEvents {
 public:
  void Activated() override { ++activations; }
  void ButtonClicked(const std::string& key) override { clicked.push_back(key); }

  int activations = 0;
  std::vector<std::string> clicked;
};

class ErrorWindowTest : public WithRealServices {
 protected:
  ButtonStrip strip{{{.key = "SPACER"},
                     {.key = "ABORT", .caption = "Abort"},
                     {.key = "MAIL", .caption = "Send to support"}}};
  ErrorListener listener;
  ErrorWindow window{strip, listener};
};

TEST_F(ErrorWindowTest, ShowsTitleAndReport) {
  window.SetTitle("An error occurred in Scrivo");
  window.SetMessage("one\r\n\ttwo");
  EXPECT_EQ(window.Message(), "one\r\n\ttwo");
  // The icon comes first.
  EXPECT_EQ(TextOf(ControlsOf(window.Handle(), "STATIC").at(1)), "An error occurred in Scrivo");
}

TEST_F(ErrorWindowTest, AReportLongerThanTheControlsUsualLimitIsKeptWhole) {
  const std::string report(100000, 'x');
  window.SetMessage(report);
  EXPECT_EQ(window.Message(), report);
}

TEST_F(ErrorWindowTest, IsActivatedWhenShownAndHearsItsButtons) {
  OnceShown([&] {
    SendMessageA(ButtonOf(window.Handle(), "Abort"), BM_CLICK, 0, 0);
    window.Hide();
  });
  window.ShowModal();
  EXPECT_EQ(listener.activations, 1);
  EXPECT_EQ(listener.clicked, std::vector<std::string>{"ABORT"});
}

TEST_F(ErrorWindowTest, ARemovedButtonIsGone) {
  EXPECT_NE(ButtonOf(window.Handle(), "Send to support"), nullptr);
  strip.Remove("MAIL");
  window.ShowButtons();
  EXPECT_EQ(ButtonOf(window.Handle(), "Send to support"), nullptr);
  EXPECT_NE(ButtonOf(window.Handle(), "Abort"), nullptr);
}

TEST_F(ErrorWindowTest, ClosingItOtherwisePressesNoButton) {
  OnceShown([&] { SendMessageA(window.Handle(), WM_CLOSE, 0, 0); });
  window.ShowModal();
  OnceShown([&] { PostMessageA(window.Handle(), WM_KEYDOWN, VK_ESCAPE, 0); });
  window.ShowModal();
  EXPECT_TRUE(listener.clicked.empty());
}

}  // namespace
}  // namespace scrivo

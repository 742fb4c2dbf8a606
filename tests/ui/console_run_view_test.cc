#include "ui/console/console_run_view.h"

#include <gtest/gtest.h>

#include <sstream>

namespace scrivo {
namespace {

class ConsoleRunViewTest : public testing::Test {
 protected:
  ConsoleRunViewTest() : console(out, err, Options()), view(console, "Compiling") {}
  static ConsoleOptions Options() {
    ConsoleOptions options;
    options.live = true;
    options.columns = 60;
    options.clock = [] { return 0.0; };
    return options;
  }
  // The status line as it was last written.
  std::string Status() {
    const std::string text = err.str();
    std::string line = text.substr(text.rfind('\r') + 1);
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
  }

  std::ostringstream out, err;
  Console console;
  ConsoleRunView view;
};

TEST_F(ConsoleRunViewTest, ShowsTheStepOnceItIsShown) {
  view.SetProgress("", 0);
  EXPECT_EQ(err.str(), "");
  view.ShowModeless();
  EXPECT_EQ(Status(), "Compiling  0:00");
}

TEST_F(ConsoleRunViewTest, ShowsPercentageAndTheLastCompleteLine) {
  view.ShowModeless();
  view.SetProgress("5 %", 5);
  view.ReplaceTranscript("Starting\r\n");
  EXPECT_EQ(Status(), "  5 %  Compiling  0:00");
  view.AppendTranscript("first.htm\r\nsec");
  EXPECT_EQ(Status(), "  5 %  Compiling  first.htm  0:00");
  view.AppendTranscript("ond.htm\r");
  view.AppendTranscript("\n\r\n");
  view.SetProgress("12 %", 12);
  EXPECT_EQ(Status(), " 12 %  Compiling  second.htm  0:00");
}

TEST_F(ConsoleRunViewTest, ForgetsTheLinesOfAnEarlierRun) {
  view.ShowModeless();
  view.AppendTranscript("old.htm\nhalf");
  view.ReplaceTranscript("");
  view.AppendTranscript("new.htm\n");
  EXPECT_EQ(Status(), "Compiling  new.htm  0:00");
}

TEST_F(ConsoleRunViewTest, BearsALineWithoutEnd) {
  view.ShowModeless();
  for (int i = 0; i < 1000; ++i) view.AppendTranscript(std::string(100, 'x'));
  view.AppendTranscript("\n");
  EXPECT_EQ(Status(), "Compiling  xxxxxxxxxxxxxxxxxxx...xxxxxxxxxxxxxxxxxxxx  0:00");
}

TEST_F(ConsoleRunViewTest, TakesTheStatusLineAwayAtTheEnd) {
  view.ShowBusy(true);
  view.ShowModeless();
  view.ShowBusy(false);
  EXPECT_EQ(Status(), "");
}

TEST_F(ConsoleRunViewTest, GivesEachCompleteLineToWhoeverWantsIt) {
  std::vector<std::string> lines;
  ConsoleViews views(console, "Unpacking", [&](const std::string& line) { lines.push_back(line); });
  const std::unique_ptr<RunView> listened = views.MakeRunView();
  listened->ReplaceTranscript("the frame's own line\r\n");
  listened->AppendTranscript("one\r\n\r\ntw");
  listened->AppendTranscript("o\nrest");
  EXPECT_EQ(lines, (std::vector<std::string>{"one", "two"}));
}

TEST_F(ConsoleRunViewTest, IsMadeByTheFactory) {
  ConsoleViews views(console, "Unpacking");
  views.MakeRunView()->ShowModeless();
  EXPECT_EQ(Status(), "Unpacking  0:00");
}

}  // namespace
}  // namespace scrivo

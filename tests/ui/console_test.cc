#include "ui/console/console.h"

#include <gtest/gtest.h>

#include <sstream>

namespace scrivo {
namespace {

class ConsoleTest : public testing::Test {
 protected:
  Console Make(bool live, bool quiet = false, int columns = 40) {
    ConsoleOptions options;
    options.live = live;
    options.quiet = quiet;
    options.columns = columns;
    options.clock = [this] { return now; };
    return Console(out, err, options);
  }
  // What has been written to the error stream since the last call.
  std::string TakeError() {
    std::string text = err.str();
    err.str("");
    return text;
  }

  std::ostringstream out, err;
  double now = 1000;
};

TEST_F(ConsoleTest, PrintsStepsAsPlainLinesWhereNobodyLooks) {
  Console console = Make(false);
  console.BeginStep("Reading");
  console.ShowProgress("5 %", "a.htm");
  console.BeginStep("Compiling");
  console.EndSteps();
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(err.str(), "Reading\nCompiling\n");
}

TEST_F(ConsoleTest, PrintsOnlyResultsAndErrorsWhenQuiet) {
  Console console = Make(true, true);
  console.BeginStep("Compiling");
  console.ShowProgress("5 %", "");
  console.Note("done");
  console.Warn("careful");
  console.Print("result");
  console.Fail("broken");
  EXPECT_EQ(out.str(), "result\n");
  EXPECT_EQ(err.str(), "scrivo: error: broken\n");
}

TEST_F(ConsoleTest, RemarksOnThePlainErrorStreamUnlessQuiet) {
  Make(false).Remark("by the way");
  EXPECT_EQ(err.str(), "by the way\n");
  Make(false, true).Remark("unheard");
  EXPECT_EQ(out.str() + err.str(), "by the way\n");
}

TEST_F(ConsoleTest, LosesAResultButNotANoteToAStreamThatTakesNothing) {
  class FullDevice : public std::streambuf {};
  FullDevice device;
  std::ostream full(&device);
  ConsoleOptions options;
  options.clock = [] { return 0.0; };
  Console console(full, err, options);
  console.Note("made");
  EXPECT_TRUE(full.good());
  console.Print("result");
  EXPECT_FALSE(full.good());
  console.Note("made");
  EXPECT_FALSE(full.good()) << "what was lost before stays lost";
}

TEST_F(ConsoleTest, SaysNothingOfStepsWhenQuietWhereNobodyLooks) {
  Console console = Make(false, true);
  console.BeginStep("Compiling");
  EXPECT_EQ(out.str() + err.str(), "");
}

TEST_F(ConsoleTest, KeepsOneStatusLineWithStepPercentageDetailAndTime) {
  Console console = Make(true);
  console.BeginStep("Compiling");
  EXPECT_EQ(TakeError(), "\rCompiling  0:00");
  now += 83;
  console.ShowProgress("37 %", "a.htm");
  EXPECT_EQ(TakeError(), "\r 37 %  Compiling  a.htm  1:23");
  EXPECT_EQ(out.str(), "");
}

TEST_F(ConsoleTest, CoversTheRestOfALongerStatusLine) {
  Console console = Make(true);
  console.BeginStep("Compiling");
  console.ShowProgress("", "abcdef");
  TakeError();
  console.ShowProgress("", "ab");
  EXPECT_EQ(TakeError(), "\rCompiling  ab  0:00    ");
}

TEST_F(ConsoleTest, WritesNothingWhenTheStatusLineWouldNotChange) {
  Console console = Make(true);
  console.BeginStep("Compiling");
  console.ShowProgress("5 %", "a");
  TakeError();
  now += 0.4;
  console.ShowProgress("5 %", "a");
  EXPECT_EQ(TakeError(), "");
}

TEST_F(ConsoleTest, PutsOtherLinesAboveTheStatusLine) {
  Console console = Make(true);
  console.BeginStep("Step");
  TakeError();
  console.Warn("x");
  EXPECT_EQ(TakeError(), "\r          \rscrivo: warning: x\n\rStep  0:00");
  console.Note("y");
  EXPECT_EQ(TakeError(), "\r          \r\rStep  0:00");
  EXPECT_EQ(out.str(), "y\n");
}

TEST_F(ConsoleTest, LeavesNoStatusLineBehind) {
  {
    Console console = Make(true);
    console.BeginStep("Step");
    console.EndSteps();
    EXPECT_EQ(TakeError(), "\rStep  0:00\r          \r");
    console.Note("y");
    EXPECT_EQ(TakeError(), "");
    console.BeginStep("Step");
    TakeError();
  }
  EXPECT_EQ(TakeError(), "\r          \r");
}

TEST_F(ConsoleTest, ShortensAStatusLineThatIsTooLongForTheTerminal) {
  Console console = Make(true, false, 30);
  console.BeginStep("Compiling");
  TakeError();
  console.ShowProgress("", "some/very/long/folder/page.htm");
  const std::string line = TakeError();
  EXPECT_EQ(line, "\rCompiling  some...e.htm  0:00");
  EXPECT_EQ(line.size() - 1, 29u);
}

TEST_F(ConsoleTest, KeepsControlCharactersOutOfTheStatusLine) {
  Console console = Make(true);
  console.BeginStep("Step");
  TakeError();
  console.ShowProgress("", "a\tb\x1B[2Jc");
  EXPECT_EQ(TakeError(), "\rStep  a b\\x1B[2Jc  0:00");
}

TEST_F(ConsoleTest, ContinuesATextOfSeveralLinesIndented) {
  Console console = Make(false);
  console.Fail("first\r\nsecond\nthird");
  EXPECT_EQ(err.str(), "scrivo: error: first\n  second\n  third\n");
}

TEST(ShortenInTheMiddle, KeepsWhatFits) {
  EXPECT_EQ(ShortenInTheMiddle("abcdefghij", 10), "abcdefghij");
  EXPECT_EQ(ShortenInTheMiddle("", 0), "");
}

TEST(ShortenInTheMiddle, KeepsBothEnds) {
  EXPECT_EQ(ShortenInTheMiddle("abcdefghij", 9), "abc...hij");
  EXPECT_EQ(ShortenInTheMiddle("abcdefghij", 8), "ab...hij");
  EXPECT_EQ(ShortenInTheMiddle("abcdefghij", 3), "...");
  EXPECT_EQ(ShortenInTheMiddle("abcdefghij", 1), ".");
  EXPECT_EQ(ShortenInTheMiddle("abcdefghij", 0), "");
}

TEST(ShortenInTheMiddle, CountsCharactersAndCutsNone) {
  EXPECT_EQ(ShortenInTheMiddle("ääää", 4), "ääää");
  EXPECT_EQ(ShortenInTheMiddle("ääääbbbb", 7), "ää...bb");
}

TEST(DurationText, TellsMinutesAndHours) {
  EXPECT_EQ(DurationText(0), "0:00");
  EXPECT_EQ(DurationText(9.9), "0:09");
  EXPECT_EQ(DurationText(60), "1:00");
  EXPECT_EQ(DurationText(3599), "59:59");
  EXPECT_EQ(DurationText(3723), "1:02:03");
}

}  // namespace
}  // namespace scrivo

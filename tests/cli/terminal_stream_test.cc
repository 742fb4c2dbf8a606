#include "cli/terminal_stream.h"

#include <gtest/gtest.h>

#include <sstream>

#include "text/code_page.h"

namespace scrivo {
namespace {

TEST(TerminalStream, HandsOnWholeLines) {
  std::ostringstream target;
  TerminalStream stream(target, kUtf8CodePage);
  stream << "first\nsec";
  EXPECT_EQ(target.str(), "first\n");
  stream << "ond" << std::flush;
  EXPECT_EQ(target.str(), "first\nsecond");
}

TEST(TerminalStream, ShowsControlCharactersWhoeverPrintsThem) {
  std::ostringstream target;
  TerminalStream(target, kUtf8CodePage) << "a\x1B[2J\rb\u009B\tc\n";
  EXPECT_EQ(target.str(), "a\\x1B[2J\\x0Db\\xC2\\x9B\tc\n");
}

TEST(TerminalStream, LetsALineBeWrittenAgainWhereSomebodyLooks) {
  std::ostringstream target;
  TerminalStream(target, kUtf8CodePage, true) << "\rstep\x1B" << std::flush;
  EXPECT_EQ(target.str(), "\rstep\\x1B");
}

TEST(TerminalStream, PrintsInTheCodePage) {
  std::ostringstream target;
  TerminalStream(target, 1252) << "caf\u00E9\n";
  EXPECT_EQ(target.str(), "caf\xE9\n");
}

TEST(TerminalStream, KeepsTheBytesOfANameInUtf8) {
  std::ostringstream target;
  TerminalStream(target, kUtf8CodePage) << "caf\xE9\n";
  EXPECT_EQ(target.str(), "caf\xE9\n");
}

TEST(TerminalStream, TellsThatItsTargetFails) {
  std::ostringstream target;
  target.setstate(std::ios::badbit);
  TerminalStream stream(target, kUtf8CodePage);
  stream << "a line\n" << std::flush;
  EXPECT_FALSE(stream.good());
  // What nobody missed may be forgotten, and the next line is a new attempt.
  stream.clear();
  stream << "another\n" << std::flush;
  EXPECT_TRUE(stream.good());
  EXPECT_EQ(target.str(), "another\n");
}

}  // namespace
}  // namespace scrivo

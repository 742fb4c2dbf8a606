#include "cli/chmcmd_messages.h"

#include <gtest/gtest.h>

#include "compiler/message_scan.h"

namespace scrivo {
namespace {

TEST(ChmcmdMessages, GivesWarningsAndErrorsACode) {
  EXPECT_EQ(AsCompilerMessage("Warning: Found file a.png while scanning b.htm"),
            "HHC3001: Warning: Found file a.png while scanning b.htm");
  EXPECT_EQ(AsCompilerMessage("Error: no such option"), "HHC5001: Error: no such option");
}

TEST(ChmcmdMessages, TakesAnUndefinedAnchorForAWarning) {
  EXPECT_EQ(AsCompilerMessage("Error: Anchor a.htm#b undefined; first use c.htm"),
            "HHC3002: Warning: Anchor a.htm#b undefined; first use c.htm");
}

TEST(ChmcmdMessages, TellsWhyItCrashedAndLeavesTheRestOut) {
  EXPECT_EQ(AsCompilerMessage("An unhandled exception occurred at $0000000000416AC9:"), "");
  EXPECT_EQ(AsCompilerMessage("EFOpenError: Unable to open file \"/a/b.htm\""),
            "HHC7000: Error: chmcmd failed: Unable to open file \"/a/b.htm\"");
  EXPECT_EQ(AsCompilerMessage("  $0000000000416AC9"), "");
}

TEST(ChmcmdMessages, KeepsOtherLinesAsTheyAre) {
  for (const char* line : {"Writing CHM /a.chm", "Note: CHM has binary toc", "",
                           "Ends: with a colon", "E: x", "Every word: counts", "EMPTY"}) {
    EXPECT_EQ(AsCompilerMessage(line), line);
  }
  EXPECT_EQ(AsCompilerMessage("chmcmd, a CHM compiler. (c) 2010-2019 Free Pascal core."), "");
}

TEST(ChmcmdMessages, AreFoundByTheRunWindow) {
  EXPECT_EQ(ScanForMessages(AsCompilerMessage("Warning: a") + "\r\n"),
            std::vector<std::string>{"Warning: a"});
  EXPECT_TRUE(ScanForMessages(AsCompilerMessage("Note: a")).empty());
}

}  // namespace
}  // namespace scrivo

// Names and titles in UTF-8, as a POSIX system hands them over.

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class OtherLetters : public ScrivoRun {};

TEST_F(OtherLetters, CompilesAWebWhoseNamesHoldBlanksQuotesAndOtherLetters) {
  web.Write("s p a c e/it's \u00fc\u043f.htm", "<title>Page</title>");
  EXPECT_EQ(CompileWithFake("make and show the project\n" + output.PathOf("project.txt"),
                            {"-o", output.PathOf("it's m\u00fc\u043f file.chm")}),
            0)
      << err;
  EXPECT_NE(output.Read("project.txt").find("s p a c e/it's \u00fc\u043f.htm"), std::string::npos);
  EXPECT_TRUE(output.Has("it's m\u00fc\u043f file.chm"));
}

TEST_F(OtherLetters, RefusesATitleThatTheCodePageCannotHold) {
  EXPECT_EQ(Compile({"--title", "\u043f"}), 1);
  EXPECT_NE(err.find("contains characters that the code page of the help file lacks"),
            std::string::npos)
      << err;
  EXPECT_EQ(Compile({"--title", "\u043f", "--code-page", "1251"}), 0) << err;
}

}  // namespace
}  // namespace scrivo

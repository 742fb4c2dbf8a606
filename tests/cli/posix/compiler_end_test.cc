// What becomes of a compiler that crashes or does not end, where its end can be looked at.

#include <sys/wait.h>

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class CompilerEnd : public ScrivoRun {};

TEST_F(CompilerEnd, LeavesNoCompilerRunningThatCouldWriteOverTheEarlierFile) {
  while (waitpid(-1, nullptr, 0) > 0) {  // children of earlier tests, which are about to end
  }
  output.Write("a.chm", "ITSF old");
  EXPECT_EQ(CompileWithFake("live on"), 1);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "the compiler is still running";
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_NE(Plain(err).find("HHC: closed its output without exiting and was terminated. "),
            std::string::npos)
      << err;
}

TEST_F(CompilerEnd, SaysThatTheCompilerCrashed) {
  EXPECT_EQ(CompileWithFake("crash"), 1);
  EXPECT_NE(
      Plain(err).find("HHC: crashed (exit status 134); the help file that it made is incomplete. "),
      std::string::npos)
      << err;
  EXPECT_EQ(CompileWithFake("crash at once"), 1);
  EXPECT_NE(Plain(err).find("HHC: crashed (exit status 139). To "
                            "see why, keep the project with --keep-project and run the compiler on "
                            "it.\n"),
            std::string::npos)
      << err;
}

}  // namespace
}  // namespace scrivo

// Ctrl-C in the middle of a compile, to the real program.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

// Starts a program with its output thrown away.
pid_t Start(std::vector<std::string> words) {
  const pid_t process = fork();
  if (process != 0) return process;
  // Whoever started the tests may ignore signals.
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) signal(signal_number, SIG_DFL);
  const int nowhere = open("/dev/null", O_RDWR);
  for (int stream = 0; stream < 3; ++stream) dup2(nowhere, stream);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  _exit(126);
}

std::ptrdiff_t FilesIn(const TestFolder& folder) {
  return std::distance(std::filesystem::directory_iterator(folder.path()), {});
}

class InterruptedCompile : public testing::TestWithParam<int> {};

TEST_P(InterruptedCompile, EndsTheCompilerAndLeavesThingsAsTheyWere) {
  // Whatever the program leaves running becomes this process's child.
  ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
  while (waitpid(-1, nullptr, 0) > 0) {  // children of earlier tests, which are about to end
  }
  const TestFolder web, output, beside;
  web.Write("index.htm", "<title>Home</title>");
  web.Write("behaviour.txt", "wait\n" + beside.PathOf("waiting.txt"));
  output.Write("a.chm", "ITSF old");

  const pid_t program = Start({TestProgram("scrivo"), "compile", web.path().string(), "-o",
                               output.PathOf("a.chm"), "--compiler", TestProgram("test_fake_hhc")});
  ASSERT_GT(program, 0);
  while (!beside.Has("waiting.txt") && waitpid(program, nullptr, WNOHANG) == 0) usleep(1000);
  ASSERT_TRUE(beside.Has("waiting.txt")) << "the compiler was not run";
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  kill(program, GetParam());

  int status = 0;
  ASSERT_EQ(waitpid(program, &status, 0), program);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 130);
  pid_t left = 0;
  do {
    left = waitpid(-1, nullptr, WNOHANG);
  } while (left > 0);
  EXPECT_EQ(left, -1) << "the compiler is still running";
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(FilesIn(output), 1);
  EXPECT_EQ(FilesIn(web), 2);
}

// The processes that have become this process's own.
std::vector<pid_t> Children() {
  std::vector<pid_t> children;
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    std::ifstream list(task.path() / "children");
    for (pid_t child = 0; list >> child;) children.push_back(child);
  }
  return children;
}

TEST(KilledCompile, LeavesAFolderThatTheNextOneRemoves) {
  ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
  const TestFolder web, output, beside;
  web.Write("index.htm", "<title>Home</title>");
  web.Write("behaviour.txt", "wait\n" + beside.PathOf("waiting.txt"));
  output.Write("a.chm", "ITSF old");
  const std::vector<std::string> command = {
      TestProgram("scrivo"),  "compile",    web.path().string(),         "-o",
      output.PathOf("a.chm"), "--compiler", TestProgram("test_fake_hhc")};
  const auto compile = [&] {
    int status = 0;
    return waitpid(Start(command), &status, 0) > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  };
  const pid_t program = Start(command);
  while (!beside.Has("waiting.txt") && waitpid(program, nullptr, WNOHANG) == 0) usleep(1000);
  ASSERT_TRUE(beside.Has("waiting.txt")) << "the compiler was not run";
  // While it lives another run leaves its folder alone.
  web.Write("behaviour.txt", "make");
  EXPECT_EQ(compile(), 0);
  EXPECT_TRUE(output.Has("a.chm.scrivo-work/held"));

  kill(program, SIGKILL);
  waitpid(program, nullptr, 0);
  for (const pid_t child : Children()) {
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
  }
  EXPECT_EQ(FilesIn(output), 2);
  EXPECT_TRUE(output.Has("a.chm.scrivo-work"));
  EXPECT_EQ(FilesIn(web), 2);

  EXPECT_EQ(compile(), 0);
  EXPECT_EQ(FilesIn(output), 1);
  EXPECT_EQ(FilesIn(web), 2);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptedCompile, testing::Values(SIGINT, SIGTERM));

}  // namespace
}  // namespace scrivo

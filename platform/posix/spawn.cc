#include "platform/posix/spawn.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "bytes/posix/descriptor.h"

namespace scrivo {
namespace {

// Everything that the child needs, made ready before the fork: behind it, memory may not be
// allocated.
struct Prepared {
  std::vector<std::string> programs;  // paths to try in turn
  std::vector<char*> arguments;       // closed by a null pointer
  const char* folder;                 // null for the caller's
  int streams[3];
  bool detached;
  int report;  // where the child writes why it could not start
};

std::string AbsolutePath(const std::string& path) {
  if (path.front() == '/') return path;
  char* const current = getcwd(nullptr, 0);
  if (!current) return path;
  const std::string absolute = std::string(current) + "/" + path;
  std::free(current);
  return absolute;
}

// The paths that a program's name stands for, relative to the caller's folder, not the child's.
std::vector<std::string> ProgramPaths(const std::string& name) {
  if (name.find('/') != std::string::npos) return {AbsolutePath(name)};
  const char* const path = std::getenv("PATH");
  const std::string folders = path ? path : "/usr/local/bin:/usr/bin:/bin";
  std::vector<std::string> programs;
  for (std::size_t start = 0; start <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', start), folders.size());
    const std::string folder = folders.substr(start, end - start);
    programs.push_back(AbsolutePath((folder.empty() ? "." : folder) + "/" + name));
    start = end + 1;
  }
  return programs;
}

[[noreturn]] void ReportAndExit(int report, int error, bool in_folder) {
  const int facts[2] = {error, in_folder};
  [[maybe_unused]] const ssize_t written = write(report, facts, sizeof facts);
  _exit(127);
}

// Tries the programs in turn; returns why none could be run. A program that is there but may not
// be run says more than the others that are missing.
int ExecuteChild(const Prepared& child) {
  int error = ENOENT;
  for (const std::string& program : child.programs) {
    execv(program.c_str(), child.arguments.data());
    if (errno != ENOENT && errno != ENOTDIR) error = errno;
    if (error != ENOENT && error != EACCES) break;
  }
  return error;
}

[[noreturn]] void RunChild(const Prepared& child) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  signal(SIGPIPE, SIG_DFL);
  if (child.detached) {
    setsid();
    const pid_t process = fork();
    if (process == -1) ReportAndExit(child.report, errno, false);
    if (process != 0) _exit(0);
  } else {
    setpgid(0, 0);
  }
  for (int stream = 0; stream < 3; ++stream) {
    if (dup2(child.streams[stream], stream) == -1) ReportAndExit(child.report, errno, false);
  }
  if (child.folder && chdir(child.folder) != 0) ReportAndExit(child.report, errno, true);
  ReportAndExit(child.report, ExecuteChild(child), false);
}

// Reads what the child reports; nothing when it runs.
SpawnResult ReadReport(int report) {
  int facts[2] = {0, 0};
  ssize_t got = -1;
  do {
    got = read(report, facts, sizeof facts);
  } while (got == -1 && errno == EINTR);
  SpawnResult result;
  if (got == sizeof facts) {
    result.error = facts[0];
    result.in_folder = facts[1] != 0;
  }
  return result;
}

void WaitFor(pid_t process) {
  while (waitpid(process, nullptr, 0) == -1 && errno == EINTR) {
  }
}

}  // namespace

SpawnResult Spawn(const SpawnRequest& request) {
  if (request.arguments.empty() || request.arguments[0].empty()) return {ENOENT, false, -1};
  const Descriptor null = AboveStandardStreams(Descriptor(open("/dev/null", O_RDWR | O_CLOEXEC)));
  int ends[2];
  if (!null.IsOpen() || pipe2(ends, O_CLOEXEC) != 0) return {errno, false, -1};
  const Descriptor report_end(ends[0]);
  Descriptor write_end = AboveStandardStreams(Descriptor(ends[1]));

  Prepared child = {
      ProgramPaths(request.arguments[0]), {}, nullptr, {}, request.detached, write_end.Get()};
  for (const std::string& word : request.arguments) {
    child.arguments.push_back(const_cast<char*>(word.c_str()));
  }
  child.arguments.push_back(nullptr);
  if (!request.folder.empty()) child.folder = request.folder.c_str();
  for (int stream = 0; stream < 3; ++stream) {
    child.streams[stream] = request.streams[stream] == -1 ? null.Get() : request.streams[stream];
  }

  const pid_t process = fork();
  if (process == -1) return {errno, false, -1};
  if (process == 0) RunChild(child);
  if (!request.detached) setpgid(process, process);  // whoever of the two comes first
  write_end.Close();
  SpawnResult result = ReadReport(report_end.Get());
  if (request.detached || result.error != 0) {
    WaitFor(process);
  } else {
    result.process = process;
  }
  return result;
}

int OpenWithDesktop(const std::string& target) {
  SpawnRequest request;
  request.arguments = {"xdg-open", target};
  request.detached = true;
  return Spawn(request).error;
}

}  // namespace scrivo

#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "system/error.h"

namespace scrivo {

// Runs one console program, hidden, with its standard output and standard error in one pipe, and
// hands on what it prints while it runs. Made for one run and dropped afterwards. Everything
// happens on the caller's thread; between two pieces of output the user interface gets one pass of
// its message loop.
class CSpawnConsoleApp {
 public:
  static constexpr std::int32_t kCreatePipeFailed = kComponentErrorBase + 512;
  static constexpr std::int32_t kCreateProcessFailed = kComponentErrorBase + 513;

  // Called once, when the program has been started and nothing was read yet.
  std::function<void()> OnProcessStarted;
  // Called once for each read with what was read: the text of up to 16 bytes, cut wherever they
  // happen to end, except that a character cut in two comes whole with its second half; and at last
  // an empty text for the read that found the end.
  std::function<void(const std::string& Output)> OnProcessOutputs;
  // Called before a read that would wait, since the program has nothing to say for now: the time to
  // show what was held back. The read itself waits here, on the caller's thread.
  std::function<void()> BeforeWaiting;

  // Runs `CommandLine` in `WorkingDirectory` and returns the program's exit code as it stands when
  // its output ends: 259 when it has closed its output and lives on. A pipe or process that cannot
  // be made is kCreatePipeFailed or kCreateProcessFailed, reported through the procedure frame;
  // after an abort the result is 0.
  std::int32_t ExecuteApp(const std::string& CommandLine, const std::string& WorkingDirectory);
};

}  // namespace scrivo

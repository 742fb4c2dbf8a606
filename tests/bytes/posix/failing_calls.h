#pragma once

// Calls of the system that fail, whoever makes them. Linux only.

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace scrivo {

// All calls of a number, or those whose third argument has one of the flags.
struct FailingCalls {
  unsigned number;
  unsigned error;  // the errno
  unsigned flags = 0;
};

// Makes them fail in this process from here on. False when the system takes no filter.
inline bool FailFromHereOn(const FailingCalls& calls) {
  const auto third_argument =
      static_cast<unsigned>(offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t));
  std::array<sock_filter, 6> filter = {{
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, calls.number, 0, 3),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, third_argument),
      BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, calls.flags, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | calls.error),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  }};
  if (calls.flags == 0) filter[3] = BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 0, 0, 1);
  sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

// Runs `work` in a child process for which the calls fail, since a filter cannot be taken back, and
// holds that it finds no fault. Where the system takes no filter nothing is run.
template <typename Work>
void WithFailingCalls(const FailingCalls& calls, const Work& work) {
  constexpr int kNoFilter = 77;
  const auto run = [&] {
    if (!FailFromHereOn(calls)) _exit(kNoFilter);
    work();
    _exit(testing::Test::HasFailure() ? 1 : 0);
  };
  const auto is_good = [](int status) {
    return WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == kNoFilter);
  };
  EXPECT_EXIT(run(), is_good, "");
}

}  // namespace scrivo

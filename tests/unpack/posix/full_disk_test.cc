// Which failures of a disk would meet every other file too.

#include <sys/syscall.h>

#include <cerrno>
#include <filesystem>
#include <vector>

#include "tests/bytes/posix/failing_calls.h"
#include "tests/doubles/temp_folder.h"
#include "unpack/output_folder.h"

namespace scrivo {
namespace {

TEST(FullDisk, IsToldFromAFileThatCannotBeWritten) {
  const TempFolder temporary;
  const std::filesystem::path out = std::filesystem::path(temporary.path()) / "out";
  const struct {
    unsigned error;
    WriteOutcome outcome;
  } failures[] = {{ENOSPC, WriteOutcome::kDiskFailed}, {EDQUOT, WriteOutcome::kDiskFailed},
                  {EROFS, WriteOutcome::kDiskFailed},  {EIO, WriteOutcome::kDiskFailed},
                  {EFBIG, WriteOutcome::kFailed},      {EPERM, WriteOutcome::kFailed}};
  for (const auto& failure : failures) {
    WithFailingCalls({SYS_pwrite64, failure.error}, [&] {
      std::error_code error;
      const auto folder = OpenOutputFolder(out, &error);
      const WriteResult result = folder->Create("sub/a.htm", std::vector<std::uint8_t>{1});
      EXPECT_EQ(result.outcome, failure.outcome) << failure.error;
      EXPECT_EQ(result.error.value(), static_cast<int>(failure.error));
      folder->RemoveEmptyFolders();
    });
    EXPECT_FALSE(std::filesystem::exists(out));
  }
}

}  // namespace
}  // namespace scrivo

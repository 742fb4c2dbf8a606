#include "tests/bytes/output_file_test.h"

#include <windows.h>

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// Opens a file as a program does that reads it, and shares it as `share` says.
HANDLE OpenReader(const fs::path& path, DWORD share) {
  return CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
}

TEST_F(OutputFileTest, LeavesTheEarlierFileToAReaderThatHoldsIt) {
  Put(target_, "earlier");
  const HANDLE reader = OpenReader(target_, FILE_SHARE_READ);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_FALSE(file->Commit());
    EXPECT_TRUE(file->Reason());
  }
  CloseHandle(reader);
  EXPECT_EQ(Content(target_), "earlier");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputFileTest, RefusesADevice) { EXPECT_TRUE(Refusal("NUL")); }

TEST_F(OutputFileTest, RefusesAWriteProtectedFile) {
  Put(target_, "earlier");
  ASSERT_TRUE(SetFileAttributesW(target_.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_EQ(Refusal(target_), std::errc::permission_denied);
  EXPECT_EQ(Content(target_), "earlier");
  SetFileAttributesW(target_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
}  // namespace scrivo

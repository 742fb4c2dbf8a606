#include "cli/error_text.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(ErrorTextTest, AddsWhatToDoToTheSystemsErrors) {
  EXPECT_EQ(ErrorText(Error(kDiskFull, "", "Disk full: a")),
            "Disk full: a. Free some space and try again.");
  EXPECT_EQ(ErrorText(Error(kPermissionDenied, "", "Permission denied: a")),
            "Permission denied: a. Check that you have permission to read and write there.");
  EXPECT_EQ(ErrorText(Error(kOutOfMemory, "", "Out of memory")),
            "Out of memory. Close other programs and try again.");
  EXPECT_EQ(ErrorText(Error(kFileNotFound, "", "File not found: a")), "File not found: a");
}

TEST(ErrorTextTest, AddsNothingToATextThatSaysWhatToDoItself) {
  EXPECT_EQ(ErrorText(Error(kPermissionDenied, "", "The web cannot be read. Ask somebody.")),
            "The web cannot be read. Ask somebody.");
}

}  // namespace
}  // namespace scrivo

#include "bytes/held_file.h"

#include <gtest/gtest.h>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

TEST(HeldFile, IsHeldByOneAndGoesWithIt) {
  const TestFolder folder;
  const std::filesystem::path path = folder.path() / "held";
  std::error_code error;
  {
    const auto held = HeldFile::Make(path, &error);
    ASSERT_NE(held, nullptr) << error.message();
    EXPECT_TRUE(folder.Has("held"));
    EXPECT_EQ(HeldFile::Make(path, &error), nullptr);
    EXPECT_TRUE(error);
    EXPECT_EQ(HeldFile::TakeOver(path), nullptr);
    EXPECT_TRUE(folder.Has("held")) << "it is not those who fail that remove it";
  }
  EXPECT_FALSE(folder.Has("held"));
  EXPECT_EQ(HeldFile::TakeOver(path), nullptr);
}

TEST(HeldFile, ThatWasLeftIsTakenOverAndNotMadeAgain) {
  const TestFolder folder;
  folder.Write("held", "");
  const std::filesystem::path path = folder.path() / "held";
  std::error_code error;
  EXPECT_EQ(HeldFile::Make(path, &error), nullptr);
  {
    const auto held = HeldFile::TakeOver(path);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(HeldFile::TakeOver(path), nullptr);
  }
  EXPECT_FALSE(folder.Has("held"));
}

}  // namespace
}  // namespace scrivo

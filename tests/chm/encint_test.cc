#include <gtest/gtest.h>

#include <vector>

#include "chm/directory.h"

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(EncintTest, ReadsGroupsOfSevenBits) {
  const std::pair<Bytes, std::uint64_t> cases[] = {
      {{0x00}, 0},
      {{0x7F}, 0x7F},
      {{0x81, 0x00}, 0x80},
      {{0x82, 0x80, 0x01}, 0x8001},
      {{0x80, 0x80, 0x80, 0x05}, 5},
      {{0x81, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F}, 0xFFFFFFFFFFFFFFFF},
  };
  for (const auto& [bytes, value] : cases) {
    std::span<const std::uint8_t> rest(bytes);
    EXPECT_EQ(TakeEncint(&rest), value);
    EXPECT_TRUE(rest.empty());
  }
}

TEST(EncintTest, LeavesWhatFollows) {
  const Bytes bytes = {0x81, 0x01, 0x22};
  std::span<const std::uint8_t> rest(bytes);
  EXPECT_EQ(TakeEncint(&rest), 0x81U);
  EXPECT_EQ(rest.size(), 1U);
}

TEST(EncintTest, RefusesNumbersThatEndOrDoNotFit) {
  const Bytes cases[] = {
      {}, {0x80}, {0xFF, 0xFF}, {0x82, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x00}};
  for (const Bytes& bytes : cases) {
    std::span<const std::uint8_t> rest(bytes);
    EXPECT_EQ(TakeEncint(&rest), std::nullopt);
  }
}

}  // namespace
}  // namespace scrivo

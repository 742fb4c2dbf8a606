#include "lzx/lzx_token.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(LzxTokenTest, FindsTheSlotOfEveryDistance) {
  for (std::uint32_t distance = 1; distance <= LzxMaxDistance(kLzxUsualWindowBits); ++distance) {
    const auto slot = static_cast<std::size_t>(LzxSlotOf(distance));
    ASSERT_GE(distance + kLzxOffsetBias, kLzxSlotBase[slot]) << distance;
    ASSERT_LT(distance + kLzxOffsetBias, kLzxSlotBase[slot + 1]) << distance;
  }
}

TEST(LzxTokenTest, IsALiteralOfItsByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const LzxToken token = LzxToken::Literal(static_cast<std::uint8_t>(byte));
    EXPECT_FALSE(token.is_match());
    EXPECT_FALSE(token.has_length_symbol());
    EXPECT_EQ(token.main_symbol(), static_cast<std::uint32_t>(byte));
    EXPECT_EQ(token.size(), 1u);
  }
}

TEST(LzxTokenTest, HoldsEveryLengthInEverySlot) {
  for (int slot = 0; slot < kLzxUsualSlots; ++slot) {
    const std::uint32_t footer = (1u << LzxExtraBits(slot)) - 1;
    for (std::uint32_t length = kLzxMinMatch; length <= kLzxMaxMatch; ++length) {
      const LzxToken token = LzxToken::Match(length, slot, footer);
      ASSERT_TRUE(token.is_match());
      ASSERT_EQ(token.size(), length);
      ASSERT_EQ(token.slot(), slot);
      ASSERT_EQ(token.footer(), footer);
      ASSERT_EQ(token.has_length_symbol(), length >= 9);
      ASSERT_EQ(token.length_symbol(), length >= 9 ? length - 9 : 0);
    }
  }
}

}  // namespace
}  // namespace scrivo

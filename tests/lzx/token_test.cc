#include "lzx/token.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(LzxTokenTest, FindsTheSlotOfEveryDistance) {
  for (std::uint32_t distance = 1; distance <= LzxMaxDistance(kLzxUsualWindowBits); ++distance) {
    const auto slot = static_cast<std::size_t>(LzxPositionSlot(distance));
    ASSERT_GE(distance + kLzxOffsetBias, kLzxSlotBase[slot]) << distance;
    ASSERT_LT(distance + kLzxOffsetBias, kLzxSlotBase[slot + 1]) << distance;
  }
}

TEST(LzxTokenTest, IsALiteralOfItsByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const LzxToken token = LzxToken::Literal(static_cast<std::uint8_t>(byte));
    EXPECT_FALSE(token.IsMatch());
    EXPECT_FALSE(token.HasLengthSymbol());
    EXPECT_EQ(token.MainSymbol(), static_cast<std::uint32_t>(byte));
    EXPECT_EQ(token.Size(), 1u);
  }
}

TEST(LzxTokenTest, HoldsEveryLengthInEverySlot) {
  for (int slot = 0; slot < kLzxUsualSlots; ++slot) {
    const std::uint32_t footer = (1u << LzxFooterBits(slot)) - 1;
    for (std::uint32_t length = kLzxMinMatch; length <= kLzxMaxMatch; ++length) {
      const LzxToken token = LzxToken::Match(length, slot, footer);
      ASSERT_TRUE(token.IsMatch());
      ASSERT_EQ(token.Size(), length);
      ASSERT_EQ(token.Slot(), slot);
      ASSERT_EQ(token.Footer(), footer);
      ASSERT_EQ(token.HasLengthSymbol(), length >= 9);
      ASSERT_EQ(token.LengthSymbol(), length >= 9 ? length - 9 : 0);
    }
  }
}

}  // namespace
}  // namespace scrivo

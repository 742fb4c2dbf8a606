#include "lzx/bit_writer.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

class BitWriterTest : public testing::Test {
 protected:
  Bytes Written() const { return {buffer_.begin(), buffer_.begin() + out_.Size()}; }

  std::array<std::uint8_t, 64> buffer_{};
  BitWriter out_{buffer_.data()};
};

TEST_F(BitWriterTest, FillsWordsFromTheTopAndStoresThemLowByteFirst) {
  out_.Put(0b0, 1);
  out_.Put(0b001, 3);
  out_.Put(0b0000'0000'1000, 12);
  out_.AlignToWord();
  EXPECT_EQ(Written(), (Bytes{0x08, 0x10}));
}

TEST_F(BitWriterTest, CarriesAFieldOverTheEndOfAWord) {
  out_.Put(0x7, 3);
  out_.Put(0x12345678, 32);
  out_.Put(0x1, 13);
  EXPECT_TRUE(out_.Aligned());
  out_.AlignToWord();
  // 111 0001001000110100 0101011001111000 0000000000001
  EXPECT_EQ(Written(), (Bytes{0x46, 0xe2, 0xcf, 0x8a, 0x01, 0x00}));
}

TEST_F(BitWriterTest, PutsNothingForACountOfZero) {
  out_.Put(0, 0);
  out_.Put(1, 16);
  out_.Put(0, 0);
  out_.AlignToWord();
  EXPECT_EQ(Written(), (Bytes{0x01, 0x00}));
}

TEST_F(BitWriterTest, FillsUpAWordWithZeroBits) {
  out_.Put(1, 1);
  EXPECT_FALSE(out_.Aligned());
  out_.AlignToWord();
  EXPECT_TRUE(out_.Aligned());
  EXPECT_EQ(Written(), (Bytes{0x00, 0x80}));
  out_.AlignToWord();
  EXPECT_EQ(out_.Size(), 2u);
}

TEST_F(BitWriterTest, AlignsFromEveryPlaceWithinTwoWords) {
  for (int bits = 1; bits <= 31; ++bits) {
    BitWriter out(buffer_.data());
    out.Put(0, bits);
    out.AlignToWord();
    EXPECT_EQ(out.Size(), bits <= 16 ? 2u : 4u) << bits;
  }
}

TEST_F(BitWriterTest, PutsBytesAsTheyAreBetweenBits) {
  out_.Put(0x3, 2);
  out_.AlignToWord();
  out_.PutBytes(Bytes{1, 2, 3, 4});
  out_.Put(0xABCD, 16);
  out_.AlignToWord();
  EXPECT_EQ(Written(), (Bytes{0x00, 0xc0, 1, 2, 3, 4, 0xcd, 0xab}));
}

}  // namespace
}  // namespace scrivo

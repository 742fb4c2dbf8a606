#include "lzx/pretree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "lzx/bit_reader.h"
#include "lzx/huffman_code.h"

namespace scrivo {
namespace {

using Lengths = std::vector<std::uint8_t>;

struct Group {
  std::size_t bits = 0;
  Lengths lengths;
};

// Reads a code length group bit by bit, and counts the bits.
class GroupReader {
 public:
  GroupReader(std::span<const std::uint8_t> bytes, const Lengths& previous)
      : reader_(bytes), lengths_(previous) {}

  Group Read() {
    for (std::uint8_t& length : pretree_) length = static_cast<std::uint8_t>(Bits(4));
    CanonicalCodes(pretree_, codes_);
    std::size_t at = 0;
    while (at < lengths_.size()) {
      const int symbol = Symbol();
      if (symbol == 17 || symbol == 18) {
        std::size_t zeros = symbol == 17 ? 4 + Bits(4) : 20 + Bits(5);
        for (; zeros > 0; --zeros) lengths_.at(at++) = 0;
      } else if (symbol == 19) {
        std::size_t same = 4 + Bits(1);
        const int value = (lengths_.at(at) + 17 - Symbol()) % 17;
        for (; same > 0; --same) lengths_.at(at++) = static_cast<std::uint8_t>(value);
      } else {
        lengths_[at] = static_cast<std::uint8_t>((lengths_[at] + 17 - symbol) % 17);
        ++at;
      }
    }
    return {bits_, lengths_};
  }

 private:
  std::uint32_t Bits(int count) {
    bits_ += static_cast<std::size_t>(count);
    return reader_.Read(count);
  }

  int Symbol() {
    std::uint32_t code = 0;
    for (int length = 1; length <= 15; ++length) {
      code = code << 1 | Bits(1);
      for (int symbol = 0; symbol < 20; ++symbol) {
        if (pretree_[symbol] == length && codes_[symbol] == code) return symbol;
      }
    }
    ADD_FAILURE() << "no code";
    return 0;
  }

  BitReader reader_;
  Lengths lengths_;
  std::size_t bits_ = 0;
  std::array<std::uint8_t, 20> pretree_{};
  std::array<std::uint16_t, 20> codes_{};
};

// The number of bits, after what was written has given the lengths back.
std::size_t RoundTrip(const Lengths& previous, const Lengths& lengths) {
  std::array<std::uint8_t, 1024> buffer{};
  BitWriter out(buffer.data());
  const PretreeCode group(previous, lengths);
  group.Write(out);
  out.AlignToWord();
  const Group read = GroupReader(std::span(buffer).first(out.Size()), previous).Read();
  EXPECT_EQ(read.lengths, lengths);
  EXPECT_EQ(read.bits, group.Bits());
  return group.Bits();
}

TEST(CodeLengthGroupTest, SendsAnEmptyTree) {
  // 249 zeros: four runs of 51 and one of 45, one bit and five more each, after the pretree.
  EXPECT_EQ(RoundTrip(Lengths(249), Lengths(249)), 80u + 5 * 6);
}

TEST(CodeLengthGroupTest, SendsRunsOfZerosOfEveryLength) {
  for (std::size_t zeros = 0; zeros <= 120; ++zeros) {
    Lengths lengths(256, 8);
    std::fill_n(lengths.begin() + 60, zeros, std::uint8_t{0});
    RoundTrip(Lengths(256), lengths);
    Lengths at_end(zeros + 1, 0);
    at_end[0] = 1;
    RoundTrip(Lengths(zeros + 1), at_end);
  }
}

TEST(CodeLengthGroupTest, SendsRunsOfEqualLengthsOfEveryLength) {
  for (std::size_t same = 1; same <= 30; ++same) {
    Lengths lengths(256);
    std::fill_n(lengths.begin() + 100, same, std::uint8_t{7});
    RoundTrip(Lengths(256), lengths);
    RoundTrip(Lengths(same), Lengths(same, 16));
  }
}

TEST(CodeLengthGroupTest, SendsDifferencesAroundTheEndOfTheirRange) {
  Lengths previous, lengths;
  for (std::uint8_t before = 0; before <= 16; ++before) {
    for (const std::uint8_t after : {0, 1, 8, 16}) {
      previous.push_back(before);
      lengths.push_back(after);
    }
  }
  RoundTrip(previous, lengths);
}

TEST(CodeLengthGroupTest, SendsUnchangedLengthsForLittle) {
  std::mt19937 random(1);
  Lengths lengths(256);
  for (std::uint8_t& length : lengths) length = static_cast<std::uint8_t>(5 + random() % 9);
  EXPECT_LE(RoundTrip(lengths, lengths), 80u + 256);
  EXPECT_GT(RoundTrip(Lengths(256), lengths), 80u + 700);
}

TEST(CodeLengthGroupTest, SendsAnyLengthsAfterAnyOthers) {
  std::mt19937 random(2);
  for (int round = 0; round < 2000; ++round) {
    Lengths previous(1 + random() % 256), lengths(previous.size());
    const unsigned range = 1 + random() % 17;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
      previous[i] = static_cast<std::uint8_t>(random() % range);
      const unsigned kind = random() % 8;
      lengths[i] = kind < 3 && i > 0 ? lengths[i - 1]
                   : kind < 5        ? previous[i]
                   : kind < 6        ? std::uint8_t{0}
                                     : static_cast<std::uint8_t>(random() % range);
    }
    RoundTrip(previous, lengths);
  }
}

}  // namespace
}  // namespace scrivo

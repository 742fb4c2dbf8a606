#include "lzx/encoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "lzx/decoder.h"
#include "tests/lzx/sample_data.h"

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Encodes with one encoder for all calls, as the compressor does, and checks what comes back.
class LzxEncoderTest : public testing::Test {
 protected:
  // The encoded interval, after the decoder gave `input` and zeros up to a whole frame for it.
  LzxInterval RoundTrip(const Bytes& input) {
    LzxInterval interval;
    encoder_.Encode(input, interval);
    const std::size_t frames = (input.size() + kLzxFrameSize - 1) / kLzxFrameSize;
    Bytes expected = input;
    expected.resize(frames * kLzxFrameSize);
    EXPECT_LE(interval.bytes.size(), expected.size() + kLzxMaxExpansion);

    Bytes output(expected.size(), 0xAA);
    LzxResult result = decoder_.DecodeInterval(interval.bytes, output);
    EXPECT_EQ(result.status, LzxStatus::kOk);
    EXPECT_EQ(result.consumed, interval.bytes.size());
    EXPECT_TRUE(output == expected);

    // The frames before one end where that one is said to start.
    EXPECT_EQ(interval.frames.size(), frames);
    EXPECT_EQ(interval.frames[0], 0u);
    for (std::size_t frame = 1; frame < interval.frames.size(); ++frame) {
      const std::span before = std::span(output).first(frame * kLzxFrameSize);
      result = decoder_.DecodeInterval(interval.bytes, before);
      EXPECT_EQ(result.status, LzxStatus::kOk);
      EXPECT_EQ(result.consumed, interval.frames[frame]);
    }
    return interval;
  }

  static LzxBlockType FirstBlockType(const LzxInterval& interval) {
    return static_cast<LzxBlockType>(interval.bytes[1] >> 4 & 7);
  }

  static constexpr std::size_t kLargeInterval = 8 * kLzxUsualInterval;

  LzxEncoder encoder_{kLargeInterval};
  LzxDecoder decoder_{kLzxUsualWindowBits};
};

// A single search that is cut by estimates takes 24 bytes more.
TEST_F(LzxEncoderTest, SearchesASmallIntervalTwice) {
  Bytes input = PageBytes(8000, 1);
  const Bytes picture = RandomBytes(700, 1);
  input.insert(input.end(), picture.begin(), picture.end());
  EXPECT_LE(RoundTrip(input).bytes.size(), 2800u);
}

TEST_F(LzxEncoderTest, KeepsASingleByte) { RoundTrip({'x'}); }

TEST_F(LzxEncoderTest, KeepsSizesAroundTheBorders) {
  const Bytes page = PageBytes(kLzxUsualInterval, 1);
  for (const std::size_t size :
       {1,     2,     3,     4,     5,     8,     255,   256,   257,   258,   259,   1000, 32766,
        32767, 32768, 32769, 32770, 32771, 32772, 33000, 65530, 65533, 65534, 65535, 65536}) {
    SCOPED_TRACE(size);
    RoundTrip({page.begin(), page.begin() + size});
    RoundTrip(Bytes(size, 0));
    RoundTrip(Bytes(size, 0xFF));
    RoundTrip(RandomBytes(size, 9));
  }
}

TEST_F(LzxEncoderTest, KeepsARunOfEveryByteValue) {
  for (int value = 0; value < 256; ++value) {
    EXPECT_LT(RoundTrip(Bytes(kLzxUsualInterval, static_cast<std::uint8_t>(value))).bytes.size(),
              200u);
  }
}

TEST_F(LzxEncoderTest, KeepsPeriodsOfEveryLengthNearTheMatchLimits) {
  for (const std::size_t period : {2, 3, 4, 7, 255, 256, 257, 258, 511, 32767, 32768, 32769}) {
    SCOPED_TRACE(period);
    Bytes input = RandomBytes(period, 3);
    input.resize(kLzxUsualInterval);
    for (std::size_t i = period; i < input.size(); ++i) input[i] = input[i - period];
    RoundTrip(input);
  }
}

TEST_F(LzxEncoderTest, KeepsMatchesAtTheLargestDistances) {
  // The same bytes at both ends of an interval: some distances are longer than a match may have.
  for (int gap = 0; gap < 12; ++gap) {
    Bytes input = RandomBytes(kLzxUsualInterval, 5);
    const std::size_t length = 8;
    std::copy_n(input.begin() + gap, length, input.end() - length);
    RoundTrip(input);
    Bytes flat(kLzxUsualInterval, 'a');
    for (std::size_t i = 0; i < length; ++i) {
      flat[static_cast<std::size_t>(gap) + i] = flat[flat.size() - length + i] =
          static_cast<std::uint8_t>('A' + i);
    }
    RoundTrip(flat);
  }
}

TEST_F(LzxEncoderTest, CutsMatchesAtTheEndOfAFrame) {
  // A long repeat lies across the border at every place.
  for (std::size_t before = 0; before < 300; before += 13) {
    Bytes input = RandomBytes(kLzxUsualInterval, 6);
    std::copy_n(input.begin() + 100, 600, input.begin() + kLzxFrameSize - before);
    RoundTrip(input);
  }
}

TEST_F(LzxEncoderTest, MatchesReachBackOverAWindowInALargerInterval) {
  // Noise that comes back after a distance can only be shortened when a match may be that far.
  for (const std::size_t distance : {65278, 65279, 65280, 65533, 65536, 65537, 131072}) {
    SCOPED_TRACE(distance);
    Bytes input = RandomBytes(kLargeInterval, 8);
    for (std::size_t i = distance; i < input.size(); ++i) input[i] = input[i - distance];
    const std::size_t size = RoundTrip(input).bytes.size();
    if (distance <= kLzxMaxUsedDistance) {
      EXPECT_LT(size, 70000u);
    } else {
      EXPECT_EQ(size, input.size() + kLzxMaxExpansion);
    }
  }
}

TEST_F(LzxEncoderTest, GivesPartsOfAnIntervalTheirOwnTrees) {
  // Two kinds of noise: six bits a byte with codes for each, seven with codes for both.
  constexpr int kPart = 30000;
  Bytes input;
  std::mt19937 random(5);
  for (int i = 0; i < 2 * kPart; ++i) {
    input.push_back(static_cast<std::uint8_t>(random() % 64 + (i < kPart ? 0 : 128)));
  }
  EXPECT_LT(RoundTrip(input).bytes.size(), 2 * kPart * 6.3 / 8);
}

TEST_F(LzxEncoderTest, CompressesPages) {
  const Bytes page = PageBytes(kLzxUsualInterval, 2);
  EXPECT_LT(RoundTrip(page).bytes.size(), page.size() / 4);
}

TEST_F(LzxEncoderTest, StoresWhatDoesNotCompress) {
  for (const std::size_t size : {kLzxFrameSize, kLzxUsualInterval}) {
    const LzxInterval interval = RoundTrip(RandomBytes(size, 4));
    EXPECT_EQ(FirstBlockType(interval), LzxBlockType::kUncompressed);
    EXPECT_EQ(interval.bytes.size(), size + kLzxMaxExpansion);
  }
}

TEST_F(LzxEncoderTest, CodesLowOffsetBitsWhenTheyAreUneven) {
  // Records of 16 random bytes that come back at distances divisible by 16.
  std::mt19937 random(1);
  const Bytes records = RandomBytes(64 * 16, 7);
  Bytes input;
  while (input.size() < kLzxUsualInterval) {
    const auto record = records.begin() + 16 * (random() % 64);
    input.insert(input.end(), record, record + 16);
  }
  EXPECT_EQ(FirstBlockType(RoundTrip(input)), LzxBlockType::kAligned);
}

TEST_F(LzxEncoderTest, WritesLowOffsetBitsPlainWhenTheyAreEven) {
  EXPECT_EQ(FirstBlockType(RoundTrip(PageBytes(kLzxUsualInterval, 3))), LzxBlockType::kVerbatim);
}

TEST_F(LzxEncoderTest, KeepsSkewedBytesWhoseCodesReachTheLimit) {
  // Fibonacci frequencies want codes of more than 16 bits; shuffled, they have few matches.
  Bytes input;
  std::size_t count = 1, next = 1;
  for (int symbol = 0; symbol < 22 && input.size() < kLzxUsualInterval; ++symbol) {
    input.insert(input.end(), count, static_cast<std::uint8_t>(symbol * 11));
    std::swap(count, next);
    next += count;
  }
  input.resize(std::min(input.size(), kLzxUsualInterval));
  std::shuffle(input.begin(), input.end(), std::mt19937(2));
  RoundTrip(input);
}

TEST_F(LzxEncoderTest, KeepsMixturesOfEveryKind) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    Bytes input;
    const std::size_t size = 1 + random() % (round % 4 == 0 ? kLargeInterval : kLzxUsualInterval);
    while (input.size() < size) {
      const std::size_t part = 1 + random() % 3000;
      switch (random() % 5) {
        case 0: {
          const Bytes noise = RandomBytes(part, random());
          input.insert(input.end(), noise.begin(), noise.end());
          break;
        }
        case 1:
          input.insert(input.end(), part, static_cast<std::uint8_t>(random()));
          break;
        case 2: {
          const Bytes page = PageBytes(part, random());
          input.insert(input.end(), page.begin(), page.end());
          break;
        }
        case 3:
          for (std::size_t i = 0; i < part; ++i) {
            input.push_back(static_cast<std::uint8_t>(random() % 3));
          }
          break;
        default: {
          if (input.empty()) break;
          const std::size_t back = 1 + random() % input.size();
          for (std::size_t i = 0; i < part; ++i) input.push_back(input[input.size() - back]);
        }
      }
    }
    input.resize(size);
    RoundTrip(input);
  }
}

TEST_F(LzxEncoderTest, GivesTheSameWhateverItEncodedBefore) {
  const Bytes page = PageBytes(50000, 4);
  LzxInterval first;
  LzxEncoder(kLzxUsualInterval).Encode(page, first);
  const LzxInterval again = RoundTrip(page);
  EXPECT_EQ(again.bytes, first.bytes);
  RoundTrip(RandomBytes(60000, 1));
  EXPECT_EQ(RoundTrip(page).bytes, first.bytes);
}

}  // namespace
}  // namespace scrivo

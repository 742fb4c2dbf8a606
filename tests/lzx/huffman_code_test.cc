#include "lzx/huffman_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <queue>
#include <random>
#include <vector>

namespace scrivo {
namespace {

using Frequencies = std::vector<std::uint32_t>;
using Lengths = std::vector<std::uint8_t>;

Lengths LengthsOf(const Frequencies& frequencies, int max_length) {
  Lengths lengths(frequencies.size(), 0xFF);
  HuffmanLengths(frequencies, max_length, lengths);
  return lengths;
}

// Twice the sum of 2^-length, scaled to 1 << 17; a complete code has exactly that.
std::uint32_t Kraft(const Lengths& lengths) {
  std::uint32_t sum = 0;
  for (const std::uint8_t length : lengths) sum += length == 0 ? 0 : (1u << 17) >> length;
  return sum;
}

std::uint64_t Cost(const Frequencies& frequencies, const Lengths& lengths) {
  std::uint64_t cost = 0;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    cost += std::uint64_t{frequencies[i]} * lengths[i];
  }
  return cost;
}

// The smallest cost of any prefix code: every merge of the two lightest adds their weight.
std::uint64_t BestCost(const Frequencies& frequencies) {
  std::priority_queue<std::uint64_t, std::vector<std::uint64_t>, std::greater<>> weights;
  for (const std::uint32_t frequency : frequencies) {
    if (frequency > 0) weights.push(frequency);
  }
  std::uint64_t cost = 0;
  while (weights.size() > 1) {
    std::uint64_t sum = weights.top();
    weights.pop();
    sum += weights.top();
    weights.pop();
    cost += sum;
    weights.push(sum);
  }
  return cost;
}

TEST(HuffmanLengthsTest, GivesFrequentSymbolsShortCodes) {
  EXPECT_EQ(LengthsOf({1, 0, 8, 1, 4}, 16), (Lengths{3, 0, 1, 3, 2}));
}

TEST(HuffmanLengthsTest, LeavesATreeWithoutSymbolsEmpty) {
  EXPECT_EQ(LengthsOf({0, 0, 0}, 16), (Lengths{0, 0, 0}));
}

TEST(HuffmanLengthsTest, GivesASingleSymbolACompanion) {
  EXPECT_EQ(LengthsOf({0, 0, 7}, 16), (Lengths{1, 0, 1}));
  EXPECT_EQ(LengthsOf({7, 0, 0}, 16), (Lengths{1, 1, 0}));
  EXPECT_EQ(LengthsOf({0, 9}, 16), (Lengths{1, 1}));
}

TEST(HuffmanLengthsTest, GivesTwoSymbolsOneBitEach) {
  EXPECT_EQ(LengthsOf({0, 60000, 1}, 16), (Lengths{0, 1, 1}));
}

TEST(HuffmanLengthsTest, MakesTheSmallestCode) {
  std::mt19937 random(1);
  for (int round = 0; round < 500; ++round) {
    // A code of more than 16 bits takes a total of 4181 at least, which these do not reach.
    Frequencies frequencies(2 + random() % 120);
    const unsigned skew = 1 + random() % 6;
    for (std::uint32_t& frequency : frequencies) frequency = (random() & 0x1F) >> random() % skew;
    frequencies[0] = 1;
    frequencies[1] = 1;
    const Lengths lengths = LengthsOf(frequencies, 16);
    EXPECT_EQ(Kraft(lengths), 1u << 17);
    EXPECT_EQ(Cost(frequencies, lengths), BestCost(frequencies));
    for (std::size_t i = 0; i < lengths.size(); ++i) {
      EXPECT_EQ(lengths[i] == 0, frequencies[i] == 0) << i;
    }
  }
}

TEST(HuffmanLengthsTest, KeepsTheLimitWithACompleteCode) {
  // Fibonacci numbers make the deepest tree.
  Frequencies fibonacci = {1, 1};
  while (fibonacci.size() < 24) fibonacci.push_back(fibonacci.end()[-1] + fibonacci.end()[-2]);
  for (const int limit : {16, 15, 7, 5}) {
    const Lengths lengths = LengthsOf(fibonacci, limit);
    EXPECT_LE(*std::max_element(lengths.begin(), lengths.end()), limit);
    // Not much is lost: the unlimited code is the floor.
    EXPECT_LT(Cost(fibonacci, lengths), BestCost(fibonacci) * (limit > 10 ? 1.01 : 1.8));
    EXPECT_EQ(Kraft(lengths), 1u << 17);
    EXPECT_TRUE(std::is_sorted(lengths.rbegin(), lengths.rend()));
  }
}

TEST(HuffmanLengthsTest, FitsAsManySymbolsAsTheLimitAllows) {
  const Frequencies frequencies = {1, 100, 10000, 1, 5, 7000, 2, 30};
  EXPECT_EQ(LengthsOf(frequencies, 3), (Lengths{3, 3, 3, 3, 3, 3, 3, 3}));
}

TEST(HuffmanLengthsTest, OrdersEqualFrequenciesAlikeEveryTime) {
  const Frequencies frequencies(5, 3);
  EXPECT_EQ(LengthsOf(frequencies, 16), (Lengths{3, 3, 2, 2, 2}));
}

TEST(CanonicalCodesTest, CountsUpByLengthThenBySymbol) {
  const Lengths lengths = {3, 0, 1, 3, 2};
  std::vector<std::uint16_t> codes(lengths.size(), 0xFFFF);
  CanonicalCodes(lengths, codes);
  EXPECT_EQ(codes, (std::vector<std::uint16_t>{0b110, 0, 0b0, 0b111, 0b10}));
}

TEST(CanonicalCodesTest, ReachesTheLongestCode) {
  Lengths lengths;
  for (std::uint8_t length = 1; length <= 16; ++length) lengths.push_back(length);
  lengths.push_back(16);
  std::vector<std::uint16_t> codes(lengths.size());
  CanonicalCodes(lengths, codes);
  EXPECT_EQ(codes[0], 0);
  EXPECT_EQ(codes[14], 0x7FFE);
  EXPECT_EQ(codes[15], 0xFFFE);
  EXPECT_EQ(codes[16], 0xFFFF);
}

}  // namespace
}  // namespace scrivo

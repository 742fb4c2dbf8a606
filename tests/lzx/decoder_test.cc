#include "lzx/decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

// One frame of 32768 times "a" as a verbatim block.
const Bytes kFrameOfA = {0x08, 0x10, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x02, 0x00,
                         0x07, 0x21, 0x9f, 0xda, 0xfc, 0x7d, 0x00, 0x40, 0x00, 0x00, 0x00, 0x00,
                         0x00, 0x00, 0x84, 0x08, 0x9f, 0x33, 0xf7, 0x7d, 0x00, 0xd8, 0x00, 0x00,
                         0x00, 0x00, 0x00, 0x00, 0x22, 0x00, 0x7d, 0x10, 0x67, 0xff, 0x1a, 0xdf,
                         0xff, 0x7f, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
                         0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
                         0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0x00, 0x00};

Bytes RawFrame(const Bytes& content) {
  constexpr std::uint8_t kHeader[] = {0x08, 0x30, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  Bytes input(std::size(kHeader) + content.size());
  std::copy(std::begin(kHeader), std::end(kHeader), input.begin());
  std::copy(content.begin(), content.end(), input.begin() + std::size(kHeader));
  return input;
}

TEST(LzxDecoderTest, DecodesAVerbatimBlock) {
  Bytes output(kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  const LzxResult result = decoder.DecodeInterval(kFrameOfA, output);
  EXPECT_EQ(result.status, LzxStatus::kOk);
  EXPECT_EQ(result.produced, kLzxFrameSize);
  EXPECT_EQ(result.consumed, kFrameOfA.size());
  EXPECT_EQ(output, Bytes(kLzxFrameSize, 'a'));
}

TEST(LzxDecoderTest, DecodesAnUncompressedBlock) {
  Bytes content(kLzxFrameSize);
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<std::uint8_t>(i * 7);
  const Bytes input = RawFrame(content);
  Bytes output(kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  const LzxResult result = decoder.DecodeInterval(input, output);
  EXPECT_EQ(result.status, LzxStatus::kOk);
  EXPECT_EQ(result.consumed, input.size());
  EXPECT_EQ(output, content);
}

// Streams written as text, one character a bit.
std::string Number(std::uint32_t value, int bits) {
  std::string text;
  for (int i = bits - 1; i >= 0; --i) text += (value >> i & 1) != 0 ? '1' : '0';
  return text;
}

Bytes Pack(std::string bits) {
  bits.resize((bits.size() + 15) / 16 * 16, '0');
  Bytes bytes;
  for (std::size_t word = 0; word < bits.size(); word += 16) {
    std::uint8_t halves[2] = {};
    for (std::size_t i = 0; i < 16; ++i) {
      halves[i / 8] = static_cast<std::uint8_t>(halves[i / 8] << 1 | (bits[word + i] == '1'));
    }
    bytes.push_back(halves[1]);
    bytes.push_back(halves[0]);
  }
  return bytes;
}

std::string BlockHeader(LzxBlockType type, std::uint32_t size) {
  return Number(static_cast<std::uint32_t>(type), kLzxBlockTypeBits) +
         Number(size, kLzxBlockSizeBits);
}

// The start of an interval: no translation, and a block.
std::string Start(LzxBlockType type, std::uint32_t size) {
  std::string bits(1, '0');
  bits += BlockHeader(type, size);
  return bits;
}

// A pretree for code lengths of 0, 1 and 2 after lengths of 0, and for runs.
std::string Pretree() {
  std::string bits;
  for (int symbol = 0; symbol < kLzxPretreeSymbols; ++symbol) {
    const bool two = symbol >= 16 && symbol <= 18;
    const bool three = symbol == 0 || symbol == 15;
    bits += Number(two ? 2 : three ? 3 : 0, kLzxPretreeLengthBits);
  }
  return bits;
}
constexpr std::string_view kLengthTwo = "111";
constexpr std::string_view kLengthOne = "00";

std::string Zeros(std::uint32_t count) {
  std::string bits;
  while (count != 0) {
    const std::uint32_t run = std::min(count, 51U);
    if (run >= 20) {
      bits += "10" + Number(run - 20, kLzxLongZerosBits);
    } else if (run >= 4) {
      bits += "01" + Number(run - 4, kLzxZerosBits);
    }
    if (run < 4) bits += "110";
    count -= run < 4 ? 1 : run;
  }
  return bits;
}

// Trees with the literals a (10) and b (11) and one match symbol (0) of length header `header`.
std::string Trees(std::uint32_t slot, std::uint32_t header) {
  const std::uint32_t match = slot * kLzxLengthHeaders + header;
  return Pretree() + Zeros(97) + std::string(kLengthTwo) + std::string(kLengthTwo) + Zeros(157) +
         Pretree() + Zeros(match) + std::string(kLengthOne) + Zeros(255 - match) + Pretree() +
         Zeros(kLzxLengthSymbols);
}

// Trees that change nothing in those before: every length differs by 0 (a pretree of one code).
std::string SameTrees() {
  const std::string pretree = Number(1, kLzxPretreeLengthBits) +
                              std::string((kLzxPretreeSymbols - 1) * kLzxPretreeLengthBits, '0');
  return pretree + std::string(256, '0') + pretree + std::string(256, '0') + pretree +
         std::string(kLzxLengthSymbols, '0');
}

LzxStatus Status(const Bytes& input, std::size_t frames = 1) {
  Bytes output(frames * kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  return decoder.DecodeInterval(input, output).status;
}

// Decodes one frame in which literals are followed by matches of two bytes from slot 8, that is
// from 14 + low bits back.
void ExpectMatchesFromSlot8(LzxBlockType type) {
  std::string bits = Start(type, kLzxFrameSize);
  if (type == LzxBlockType::kAligned) {
    for (int i = 0; i < kLzxAlignedSymbols; ++i) bits += Number(3, kLzxAlignedLengthBits);
  }
  bits += Trees(8, 0);
  std::string wanted;
  for (int i = 0; i < 22; ++i) {
    wanted += i % 3 == 0 ? 'b' : 'a';
    bits += i % 3 == 0 ? "11" : "10";
  }
  for (std::uint32_t low = 0; wanted.size() < kLzxFrameSize; low = (low + 5) % 8) {
    bits += Number(low, 4);
    for (int i = 0; i < 2; ++i) wanted += wanted[wanted.size() - 14 - low];
  }
  Bytes output(kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  EXPECT_EQ(decoder.DecodeInterval(Pack(bits), output).status, LzxStatus::kOk);
  EXPECT_TRUE(std::equal(output.begin(), output.end(), wanted.begin()));
}

TEST(LzxDecoderTest, ReadsOffsetBitsOfVerbatimBlocks) {
  ExpectMatchesFromSlot8(LzxBlockType::kVerbatim);
}

TEST(LzxDecoderTest, ReadsOffsetBitsOfAlignedBlocks) {
  ExpectMatchesFromSlot8(LzxBlockType::kAligned);
}

TEST(LzxDecoderTest, SwapsRecentOffsets) {
  // After an uncompressed block that sets the recent offsets to 2, 3 and 4, matches of slot 1.
  std::string bits = Start(LzxBlockType::kUncompressed, 8) + "0000";
  Bytes input = Pack(bits);
  for (const std::uint8_t byte : {2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0}) input.push_back(byte);
  std::string wanted = "abcdefgh";
  input.insert(input.end(), wanted.begin(), wanted.end());
  bits = BlockHeader(LzxBlockType::kVerbatim, kLzxFrameSize - 8) + Trees(1, 0);
  for (std::size_t distance = 3; wanted.size() < kLzxFrameSize; distance = 5 - distance) {
    bits += "0";
    for (int i = 0; i < 2; ++i) wanted += wanted[wanted.size() - distance];
  }
  const Bytes rest = Pack(bits);
  input.insert(input.end(), rest.begin(), rest.end());
  Bytes output(kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  EXPECT_EQ(decoder.DecodeInterval(input, output).status, LzxStatus::kOk);
  EXPECT_TRUE(std::equal(output.begin(), output.end(), wanted.begin()));
}

TEST(LzxDecoderTest, SkipsThePadByteAfterAnOddUncompressedBlock) {
  const std::string head = BlockHeader(LzxBlockType::kUncompressed, 0x7FFF);
  Bytes input = Pack(Number(0, 1) + head + "0000");
  for (int i = 0; i < 12; ++i) input.push_back(i % 4 == 0 ? 1 : 0);
  input.insert(input.end(), 0x7FFF, 'x');
  input.push_back(0xEE);
  // The next block starts on a word; its header leaves five bits, which are padding.
  const Bytes second = Pack(BlockHeader(LzxBlockType::kUncompressed, 1) + "00000");
  input.insert(input.end(), second.begin(), second.end());
  for (int i = 0; i < 12; ++i) input.push_back(i % 4 == 0 ? 1 : 0);
  input.push_back('y');
  input.push_back(0xEE);
  Bytes output(kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  const LzxResult result = decoder.DecodeInterval(input, output);
  EXPECT_EQ(result.status, LzxStatus::kOk);
  EXPECT_EQ(result.consumed, input.size());
  EXPECT_EQ(output.front(), 'x');
  EXPECT_EQ(output[0x7FFE], 'x');
  EXPECT_EQ(output[0x7FFF], 'y');
}

TEST(LzxDecoderTest, SkipsAWholeWordBeforeAnUncompressedBlockThatStartsOnOne) {
  // Eight times "a", with as many matches (of one bit for two letters) as make the bits a multiple
  // of four; then empty blocks, until the last header ends with a word.
  const std::string raw_header =
      BlockHeader(LzxBlockType::kUncompressed, static_cast<std::uint32_t>(kLzxFrameSize) - 8);
  const std::string head = Start(LzxBlockType::kVerbatim, 8) + Trees(0, 0);
  std::string bits;
  for (int matches = 0; matches < 4; ++matches) {
    bits = head;
    for (int i = 2 * matches; i < 8; ++i) bits += "10";
    bits.append(static_cast<std::size_t>(matches), '0');
    if ((bits.size() + raw_header.size()) % 4 == 0) break;
  }
  const std::string empty = BlockHeader(LzxBlockType::kVerbatim, 0) + SameTrees();
  ASSERT_EQ(empty.size() % 16, 4U);
  ASSERT_EQ((bits.size() + raw_header.size()) % 4, 0U);
  while ((bits.size() + raw_header.size()) % 16 != 0) bits += empty;
  Bytes input = Pack(bits + raw_header + std::string(16, '0'));
  for (int i = 0; i < 12; ++i) input.push_back(i % 4 == 0 ? 1 : 0);
  input.insert(input.end(), kLzxFrameSize - 8, 'x');
  Bytes output(kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  const LzxResult result = decoder.DecodeInterval(input, output);
  EXPECT_EQ(result.status, LzxStatus::kOk);
  EXPECT_EQ(result.consumed, input.size());
  EXPECT_EQ(output[7], 'a');
  EXPECT_EQ(output[8], 'x');
}

TEST(LzxDecoderTest, DecodesBlocksThatGoOnIntoTheNextFrame) {
  std::string bits = Start(LzxBlockType::kVerbatim, 2 * kLzxFrameSize) + Trees(0, 0);
  std::string wanted;
  for (int frame = 0; frame < 2; ++frame) {
    for (std::size_t i = 0; i < kLzxFrameSize; ++i) {
      const bool b = (i + static_cast<std::size_t>(frame)) % 5 == 0;
      wanted += b ? 'b' : 'a';
      bits += b ? "11" : "10";
    }
    bits.resize((bits.size() + 15) / 16 * 16, '0');
  }
  Bytes output(2 * kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  EXPECT_EQ(decoder.DecodeInterval(Pack(bits), output).status, LzxStatus::kOk);
  EXPECT_TRUE(std::equal(output.begin(), output.end(), wanted.begin()));
}

TEST(LzxDecoderTest, DecodesJustTheFramesThatAreWanted) {
  Bytes input = kFrameOfA;
  input.resize(input.size() + 100, 0xFF);
  Bytes output(kLzxFrameSize + 100, '?');
  LzxDecoder decoder(kLzxUsualWindowBits);
  const LzxResult result = decoder.DecodeInterval(input, output);
  EXPECT_EQ(result.status, LzxStatus::kOk);
  EXPECT_EQ(result.produced, kLzxFrameSize);
  EXPECT_EQ(result.consumed, kFrameOfA.size());
  EXPECT_EQ(output[kLzxFrameSize], '?');
}

TEST(LzxDecoderTest, StartsEveryIntervalAfresh) {
  LzxDecoder decoder(kLzxUsualWindowBits);
  Bytes output(kLzxFrameSize);
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(decoder.DecodeInterval(kFrameOfA, output).status, LzxStatus::kOk);
    ASSERT_EQ(decoder.DecodeInterval(RawFrame(output), output).status, LzxStatus::kOk);
  }
}

TEST(LzxDecoderTest, TellsWhereTheInputEnds) {
  Bytes output(2 * kLzxFrameSize);
  LzxDecoder decoder(kLzxUsualWindowBits);
  for (std::size_t size = 0; size < kFrameOfA.size(); ++size) {
    const LzxResult result = decoder.DecodeInterval(std::span(kFrameOfA).first(size), output);
    ASSERT_EQ(result.status, LzxStatus::kInputEnds) << size;
    ASSERT_EQ(result.produced, 0U) << size;
  }
  const LzxResult result = decoder.DecodeInterval(kFrameOfA, output);
  EXPECT_EQ(result.status, LzxStatus::kInputEnds);
  EXPECT_EQ(result.produced, kLzxFrameSize);
  const Bytes raw = RawFrame(Bytes(kLzxFrameSize - 1, 'x'));
  EXPECT_EQ(Status(raw), LzxStatus::kInputEnds);
  EXPECT_EQ(Status(Bytes(raw.begin(), raw.begin() + 15)), LzxStatus::kInputEnds);
}

TEST(LzxDecoderTest, RefusesTranslation) {
  EXPECT_EQ(Status(Pack(Number(1U << 31, 32))), LzxStatus::kTranslated);
}

TEST(LzxDecoderTest, RefusesUnknownBlockTypes) {
  for (const std::uint32_t type : {0U, 4U, 5U, 6U, 7U}) {
    std::string bits = Number(type, 4);
    bits.resize(2000, '0');
    EXPECT_EQ(Status(Pack(bits)), LzxStatus::kBadBlockType);
  }
}

TEST(LzxDecoderTest, RefusesCodeLengthsThatMakeNoCode) {
  const std::string head = Start(LzxBlockType::kVerbatim, kLzxFrameSize);
  const std::string end(2000, '0');
  std::string crowded, sparse;
  for (int i = 0; i < kLzxPretreeSymbols; ++i) {
    crowded += Number(1, kLzxPretreeLengthBits);
    sparse += Number(i < 2 ? 3 : 0, kLzxPretreeLengthBits);
  }
  EXPECT_EQ(Status(Pack(head + crowded + end)), LzxStatus::kBadCodeLengths);
  EXPECT_EQ(Status(Pack(head + sparse + end)), LzxStatus::kBadCodeLengths);
  // A main tree with three codes of one bit.
  const std::string trees = Pretree() + std::string(kLengthOne) + std::string(kLengthOne) +
                            std::string(kLengthOne) + Zeros(253) + Pretree() + Zeros(256) +
                            Pretree() + Zeros(kLzxLengthSymbols);
  EXPECT_EQ(Status(Pack(head + trees + end)), LzxStatus::kBadCodeLengths);
  // A run of lengths that goes past the end of its group.
  EXPECT_EQ(Status(Pack(head + Pretree() + Zeros(250) + "1011111" + end)),
            LzxStatus::kBadCodeLengths);
  std::string aligned = Start(LzxBlockType::kAligned, kLzxFrameSize);
  for (int i = 0; i < kLzxAlignedSymbols; ++i) aligned += Number(1, kLzxAlignedLengthBits);
  EXPECT_EQ(Status(Pack(aligned + end)), LzxStatus::kBadCodeLengths);
}

TEST(LzxDecoderTest, RefusesBitsThatAreNoCode) {
  // A match whose length is in the length tree, which is empty.
  const std::string head = Start(LzxBlockType::kVerbatim, kLzxFrameSize);
  EXPECT_EQ(Status(Pack(head + Trees(0, 7) + "10" + "0" + std::string(2000, '0'))),
            LzxStatus::kBadCode);
  // An aligned tree with one code of one bit, and the other bit.
  std::string aligned = Start(LzxBlockType::kAligned, kLzxFrameSize);
  aligned += Number(1, kLzxAlignedLengthBits) + std::string(7 * kLzxAlignedLengthBits, '0');
  aligned += Trees(8, 0);
  for (int i = 0; i < 22; ++i) aligned += "10";
  EXPECT_EQ(Status(Pack(aligned + "01" + std::string(2000, '1'))), LzxStatus::kBadDistance);
}

TEST(LzxDecoderTest, RefusesMatchesFromBeforeTheStart) {
  Bytes input = kFrameOfA;
  input[49] |= 0x80;  // the first symbol becomes a match
  EXPECT_EQ(Status(input), LzxStatus::kBadDistance);
  // A recent offset of 0, which an uncompressed block brings in.
  Bytes zero = Pack(Start(LzxBlockType::kUncompressed, 2) + "0000");
  zero.insert(zero.end(), 12, 0);
  zero.insert(zero.end(), {'a', 'b'});
  const Bytes rest = Pack(BlockHeader(LzxBlockType::kVerbatim, kLzxFrameSize - 2) + Trees(0, 0) +
                          std::string(2000, '0'));
  zero.insert(zero.end(), rest.begin(), rest.end());
  EXPECT_EQ(Status(zero), LzxStatus::kBadDistance);
}

TEST(LzxDecoderTest, RefusesMatchesAcrossTheEndOfAFrameOrBlock) {
  Bytes input = kFrameOfA;
  input[81] |= 0x80;  // the last match becomes 257 bytes long
  EXPECT_EQ(Status(input), LzxStatus::kBadLength);
  const std::string bits = Start(LzxBlockType::kVerbatim, 3) + Trees(0, 1) + "10" + "0" + "0";
  EXPECT_EQ(Status(Pack(bits + std::string(2000, '0'))), LzxStatus::kBadLength);
}

TEST(LzxDecoderTest, KnowsTheSlotsOfEveryWindow) {
  for (int window_bits = kLzxMinWindowBits; window_bits <= kLzxMaxWindowBits; ++window_bits) {
    LzxDecoder decoder(window_bits);
    const auto matches = static_cast<std::uint32_t>(LzxMainSymbols(window_bits) - kLzxLiterals);
    std::string bits = Start(LzxBlockType::kVerbatim, kLzxFrameSize);
    bits += Pretree() + Zeros(97) + std::string(kLengthOne) + Zeros(158) + Pretree() +
            Zeros(matches - 1) + std::string(kLengthOne) + Pretree() + Zeros(kLzxLengthSymbols) +
            std::string(kLzxFrameSize, '0');
    Bytes output(kLzxFrameSize);
    EXPECT_EQ(decoder.DecodeInterval(Pack(bits), output).status, LzxStatus::kOk) << window_bits;
    EXPECT_EQ(output, Bytes(kLzxFrameSize, 'a'));
  }
}

// The code lengths of a tree, or of a part of it, after lengths of 0: each by itself, with a
// pretree of twelve codes of four bits and eight of five.
std::string AnyLengths(const Bytes& lengths) {
  std::string bits;
  for (int i = 0; i < kLzxPretreeSymbols; ++i) bits += Number(i < 12 ? 4 : 5, 4);
  for (const std::uint8_t length : lengths) {
    const std::uint32_t symbol = (17U - length) % 17;
    bits += symbol < 12 ? Number(symbol, 4) : Number(12 + symbol, 5);
  }
  return bits;
}

// One frame of turns, after nine frames as they are: two literals and a match out of a slot that
// only windows of 512 KiB and more have. Codes and extra bits are as long as they can be.
void ExpectLongestCodes(LzxBlockType type) {
  constexpr std::uint32_t kSlot = 36;
  constexpr std::size_t kRaw = 9 * kLzxFrameSize;
  constexpr std::size_t kMatch = 200;
  const bool aligned = type == LzxBlockType::kAligned;

  Bytes wanted(kRaw);
  for (std::size_t i = 0; i < kRaw; ++i) wanted[i] = static_cast<std::uint8_t>(i * i / 11);
  Bytes input = Pack(Start(LzxBlockType::kUncompressed, kRaw) + "0000");
  for (int i = 0; i < 12; ++i) input.push_back(i % 4 == 0 ? 1 : 0);
  input.insert(input.end(), wanted.begin(), wanted.end());

  // Codes of one to fourteen bits, the first of which is used to fill the frame, and four of 16
  // bits: two literals and two matches, the last of them long.
  std::string bits = BlockHeader(type, kLzxFrameSize);
  for (const std::uint32_t length : {1, 2, 3, 4, 5, 6, 7, 7}) {
    if (aligned) bits += Number(length, kLzxAlignedLengthBits);
  }
  Bytes literals(kLzxLiterals), matches(kLzxMaxMainSymbols - kLzxLiterals);
  Bytes long_matches(kLzxLengthSymbols);
  for (std::uint8_t i = 1; i <= 14; ++i) literals[i] = long_matches[i] = i;
  literals['a'] = literals['b'] = matches[0] = kLzxMaxCodeLength;
  matches[kSlot * kLzxLengthHeaders + kLzxLengthHeaders - 1] = kLzxMaxCodeLength;
  constexpr std::size_t kLastLength = kMatch - kLzxMinMatch - kLzxLengthHeaders + 1;
  std::fill_n(long_matches.begin() + kLastLength - 3, 4, std::uint8_t{kLzxMaxCodeLength});
  bits += AnyLengths(literals) + AnyLengths(matches) + AnyLengths(long_matches);
  while (wanted.size() + 2 + kMatch <= kRaw + kLzxFrameSize) {
    const auto upper = static_cast<std::uint32_t>(wanted.size() % 1024);
    const std::uint32_t lowest = 6 + upper % 2;
    bits += Number(0xFFFC, 16) + Number(0xFFFD, 16) + Number(0xFFFF, 16) + Number(0xFFFF, 16);
    bits += Number(upper, 14) + (aligned ? Number(0x78 + lowest, 7) : Number(lowest, 3));
    wanted.insert(wanted.end(), {'a', 'b'});
    const std::size_t distance = kLzxSlotBase[kSlot] - kLzxOffsetBias + upper * 8 + lowest;
    for (std::size_t i = 0; i < kMatch; ++i) wanted.push_back(wanted[wanted.size() - distance]);
  }
  bits.append(kRaw + kLzxFrameSize - wanted.size(), '0');
  wanted.resize(kRaw + kLzxFrameSize, 1);

  const Bytes rest = Pack(bits);
  input.insert(input.end(), rest.begin(), rest.end());
  Bytes output(wanted.size());
  LzxDecoder decoder(kLzxMaxWindowBits);
  EXPECT_EQ(decoder.DecodeInterval(input, output).status, LzxStatus::kOk);
  EXPECT_EQ(output, wanted);
}

TEST(LzxDecoderTest, DecodesTheLongestCodesOfVerbatimBlocks) {
  ExpectLongestCodes(LzxBlockType::kVerbatim);
}

TEST(LzxDecoderTest, DecodesTheLongestCodesOfAlignedBlocks) {
  ExpectLongestCodes(LzxBlockType::kAligned);
}

}  // namespace
}  // namespace scrivo

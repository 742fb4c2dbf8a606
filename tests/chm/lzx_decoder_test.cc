#include "chm/lzx_decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace scrivo::chm {
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
  Bytes input = {0x08, 0x30, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  input.insert(input.end(), content.begin(), content.end());
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

}  // namespace
}  // namespace scrivo::chm

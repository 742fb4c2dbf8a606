#include "lzx/parallel_encoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/lzx/sample_data.h"

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

// What comes out when `input` goes in with pieces of `step` bytes.
std::vector<Bytes> Compress(const Bytes& input, int threads, std::size_t step) {
  std::vector<Bytes> results;
  ParallelEncoder pipeline(kLzxUsualInterval, threads, [&results](const LzxInterval& interval) {
    results.push_back(interval.bytes);
  });
  for (std::size_t at = 0; at < input.size(); at += step) {
    pipeline.Append(std::span(input).subspan(at, std::min(step, input.size() - at)));
  }
  pipeline.Finish();
  return results;
}

// The same, without a pipeline.
std::vector<Bytes> CompressAlone(const Bytes& input) {
  std::vector<Bytes> results;
  LzxEncoder encoder(kLzxUsualInterval);
  LzxInterval interval;
  for (std::size_t at = 0; at < input.size(); at += kLzxUsualInterval) {
    const std::size_t size = std::min(kLzxUsualInterval, input.size() - at);
    encoder.Encode(std::span(input).subspan(at, size), interval);
    results.push_back(interval.bytes);
  }
  return results;
}

TEST(CompressPipelineTest, GivesNothingForNothing) { EXPECT_TRUE(Compress({}, 2, 1).empty()); }

TEST(CompressPipelineTest, GivesTheSameForAnyNumberOfThreads) {
  // More intervals than the ring has slots, of kinds that take different times.
  Bytes input = PageBytes(40 * kLzxUsualInterval + 777, 1);
  const Bytes noise = RandomBytes(5 * kLzxUsualInterval, 2);
  std::copy(noise.begin(), noise.end(), input.begin() + 3 * kLzxUsualInterval);
  const std::vector<Bytes> expected = CompressAlone(input);
  EXPECT_EQ(expected.size(), 41u);
  for (const int threads : {1, 2, 3, 8}) {
    EXPECT_EQ(Compress(input, threads, 100000), expected) << threads;
  }
}

TEST(CompressPipelineTest, DoesNotCareHowTheBytesAreCut) {
  const Bytes input = PageBytes(2 * kLzxUsualInterval + 1, 3);
  const std::vector<Bytes> expected = CompressAlone(input);
  for (const std::size_t step : {std::size_t{1000}, kLzxUsualInterval - 1, kLzxUsualInterval,
                                 kLzxUsualInterval + 1, input.size()}) {
    EXPECT_EQ(Compress(input, 2, step), expected) << step;
  }
}

TEST(CompressPipelineTest, TakesAStreamThatEndsWithAnInterval) {
  EXPECT_EQ(Compress(PageBytes(3 * kLzxUsualInterval, 4), 2, 5000).size(), 3u);
}

TEST(CompressPipelineTest, StopsAtAnyMomentWithoutFinish) {
  int consumed = 0;
  for (const std::size_t intervals : {0, 1, 5, 60}) {
    ParallelEncoder pipeline(kLzxUsualInterval, 2, [&consumed](const LzxInterval&) { ++consumed; });
    pipeline.Append(PageBytes(intervals * kLzxUsualInterval, 5));
  }
  EXPECT_LT(consumed, 66);
}

}  // namespace
}  // namespace scrivo

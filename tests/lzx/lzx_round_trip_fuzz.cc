// Whatever is compressed comes back. The fuzzer's bytes are a recipe, so that short inputs reach
// whole frames and intervals: two bytes for the size of an interval and for a number that changes
// in every copy, then text that is copied until the interval is full.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "lzx/decoder.h"
#include "lzx/encoder.h"

namespace {

constexpr std::size_t kMaxInterval = 2 * scrivo::kLzxUsualInterval;

void Require(bool condition) {
  if (!condition) std::abort();
}

// One to kMaxInterval bytes.
std::vector<std::uint8_t> Cook(const std::uint8_t* data, std::size_t size) {
  const std::size_t full = 1 + data[0] * kMaxInterval / 256;
  const std::uint8_t step = data[1];
  std::vector<std::uint8_t> input(data + 2, data + size);
  input.resize(std::min(std::max<std::size_t>(input.size(), 1), kMaxInterval));
  const std::size_t text = input.size();
  std::uint8_t change = step;
  while (input.size() < full) {
    const std::size_t at = input.size() % text;
    input.push_back(static_cast<std::uint8_t>(input[at] + (at % (step + 1u) == step ? change : 0)));
    if (at == 0) change = static_cast<std::uint8_t>(change * 5 + 1);
  }
  return input;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  if (size < 2) return 0;
  const std::vector<std::uint8_t> input = Cook(data, size);
  static LzxEncoder encoder(kMaxInterval);
  static LzxDecoder decoder(kLzxUsualWindowBits);
  LzxInterval interval;
  encoder.Encode(input, interval);

  const std::size_t frames = (input.size() + kLzxFrameSize - 1) / kLzxFrameSize;
  std::vector<std::uint8_t> output(frames * kLzxFrameSize);
  Require(interval.bytes.size() <= output.size() + kLzxMaxExpansion);
  Require(interval.frames.size() == frames);
  const LzxResult result = decoder.DecodeInterval(interval.bytes, output);
  Require(result.status == LzxStatus::kOk && result.consumed == interval.bytes.size());
  Require(std::equal(input.begin(), input.end(), output.begin()));
  Require(std::all_of(output.begin() + static_cast<std::ptrdiff_t>(input.size()), output.end(),
                      [](std::uint8_t byte) { return byte == 0; }));
  return 0;
}

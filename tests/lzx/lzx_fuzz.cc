// LZX out of foreign bytes. The first byte chooses the window and how much is wanted.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "lzx/constants.h"
#include "lzx/decoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  if (size == 0) return 0;
  const int windows = kLzxMaxWindowBits - kLzxMinWindowBits + 1;
  LzxDecoder decoder(kLzxMinWindowBits + data[0] % windows);
  const std::size_t frames = 1 + data[0] / windows % 3;
  const std::span<const std::uint8_t> input(data + 1, size - 1);
  std::vector<std::uint8_t> output(frames * kLzxFrameSize);
  const LzxResult result = decoder.DecodeInterval(input, output);
  if (result.produced > output.size() || result.consumed > input.size()) std::abort();
  const bool complete = result.produced == output.size();
  if ((result.status == LzxStatus::kOk) != complete && complete) std::abort();

  // The same again, whatever the decoder has seen before.
  std::vector<std::uint8_t> again(output.size());
  const LzxResult second = decoder.DecodeInterval(input, again);
  if (second.status != result.status || second.produced != result.produced) std::abort();
  for (std::size_t i = 0; i < result.produced; ++i) {
    if (again[i] != output[i]) std::abort();
  }
  return 0;
}

#include "chm/interval_search.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace scrivo {

void FindIntervals(const ByteSource& source, CompressedSection* section) {
  LzxDecoder decoder(section->window_bits);
  std::vector<std::uint8_t> input;
  std::vector<std::uint8_t> output;
  std::uint64_t start = 0;
  while (start < section->content_length &&
         section->starts.size() * section->interval < section->length) {
    const std::size_t index = section->starts.size();
    section->starts.push_back(start);
    const std::uint64_t left = section->content_length - start;
    input.resize(static_cast<std::size_t>(std::min(left, section->MaxCompressedInterval())));
    output.resize(section->PaddedLength(index));
    if (!source.ReadAt(section->content_offset + start, input)) return;
    const LzxResult result = decoder.DecodeInterval(input, output);
    if (result.status != LzxStatus::kOk) return;
    start += result.consumed;
  }
}

}  // namespace scrivo

#pragma once

// Content section 1: where its reset intervals lie in the file, and how to decode one.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "bytes/byte_source.h"
#include "chm/directory.h"
#include "chm/problem.h"
#include "lzx/decoder.h"

namespace scrivo {

struct CompressedSection {
  std::uint64_t content_offset = 0;  // of the LZX stream, in the file
  std::uint64_t content_length = 0;  // of what the file holds of it
  bool cut = false;                  // whether the file ends within the stream
  std::uint64_t length = 0;          // bytes that it decodes to
  std::uint64_t interval = 0;        // bytes of output from one reset to the next, whole frames
  int window_bits = 0;
  std::vector<std::uint64_t> starts;  // of the intervals that are known, in the stream

  // The end of what can be decoded at all.
  std::uint64_t DecodableLength() const;
  // Bytes of output of interval `index`, which is below starts.size(), rounded up to whole frames.
  std::size_t PaddedLength(std::size_t index) const;
  // No interval takes more bytes in the stream: uncompressed blocks make it a little longer than
  // its output, and nothing makes it far longer.
  std::uint64_t MaxCompressedInterval() const { return 2 * interval + kLzxFrameSize; }
};

// Finds out about the section through the entries that describe it; `*content_offset` is where
// content section 0 starts, and is put right when the directory's end turns out to be the place.
// What is wrong is added to `*problems`; nothing is returned when the section cannot be used.
std::optional<CompressedSection> ReadCompressedSection(const ByteSource& source,
                                                       const Directory& directory,
                                                       const ContainerHeader& header,
                                                       std::uint64_t* content_offset,
                                                       Problems* problems);

// Decodes intervals of one section. Not for several threads; give each its own.
class IntervalDecoder {
 public:
  // Both must outlive the decoder.
  IntervalDecoder(const ByteSource& source, const CompressedSection& section);

  // Decodes the first output.size() bytes, a number of whole frames, of interval `index`. Returns
  // how many of them, from the first on, are right.
  std::size_t Decode(std::size_t index, std::span<std::uint8_t> output);

 private:
  const ByteSource& source_;
  const CompressedSection& section_;
  LzxDecoder decoder_;
  std::vector<std::uint8_t> input_;
};

}  // namespace scrivo

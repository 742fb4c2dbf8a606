#pragma once

// A compiled help file, open for reading: its entries, and the bytes of any one of them.
//
//   Problems problems;
//   auto reader = ChmReader::Open(std::move(source), &problems);
//   if (const Entry* entry = reader->Find("/index.htm")) auto bytes = reader->ReadWhole(*entry);
//
// Whatever the file holds, nothing here recurses on it or takes memory out of proportion: the list
// of entries takes at most some 30 times its size in the file, an entry that is read at most 2,048
// times the compressed bytes that it comes from (LZX cannot expand further).

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "bytes/byte_source.h"
#include "chm/compressed_section.h"
#include "chm/directory.h"
#include "chm/problem.h"

namespace scrivo {

class ChmReader {
 public:
  // Opens the help file in `source`. What is wrong with it is added to `*problems`, whether it can
  // be used nevertheless or not; null when it cannot.
  static std::unique_ptr<ChmReader> Open(std::unique_ptr<ByteSource> source, Problems* problems);

  // In the order of the directory, internal streams and folders included. Valid as long as the
  // reader.
  const std::vector<Entry>& Entries() const { return directory_.Entries(); }

  // The entry with that name ("/folder/file.htm", any case); null when there is none.
  const Entry* Find(std::string_view name) const { return directory_.Find(name); }

  // Why `entry` cannot be read, as far as that shows without reading it; nothing when it can.
  std::optional<ProblemKind> Check(const Entry& entry) const;

  // Reads out.size() bytes of `entry` from `offset` on, decoding only the reset intervals that hold
  // them. Nothing when all went well, else the reason; `out` is then undefined. The range must lie
  // within the entry. Not for several threads at once.
  std::optional<ProblemKind> Read(const Entry& entry, std::uint64_t offset,
                                  std::span<std::uint8_t> out);

  // The whole of `entry`; nothing when it cannot be read.
  std::optional<std::vector<std::uint8_t>> ReadWhole(const Entry& entry);

  // For those who decode by themselves, as unpacking does.
  const ByteSource& Source() const { return *source_; }
  // Where content section 0 starts in the source.
  std::uint64_t ContentOffset() const { return content_offset_; }
  // Null when the file has no usable compressed section.
  const CompressedSection* Compressed() const { return compressed_ ? &*compressed_ : nullptr; }

 private:
  ChmReader(std::unique_ptr<ByteSource> source, Directory directory, std::uint64_t content_offset,
            std::optional<CompressedSection> compressed);

  std::optional<ProblemKind> ReadCompressed(std::uint64_t at, std::span<std::uint8_t> out);
  // Decodes the first `length` bytes of an interval into buffer_, unless they are there already.
  bool Load(std::size_t interval, std::size_t length);

  std::unique_ptr<ByteSource> source_;
  Directory directory_;
  std::uint64_t content_offset_;
  std::optional<CompressedSection> compressed_;

  // The interval decoded last: entries that follow one another mostly share it.
  std::optional<IntervalDecoder> decoder_;
  std::vector<std::uint8_t> buffer_;
  std::size_t loaded_interval_ = 0;
  std::size_t loaded_length_ = 0;
};

}  // namespace scrivo

#include "chm/directory_writer.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "bytes/byte_writer.h"
#include "chm/container_format.h"

namespace scrivo {
namespace {

constexpr std::size_t kChunkSize = itsp::kUsualChunkSize;

// A quick reference leads to every fifth entry of a chunk but the first.
constexpr std::size_t kQuickStep = 1 + (1 << itsp::kUsualDensity);

constexpr std::size_t kMaxEncint = 10;
static_assert(pmgl::kEntries + kMaxEntryName + 4 * kMaxEncint + kEntryCountSize <= kChunkSize);
static_assert(pmgi::kEntries + 2 * (kMaxEntryName + 2 * kMaxEncint) + kEntryCountSize <=
              kChunkSize);

// A chunk while it fills. Entries start after the header, and offsets are counted from there.
class Chunk {
 public:
  Chunk(std::string_view signature, std::size_t header_size) : header_size_(header_size) {
    bytes_.PutText(signature);
    bytes_.PadTo(header_size);
  }

  // Adds an entry, or gives false when it and the quick references do not fit any more.
  bool Add(std::span<const std::uint8_t> entry) {
    const bool quick = count_ > 0 && count_ % kQuickStep == 0;
    const std::size_t quick_size = (quick_.size() + quick) * kQuickReferenceSize;
    if (bytes_.Size() + entry.size() + quick_size + kEntryCountSize > kChunkSize) return false;
    if (quick) quick_.push_back(static_cast<std::uint16_t>(bytes_.Size() - header_size_));
    bytes_.PutBytes(entry);
    ++count_;
    return true;
  }

  // The finished chunk, whose header may still be changed.
  ByteWriter Finish() {
    static_assert(pmgl::kFreeLength == pmgi::kFreeLength);
    bytes_.Set32(pmgl::kFreeLength, static_cast<std::uint32_t>(kChunkSize - bytes_.Size()));
    bytes_.PadTo(kChunkSize);
    std::size_t at = kChunkSize - kEntryCountSize;
    bytes_.Set16(at, static_cast<std::uint16_t>(count_));
    for (const std::uint16_t offset : quick_) bytes_.Set16(at -= kQuickReferenceSize, offset);
    return std::move(bytes_);
  }

 private:
  ByteWriter bytes_;
  std::size_t header_size_;
  std::size_t count_ = 0;
  std::vector<std::uint16_t> quick_;
};

// The first name of a chunk, by which the level above refers to it.
struct ChunkName {
  std::string_view name;
  std::uint32_t chunk;
};

class ChunkRow {
 public:
  const std::vector<std::uint8_t>& Bytes() const { return bytes_.Bytes(); }
  std::uint32_t Count() const { return static_cast<std::uint32_t>(bytes_.Size() / kChunkSize); }

  // Adds the listing chunks; at least one, which may be empty.
  std::vector<ChunkName> AddListing(const std::vector<DirectoryEntry>& entries) {
    std::vector<ChunkName> level;
    Chunk chunk(pmgl::kSignature, pmgl::kEntries);
    for (const DirectoryEntry& entry : entries) {
      ByteWriter bytes;
      PutName(entry.name, bytes);
      bytes.PutEncint(entry.section);
      bytes.PutEncint(entry.offset);
      bytes.PutEncint(entry.length);
      const bool fits = chunk.Add(bytes.Bytes());
      if (!fits) {
        PutListing(chunk, false);
        chunk = Chunk(pmgl::kSignature, pmgl::kEntries);
        chunk.Add(bytes.Bytes());
      }
      if (!fits || level.empty()) level.push_back({entry.name, Count()});
    }
    PutListing(chunk, true);
    return level;
  }

  // Adds a level of index chunks over `below` and gives that level.
  std::vector<ChunkName> AddIndex(const std::vector<ChunkName>& below) {
    std::vector<ChunkName> level;
    Chunk chunk(pmgi::kSignature, pmgi::kEntries);
    for (const ChunkName& child : below) {
      ByteWriter bytes;
      PutName(child.name, bytes);
      bytes.PutEncint(child.chunk);
      const bool fits = chunk.Add(bytes.Bytes());
      if (!fits) {
        bytes_.PutBytes(chunk.Finish().Bytes());
        chunk = Chunk(pmgi::kSignature, pmgi::kEntries);
        chunk.Add(bytes.Bytes());
      }
      if (!fits || level.empty()) level.push_back({child.name, Count()});
    }
    bytes_.PutBytes(chunk.Finish().Bytes());
    return level;
  }

 private:
  static void PutName(std::string_view name, ByteWriter& out) {
    out.PutEncint(name.size());
    out.PutText(name);
  }

  void PutListing(Chunk& chunk, bool last) {
    ByteWriter finished = chunk.Finish();
    finished.Set32(pmgl::kPrevious, Count() == 0 ? kNoChunk : Count() - 1);
    finished.Set32(pmgl::kNext, last ? kNoChunk : Count() + 1);
    bytes_.PutBytes(finished.Bytes());
  }

  ByteWriter bytes_;
};

}  // namespace

std::vector<std::uint8_t> WriteDirectory(const std::vector<DirectoryEntry>& entries) {
  ChunkRow chunks;
  std::vector<ChunkName> level = chunks.AddListing(entries);
  const std::uint32_t listing_count = chunks.Count();
  std::uint32_t depth = 1;
  while (level.size() > 1) {
    level = chunks.AddIndex(level);
    ++depth;
  }

  ByteWriter out;
  out.PutText(itsp::kSignature);
  out.PadTo(itsp::kLength);
  out.Set32(itsp::kVersion, itsp::kVersionValue);
  out.Set32(itsp::kHeaderLength, itsp::kLength);
  out.Set32(itsp::kTen, itsp::kTenValue);
  out.Set32(itsp::kChunkSize, itsp::kUsualChunkSize);
  out.Set32(itsp::kDensity, itsp::kUsualDensity);
  out.Set32(itsp::kDepth, depth);
  out.Set32(itsp::kRootChunk, depth == 1 ? kNoChunk : chunks.Count() - 1);
  out.Set32(itsp::kFirstListing, 0);
  out.Set32(itsp::kLastListing, listing_count - 1);
  out.Set32(itsp::kMinusOne, kNoChunk);
  out.Set32(itsp::kChunkCount, chunks.Count());
  out.Set32(itsp::kLanguage, itsp::kLanguageValue);
  out.SetBytes(itsp::kGuid, itsp::kGuidValue);
  out.Set32(itsp::kLengthAgain, itsp::kLength);
  for (int i = 0; i < 3; ++i) out.Set32(itsp::kMinusOnes + 4 * i, kNoChunk);
  out.PutBytes(chunks.Bytes());
  return out.Take();
}

}  // namespace scrivo

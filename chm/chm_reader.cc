#include "chm/chm_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "chm/container_format.h"
#include "chm/container_header.h"

namespace scrivo {

std::unique_ptr<ChmReader> ChmReader::Open(std::unique_ptr<ByteSource> source, Problems* problems) {
  const auto header = ReadContainerHeader(*source, problems);
  if (!header) return nullptr;
  auto directory = Directory::Read(*source, *header, problems);
  if (!directory) return nullptr;

  std::uint64_t content_offset = header->content_offset;
  std::optional<CompressedSection> compressed;
  const auto& entries = directory->Entries();
  const bool needed = std::any_of(entries.begin(), entries.end(), [](const Entry& entry) {
    return entry.section == kSectionCompressed && entry.length != 0;
  });
  if (needed) {
    compressed = ReadCompressedSection(*source, *directory, *header, &content_offset, problems);
  }
  return std::unique_ptr<ChmReader>(new ChmReader(std::move(source), *std::move(directory),
                                                  content_offset, std::move(compressed)));
}

ChmReader::ChmReader(std::unique_ptr<ByteSource> source, Directory directory,
                     std::uint64_t content_offset, std::optional<CompressedSection> compressed)
    : source_(std::move(source)),
      directory_(std::move(directory)),
      content_offset_(content_offset),
      compressed_(std::move(compressed)) {
  if (compressed_) decoder_.emplace(*source_, *compressed_);
}

std::optional<ProblemKind> ChmReader::Check(const Entry& entry) const {
  if (entry.section > kSectionCompressed) return ProblemKind::kSectionUnknown;
  // A file without bytes may claim any place.
  if (entry.length == 0) return std::nullopt;
  std::uint64_t limit = 0;
  if (entry.section == kSectionUncompressed) {
    limit = source_->Size() - std::min(source_->Size(), content_offset_);
  } else if (compressed_) {
    limit = compressed_->DecodableLength();
  } else {
    return ProblemKind::kContentUnusable;
  }
  if (entry.offset > limit || entry.length > limit - entry.offset) {
    return ProblemKind::kEntryOutside;
  }
  return std::nullopt;
}

std::optional<ProblemKind> ChmReader::Read(const Entry& entry, std::uint64_t offset,
                                           std::span<std::uint8_t> out) {
  if (const auto problem = Check(entry)) return problem;
  if (offset > entry.length || out.size() > entry.length - offset) {
    return ProblemKind::kEntryOutside;
  }
  if (out.empty()) return std::nullopt;
  const std::uint64_t at = entry.offset + offset;
  if (entry.section == kSectionCompressed) return ReadCompressed(at, out);
  if (!source_->ReadAt(content_offset_ + at, out)) return ProblemKind::kUnreadable;
  return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> ChmReader::ReadWhole(const Entry& entry) {
  if (Check(entry)) return std::nullopt;
  // Grows with what has been decoded, so that a damaged length cannot ask for much memory.
  constexpr std::uint64_t kStep = 0x10000;
  std::vector<std::uint8_t> bytes;
  while (bytes.size() < entry.length) {
    const std::size_t done = bytes.size();
    bytes.resize(static_cast<std::size_t>(std::min(entry.length, done + kStep)));
    if (Read(entry, done, std::span(bytes).subspan(done))) return std::nullopt;
  }
  return bytes;
}

std::optional<ProblemKind> ChmReader::ReadCompressed(std::uint64_t at,
                                                     std::span<std::uint8_t> out) {
  while (!out.empty()) {
    const auto interval = static_cast<std::size_t>(at / compressed_->interval);
    const auto within = static_cast<std::size_t>(at % compressed_->interval);
    const auto left = static_cast<std::size_t>(compressed_->interval) - within;
    const std::size_t count = std::min(out.size(), left);
    if (!Load(interval, within + count)) return ProblemKind::kDamaged;
    std::memcpy(out.data(), buffer_.data() + within, count);
    out = out.subspan(count);
    at += count;
  }
  return std::nullopt;
}

bool ChmReader::Load(std::size_t interval, std::size_t length) {
  if (interval == loaded_interval_ && length <= loaded_length_) return true;
  const std::size_t frames = (length + kLzxFrameSize - 1) / kLzxFrameSize;
  buffer_.resize(frames * kLzxFrameSize);
  loaded_interval_ = interval;
  loaded_length_ = decoder_->Decode(interval, buffer_);
  return length <= loaded_length_;
}

}  // namespace scrivo

#include "tests/chm/chm_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "chm/container_format.h"
#include "lzx/constants.h"

namespace scrivo {
namespace {

void Append(std::uint64_t value, int bytes, std::string* out) {
  for (int i = 0; i < bytes; ++i) *out += static_cast<char>(value >> (8 * i));
}

void AppendEncint(std::uint64_t value, int padding, std::string* out) {
  std::string groups(1, static_cast<char>(value & 0x7F));
  while ((value >>= 7) != 0)
    groups.insert(groups.begin(), static_cast<char>(0x80 | (value & 0x7F)));
  out->append(static_cast<std::size_t>(padding), '\x80');
  *out += groups;
}

void AppendGuid(const Guid& guid, std::string* out) {
  for (const std::uint8_t byte : guid) *out += static_cast<char>(byte);
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

void PatchNumber(std::size_t at, std::uint64_t value, int bytes, std::string* out) {
  for (int i = 0; i < bytes; ++i) {
    (*out)[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
  }
}

// One uncompressed block for a whole interval.
std::string RawInterval(const std::string& content) {
  const auto head = static_cast<std::uint32_t>(3U << 28 | content.size() << 4);
  std::string block;
  Append(head >> 16, 2, &block);
  Append(head & 0xFFFF, 2, &block);
  for (int i = 0; i < kLzxRecentOffsets; ++i) Append(1, 4, &block);
  return block + content;
}

}  // namespace

ChmImage::ChmImage(std::vector<ImageFile> files, const ImageOptions& options) {
  for (const ImageFile& file : files) {
    if (file.section == 0) {
      AddPlain(file.name, file.content);
    } else {
      rows_.push_back({file.name, 1, compressed_.size(), file.content.size()});
      compressed_ += file.content;
    }
  }
  rows_.push_back({"/", 0, 0, 0});
  AddStorage(options);
  std::sort(rows_.begin(), rows_.end(), [](const DirectoryRow& a, const DirectoryRow& b) {
    return Lower(a.name) < Lower(b.name);
  });
  const std::vector<std::string> built = BuildChunks(options);
  chunks = built.size();
  const std::size_t listings =
      static_cast<std::size_t>(std::count_if(built.begin(), built.end(), [](const std::string& c) {
        return c.starts_with(pmgl::kSignature);
      }));

  const bool old = options.version == 2;
  const std::size_t header_length = old ? itsf::kLengthVersion2 : itsf::kLengthVersion3;
  directory = header_length + size_section::kLength;
  first_chunk = directory + itsp::kLength;
  content = first_chunk + chunks * options.chunk_size;

  std::string file(itsf::kSignature);
  for (const std::size_t word : {std::size_t{options.version}, header_length, std::size_t{1}}) {
    Append(word, 4, &file);
  }
  Append(0x12345678, 4, &file);
  Append(0x409, 4, &file);
  AppendGuid(itsf::kGuidValue1, &file);
  AppendGuid(itsf::kGuidValue2, &file);
  Append(header_length, 8, &file);
  Append(size_section::kLength, 8, &file);
  Append(directory, 8, &file);
  Append(content - directory, 8, &file);
  if (!old) Append(content, 8, &file);
  Append(size_section::kMagicValue, 8, &file);
  Append(content + plain_.size(), 8, &file);
  Append(0, 8, &file);

  file += itsp::kSignature;
  const std::uint32_t deep = chunks > 1 ? 2 : 1;
  const auto root = static_cast<std::uint32_t>(chunks > 1 ? chunks - 1 : kNoChunk);
  for (const std::uint32_t word : {1U, 0x54U, 0x0AU, static_cast<std::uint32_t>(options.chunk_size),
                                   2U, deep, root, 0U, static_cast<std::uint32_t>(listings - 1),
                                   kNoChunk, static_cast<std::uint32_t>(chunks), 0x409U}) {
    Append(word, 4, &file);
  }
  AppendGuid(itsp::kGuidValue, &file);
  Append(0x54, 4, &file);
  file.append(12, '\xFF');
  for (const std::string& chunk : built) file += chunk;
  file += plain_;
  bytes.assign(file.begin(), file.end());
  for (const std::size_t offset : interval_offsets_) {
    intervals.push_back(At(std::string(kContentName)) + offset);
  }
}

void ChmImage::AddPlain(const std::string& name, const std::string& text) {
  rows_.push_back({name, 0, plain_.size(), text.size()});
  plain_offsets_[name] = plain_.size();
  plain_ += text;
}

void ChmImage::AddStorage(const ImageOptions& options) {
  std::string control;
  Append(6, 4, &control);
  control += control_data::kSignature;
  Append(2, 4, &control);
  Append(options.interval / control_data::kUnit, 4, &control);
  for (const int word : {2, 1, 0}) Append(static_cast<std::uint64_t>(word), 4, &control);
  AddPlain(std::string(kControlDataName), control);

  std::string span;
  Append(compressed_.size(), 8, &span);
  AddPlain(std::string(kSpanInfoName), span);

  std::string padded = compressed_;
  padded.resize((padded.size() + kLzxFrameSize - 1) / kLzxFrameSize * kLzxFrameSize);
  std::string stream;
  std::vector<std::size_t> frames;
  for (std::size_t at = 0; at < padded.size(); at += options.interval) {
    const std::string part = padded.substr(at, options.interval);
    interval_offsets_.push_back(stream.size());
    for (std::size_t frame = 0; frame < part.size(); frame += kLzxFrameSize) {
      frames.push_back(stream.size() + (frame == 0 ? 0 : 4 + kLzxRawHeaderSize + frame));
    }
    stream += RawInterval(part);
  }
  if (options.extra_reset_entry) frames.push_back(stream.size());

  std::string table;
  for (const std::size_t word :
       {std::size_t{2}, frames.size(), std::size_t{8}, std::size_t{0x28}}) {
    Append(word, 4, &table);
  }
  Append(compressed_.size(), 8, &table);
  Append(stream.size(), 8, &table);
  Append(kLzxFrameSize, 8, &table);
  for (const std::size_t frame : frames) Append(frame, 8, &table);
  AddPlain(std::string(kResetTableName), table);
  AddPlain(std::string(kContentName), stream);
}

std::string ChmImage::EntryBytes(const DirectoryRow& row, int padding) const {
  std::string entry;
  AppendEncint(row.name.size(), padding, &entry);
  entry += row.name;
  for (const std::uint64_t value : {row.section, row.offset, row.length}) {
    AppendEncint(value, padding, &entry);
  }
  return entry;
}

std::vector<std::string> ChmImage::BuildChunks(const ImageOptions& options) const {
  // Room for the entry count and one quick reference an entry, more than there will be.
  std::vector<std::vector<std::string>> groups(1);
  std::size_t used = pmgl::kEntries + kEntryCountSize;
  std::string index;
  std::size_t index_entries = 0;
  for (const DirectoryRow& row : rows_) {
    const std::string entry = EntryBytes(row, options.encint_padding);
    if (used + entry.size() + 2 > options.chunk_size) {
      groups.emplace_back();
      used = pmgl::kEntries + kEntryCountSize;
    }
    if (groups.back().empty()) {
      AppendEncint(row.name.size(), 0, &index);
      index += row.name;
      AppendEncint(groups.size() - 1, 0, &index);
      ++index_entries;
    }
    used += entry.size() + 2;
    groups.back().push_back(entry);
  }
  const auto finish = [&](std::string chunk, std::size_t entries,
                          const std::vector<std::size_t>& references) {
    const std::size_t end = chunk.size();
    chunk.resize(options.chunk_size);
    std::size_t at = options.chunk_size - kEntryCountSize;
    for (const std::size_t reference : references) {
      PatchNumber(at -= kQuickReferenceSize, reference, kQuickReferenceSize, &chunk);
    }
    PatchNumber(pmgl::kFreeLength, options.chunk_size - end, 4, &chunk);
    PatchNumber(options.chunk_size - kEntryCountSize, entries, 2, &chunk);
    return chunk;
  };
  std::vector<std::string> built;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    std::string chunk(pmgl::kSignature);
    Append(0, 8, &chunk);
    Append(i == 0 ? kNoChunk : i - 1, 4, &chunk);
    Append(i + 1 == groups.size() ? kNoChunk : i + 1, 4, &chunk);
    std::vector<std::size_t> references;
    for (std::size_t entry = 0; entry < groups[i].size(); ++entry) {
      if (entry != 0 && entry % 5 == 0) references.push_back(chunk.size() - pmgl::kEntries);
      chunk += groups[i][entry];
    }
    built.push_back(finish(chunk, groups[i].size(), references));
  }
  if (groups.size() > 1) {
    built.push_back(
        finish(std::string(pmgi::kSignature) + std::string(4, '\0') + index, index_entries, {}));
  }
  return built;
}

void ChmImage::Put16(std::size_t at, std::uint16_t value) {
  for (std::size_t i = 0; i < 2; ++i)
    bytes.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

void ChmImage::Put32(std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i)
    bytes.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

void ChmImage::Put64(std::size_t at, std::uint64_t value) {
  for (std::size_t i = 0; i < 8; ++i)
    bytes.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

std::size_t ChmImage::FindText(const std::string& text, std::size_t from) const {
  const auto found = std::search(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end(),
                                 text.begin(), text.end());
  if (found == bytes.end()) ADD_FAILURE() << "no \"" << text << "\" in the image";
  return static_cast<std::size_t>(found - bytes.begin());
}

std::string SampleText(std::size_t size, unsigned seed) {
  std::string text;
  for (unsigned line = 0; text.size() < size; ++line) {
    text += "line " + std::to_string(line) + " of sample " + std::to_string(seed) + "\n";
  }
  text.resize(size);
  return text;
}

}  // namespace scrivo

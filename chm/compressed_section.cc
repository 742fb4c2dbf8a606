#include "chm/compressed_section.h"

#include <algorithm>
#include <array>
#include <bit>

#include "bytes/little_endian.h"
#include "chm/container_format.h"

namespace scrivo {
namespace {

// An interval is decoded into memory as a whole, by several threads at once. Compilers write 64
// KiB.
constexpr std::uint64_t kMaxInterval = 0x400000;

// Where the entries that describe the storage are.
class Storage {
 public:
  Storage(const ByteSource& source, const Directory& directory, std::uint64_t content_offset)
      : source_(source), directory_(directory), content_offset_(content_offset) {}

  // Reads the first out.size() bytes of the entry `name`. False when it has not as many.
  bool Read(std::string_view name, std::span<std::uint8_t> out) const {
    const Entry* entry = Find(name);
    return entry != nullptr && entry->length >= out.size() &&
           source_.ReadAt(content_offset_ + entry->offset, out);
  }

  const Entry* Find(std::string_view name) const {
    const Entry* entry = directory_.Find(name);
    if (entry == nullptr || entry->section != kSectionUncompressed) return nullptr;
    return entry->offset > source_.Size() ? nullptr : entry;
  }

  std::uint64_t Offset(const Entry& entry) const { return content_offset_ + entry.offset; }

 private:
  const ByteSource& source_;
  const Directory& directory_;
  std::uint64_t content_offset_;
};

bool ReadControlData(const Storage& storage, std::span<std::uint8_t> out) {
  using control_data::kSignature;
  return storage.Read(kControlDataName, out) &&
         std::equal(kSignature.begin(), kSignature.end(),
                    out.begin() + control_data::kSignatureOffset);
}

void ReadParameters(const Storage& storage, CompressedSection* section, Problems* problems) {
  section->interval = kLzxUsualInterval;
  section->window_bits = kLzxUsualWindowBits;
  std::array<std::uint8_t, control_data::kWindow + 4> bytes;
  if (ReadControlData(storage, bytes)) {
    const std::uint32_t version = LoadLe32(bytes.data() + control_data::kVersion);
    const std::uint64_t unit = version == 1 ? 1 : control_data::kUnit;
    const std::uint64_t interval = unit * LoadLe32(bytes.data() + control_data::kResetInterval);
    const std::uint64_t window = unit * LoadLe32(bytes.data() + control_data::kWindow);
    const bool possible = (version == 1 || version == 2) && interval != 0 &&
                          interval % kLzxFrameSize == 0 && interval <= kMaxInterval &&
                          std::has_single_bit(window) && window >= 1U << kLzxMinWindowBits &&
                          window <= 1U << kLzxMaxWindowBits;
    if (possible) {
      section->interval = interval;
      section->window_bits = std::countr_zero(window);
      return;
    }
  }
  AddProblem(problems, {ProblemKind::kControlData});
}

std::uint64_t FrameCount(std::uint64_t length) {
  return length / kLzxFrameSize + (length % kLzxFrameSize != 0 ? 1 : 0);
}

// The table and SpanInfo both state the length. When they differ, the number of entries decides;
// some compilers write one entry more than there are frames.
std::uint64_t ChooseLength(const Storage& storage, std::uint64_t by_table, std::uint32_t entries,
                           Problems* problems) {
  std::array<std::uint8_t, 8> bytes;
  if (!storage.Read(kSpanInfoName, bytes)) return by_table;
  const std::uint64_t by_span = LoadLe64(bytes.data());
  if (by_span == by_table) return by_table;
  const auto fits = [entries](std::uint64_t length) {
    const std::uint64_t frames = FrameCount(length);
    return frames == entries || frames + 1 == entries;
  };
  const bool take_span = fits(by_span) && !fits(by_table);
  const std::uint64_t taken = take_span ? by_span : by_table;
  const std::uint64_t dropped = take_span ? by_table : by_span;
  AddProblem(problems, {ProblemKind::kUncompressedLength, taken, dropped});
  return taken;
}

// SpanInfo, or else what the entries need.
std::uint64_t LengthWithoutTable(const Storage& storage, const Directory& directory) {
  std::array<std::uint8_t, 8> bytes;
  if (storage.Read(kSpanInfoName, bytes)) return LoadLe64(bytes.data());
  std::uint64_t length = 0;
  for (const Entry& entry : directory.Entries()) {
    if (entry.section != kSectionCompressed) continue;
    const std::uint64_t end = entry.offset + entry.length;
    if (end >= entry.offset) length = std::max(length, end);
  }
  return length;
}

bool ReadResetTable(const ByteSource& source, const Storage& storage, CompressedSection* section,
                    Problems* problems) {
  const Entry* table = storage.Find(kResetTableName);
  std::array<std::uint8_t, reset_table::kHeaderLength> header;
  if (table == nullptr || !storage.Read(kResetTableName, header)) return false;
  const auto check = [&](std::uint64_t value, std::uint64_t usual) {
    if (value != usual) AddProblem(problems, {ProblemKind::kResetTableHeader, value, usual});
  };
  check(LoadLe32(header.data() + reset_table::kEntrySize), reset_table::kEntrySizeValue);
  check(LoadLe32(header.data() + reset_table::kEntriesOffset), reset_table::kHeaderLength);
  check(LoadLe64(header.data() + reset_table::kFrameSize), kLzxFrameSize);

  section->length =
      ChooseLength(storage, LoadLe64(header.data() + reset_table::kUncompressedLength),
                   LoadLe32(header.data() + reset_table::kCount), problems);
  const std::uint64_t entries_offset = storage.Offset(*table) + reset_table::kHeaderLength;
  const std::uint64_t in_file = source.Size() - std::min(source.Size(), entries_offset);
  const std::uint64_t bytes = std::min(table->length - reset_table::kHeaderLength, in_file);
  const std::uint64_t frames = FrameCount(section->length);
  const std::uint64_t known = std::min(frames, bytes / reset_table::kEntrySizeValue);
  if (known < frames) AddProblem(problems, {ProblemKind::kResetTableShort, known, frames});

  const std::uint64_t step = section->interval / kLzxFrameSize;
  std::vector<std::uint8_t> entries(static_cast<std::size_t>(known * reset_table::kEntrySizeValue));
  if (!source.ReadAt(entries_offset, entries)) entries.clear();
  for (std::size_t at = 0; at < entries.size(); at += step * reset_table::kEntrySizeValue) {
    section->starts.push_back(LoadLe64(entries.data() + at));
  }
  return true;
}

// Finds the intervals of a stream whose reset table is lost by decoding it from its start: an
// interval starts where the one before it ends. Stops at the first one that cannot be decoded,
// which is the last one entered. The other members of `*section` have to be set.
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

}  // namespace

std::uint64_t CompressedSection::DecodableLength() const {
  return std::min(length, starts.size() * interval);
}

std::size_t CompressedSection::PaddedLength(std::size_t index) const {
  const std::uint64_t left = std::min(interval, length - index * interval);
  return static_cast<std::size_t>(FrameCount(left) * kLzxFrameSize);
}

std::optional<CompressedSection> ReadCompressedSection(const ByteSource& source,
                                                       const Directory& directory,
                                                       const ContainerHeader& header,
                                                       std::uint64_t* content_offset,
                                                       Problems* problems) {
  std::array<std::uint8_t, control_data::kWindow + 4> bytes;
  if (!ReadControlData(Storage(source, directory, *content_offset), bytes) &&
      ReadControlData(Storage(source, directory, header.directory_end), bytes)) {
    AddProblem(problems, {ProblemKind::kContentOffset, *content_offset, header.directory_end});
    *content_offset = header.directory_end;
  }
  const Storage storage(source, directory, *content_offset);
  const Entry* content = storage.Find(kContentName);
  if (content == nullptr) {
    AddProblem(problems, {ProblemKind::kNoContent});
    return std::nullopt;
  }
  CompressedSection section;
  section.content_offset = storage.Offset(*content);
  if (section.content_offset > source.Size()) {
    AddProblem(problems, {ProblemKind::kContentOutside, section.content_offset});
    return std::nullopt;
  }
  section.content_length = std::min(content->length, source.Size() - section.content_offset);
  section.cut = section.content_length < content->length;
  if (section.cut) {
    AddProblem(problems, {ProblemKind::kContentCut, section.content_length, content->length});
  }
  ReadParameters(storage, &section, problems);
  if (!ReadResetTable(source, storage, &section, problems)) {
    AddProblem(problems, {ProblemKind::kResetTable});
    section.length = LengthWithoutTable(storage, directory);
    FindIntervals(source, &section);
  }
  return section;
}

IntervalDecoder::IntervalDecoder(const ByteSource& source, const CompressedSection& section)
    : source_(source), section_(section), decoder_(section.window_bits) {}

std::size_t IntervalDecoder::Decode(std::size_t index, std::span<std::uint8_t> output) {
  const std::uint64_t start = section_.starts[index];
  const bool last = index + 1 == section_.starts.size();
  const std::uint64_t end = last ? section_.content_length : section_.starts[index + 1];
  if (start >= section_.content_length || end <= start) return 0;
  const std::uint64_t stated = end - start;
  const std::uint64_t left = section_.content_length - start;
  input_.resize(
      static_cast<std::size_t>(std::min({stated, left, section_.MaxCompressedInterval()})));
  if (!source_.ReadAt(section_.content_offset + start, input_)) return 0;

  const LzxResult result = decoder_.DecodeInterval(input_, output);
  const bool whole = output.size() == section_.interval;
  if (result.status == LzxStatus::kOk) {
    // The next interval starts where this one ends; anything else is a sign of damage.
    return whole && !last && result.consumed != stated ? 0 : result.produced;
  }
  // The beginning of an interval that is cut short is right. So is that of a last one whose last
  // frame was not filled up.
  const bool cut = section_.cut && stated > left;
  const bool prefix = result.status == LzxStatus::kInputEnds && (cut || last);
  return prefix ? result.produced : 0;
}

}  // namespace scrivo

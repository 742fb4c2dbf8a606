#include "chm/container_writer.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "bytes/byte_writer.h"
#include "chm/container_format.h"
#include "chm/directory.h"
#include "lzx/constants.h"

namespace scrivo {
namespace {

// Where the directory starts: after the header and the header section with the file's size.
constexpr std::size_t kDirectoryStart = itsf::kLengthVersion3 + size_section::kLength;

// How much is added or moved at a time.
constexpr std::size_t kPieceSize = std::size_t{1} << 20;

// ControlData counts the window, and the reset interval, in units.
constexpr std::uint32_t kWindowUnits = (1u << kLzxUsualWindowBits) / control_data::kUnit;

void PutUtf16(std::string_view ascii, ByteWriter& out) {
  for (const char c : ascii) out.Put16(static_cast<std::uint8_t>(c));
}

// The names of the two content sections.
std::vector<std::uint8_t> NameList() {
  constexpr std::array<std::string_view, 2> kNames = {"Uncompressed", "MSCompressed"};
  ByteWriter out;
  out.Put16(0);
  out.Put16(kNames.size());
  for (const std::string_view name : kNames) {
    out.Put16(static_cast<std::uint16_t>(name.size()));
    PutUtf16(name, out);
    out.Put16(0);
  }
  out.Set16(0, static_cast<std::uint16_t>(out.Size() / 2));  // counts itself, in words
  return out.Take();
}

std::vector<std::uint8_t> TransformList() {
  ByteWriter out;
  PutUtf16(kTransformListText, out);
  return out.Take();
}

std::vector<std::uint8_t> SpanInfo(std::uint64_t uncompressed_size) {
  ByteWriter out;
  out.Put64(uncompressed_size);
  return out.Take();
}

std::vector<std::uint8_t> ControlData(std::size_t interval) {
  ByteWriter out;
  out.PadTo(control_data::kLength);
  out.Set32(control_data::kWords, control_data::kLength / 4 - 1);
  out.SetText(control_data::kSignatureOffset, control_data::kSignature);
  out.Set32(control_data::kVersion, 2);
  out.Set32(control_data::kResetInterval,
            static_cast<std::uint32_t>(interval / control_data::kUnit));
  out.Set32(control_data::kWindow, kWindowUnits);
  out.Set32(control_data::kCacheSize, 1);
  return out.Take();
}

// ITSF header and header section 0.
std::vector<std::uint8_t> Header(const ContainerOptions& options, std::uint64_t directory_size,
                                 std::uint64_t file_size) {
  ByteWriter out;
  out.PutText(itsf::kSignature);
  out.PadTo(kDirectoryStart);
  out.Set32(itsf::kVersion, 3);
  out.Set32(itsf::kHeaderLength, itsf::kLengthVersion3);
  out.Set32(itsf::kOne, 1);
  out.Set32(itsf::kTimestamp, options.timestamp);
  out.Set32(itsf::kLanguage, options.language);
  out.SetBytes(itsf::kGuid1, itsf::kGuidValue1);
  out.SetBytes(itsf::kGuid2, itsf::kGuidValue2);
  out.Set64(itsf::kSizeSectionOffset, itsf::kLengthVersion3);
  out.Set64(itsf::kSizeSectionLength, size_section::kLength);
  out.Set64(itsf::kDirectoryOffset, kDirectoryStart);
  out.Set64(itsf::kDirectoryLength, directory_size);
  out.Set64(itsf::kContentOffset, kDirectoryStart + directory_size);
  out.Set32(itsf::kLengthVersion3 + size_section::kMagic, size_section::kMagicValue);
  out.Set64(itsf::kLengthVersion3 + size_section::kFileSize, file_size);
  return out.Take();
}

}  // namespace

ContainerWriter::ContainerWriter(ByteStore& store, const ContainerOptions& options)
    : store_(store),
      options_(options),
      pipeline_(options.interval, options.threads,
                [this](const LzxInterval& interval) { TakeInterval(interval); }) {}

void ContainerWriter::Fail(ContainerStatus status, const std::string& name) {
  if (status_ != ContainerStatus::kOk) return;
  status_ = status;
  bad_name_ = name;
}

void ContainerWriter::CheckName(const std::string& name) {
  if (name.empty() || name.size() > kMaxEntryName) Fail(ContainerStatus::kBadName, name);
}

void ContainerWriter::StartEntry(std::string name) {
  CheckName(name);
  open_entry_ = entries_.size();
  entries_.push_back({std::move(name), kSectionCompressed, uncompressed_size_, 0});
}

// Whether the next piece is to follow.
bool ContainerWriter::Goes() {
  if (options_.stop_wanted && options_.stop_wanted()) Fail(ContainerStatus::kStopped);
  return status_ == ContainerStatus::kOk;
}

void ContainerWriter::Append(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty() && Goes()) {
    const auto piece = bytes.first(std::min(bytes.size(), kPieceSize));
    entries_[open_entry_].length += piece.size();
    uncompressed_size_ += piece.size();
    pipeline_.Append(piece);
    bytes = bytes.subspan(piece.size());
  }
}

void ContainerWriter::AddCompressed(std::string name, std::span<const std::uint8_t> bytes) {
  StartEntry(std::move(name));
  Append(bytes);
}

void ContainerWriter::AddPlain(std::string name, std::vector<std::uint8_t> bytes) {
  CheckName(name);
  plain_.push_back({std::move(name), std::move(bytes)});
}

void ContainerWriter::TakeInterval(const LzxInterval& interval) {
  if (status_ != ContainerStatus::kOk) return;
  for (const std::size_t frame : interval.frames) frames_.push_back(content_size_ + frame);
  if (!store_.WriteAt(content_size_, interval.bytes)) Fail(ContainerStatus::kWriteFailed);
  content_size_ += interval.bytes.size();
}

ContainerStatus ContainerWriter::Finish() {
  // 7-Zip refuses a section that ends with a frame, or one byte before, as its table would need an
  // entry more. Bytes that belong to no entry help, and save the special case of an empty section.
  const std::size_t beyond = (uncompressed_size_ + 1) % kLzxFrameSize;
  if (beyond < 2) {
    const std::array<std::uint8_t, 2> filler{};
    const std::size_t size = filler.size() - beyond;
    uncompressed_size_ += size;
    pipeline_.Append(std::span(filler).first(size));
  }
  pipeline_.Finish();
  if (status_ != ContainerStatus::kOk) return status_;
  CollectStorageEntries();
  PlacePlainEntries();
  AddFolders();
  SortEntries();
  if (status_ == ContainerStatus::kOk) WriteAround();
  return status_;
}

std::vector<std::uint8_t> ContainerWriter::ResetTable() const {
  ByteWriter out;
  out.PadTo(reset_table::kHeaderLength);
  out.Set32(reset_table::kVersion, reset_table::kVersionValue);
  out.Set32(reset_table::kCount, static_cast<std::uint32_t>(frames_.size()));
  out.Set32(reset_table::kEntrySize, reset_table::kEntrySizeValue);
  out.Set32(reset_table::kEntriesOffset, reset_table::kHeaderLength);
  out.Set64(reset_table::kUncompressedLength, uncompressed_size_);
  out.Set64(reset_table::kCompressedLength, content_size_);
  out.Set64(reset_table::kFrameSize, kLzxFrameSize);
  for (const std::uint64_t frame : frames_) out.Put64(frame);
  return out.Take();
}

// Puts the entries that describe the storage before those of the caller, in the order of the
// original compiler, which writes the table of a single frame behind the content.
void ContainerWriter::CollectStorageEntries() {
  std::vector<PlainEntry> all;
  all.push_back({std::string(kNameListName), NameList()});
  all.push_back({std::string(kTransformListName), TransformList()});
  all.push_back({std::string(kSpanInfoName), SpanInfo(uncompressed_size_)});
  all.push_back({std::string(kControlDataName), ControlData(options_.interval)});
  (frames_.size() == 1 ? behind_ : all).push_back({std::string(kResetTableName), ResetTable()});
  std::move(plain_.begin(), plain_.end(), std::back_inserter(all));
  plain_ = std::move(all);
}

// Entries without bytes all lie at offset 0, as the original compiler has it.
void ContainerWriter::PlacePlainEntries() {
  for (DirectoryEntry& entry : entries_) {
    if (entry.length == 0) entry.offset = 0;
  }
  std::uint64_t offset = 0;
  const auto place = [&](const std::string& name, std::uint64_t length) {
    entries_.push_back({name, kSectionUncompressed, length == 0 ? 0 : offset, length});
    offset += length;
  };
  for (const PlainEntry& entry : plain_) place(entry.name, entry.bytes.size());
  place(std::string(kContentName), content_size_);
  for (const PlainEntry& entry : behind_) place(entry.name, entry.bytes.size());
}

// The root, and the folder that each entry of a name with "/" in front lies in.
void ContainerWriter::AddFolders() {
  std::vector<std::string> folders = {"/"};
  for (const DirectoryEntry& entry : entries_) {
    if (!entry.name.starts_with('/')) continue;
    std::string folder = entry.name.substr(0, entry.name.rfind('/') + 1);
    if (folder != folders.back()) folders.push_back(std::move(folder));
  }
  const auto before = [](const std::string& a, const std::string& b) {
    return CompareNames(a, b) < 0;
  };
  const auto same = [](const std::string& a, const std::string& b) {
    return CompareNames(a, b) == 0;
  };
  // Of spellings that differ in case, the one that came first stays.
  std::stable_sort(folders.begin(), folders.end(), before);
  folders.erase(std::unique(folders.begin(), folders.end(), same), folders.end());
  folders.emplace_back(kInstanceDataName);
  for (std::string& folder : folders) {
    entries_.push_back({std::move(folder), kSectionUncompressed, 0, 0});
  }
}

void ContainerWriter::SortEntries() {
  std::sort(entries_.begin(), entries_.end(), [](const DirectoryEntry& a, const DirectoryEntry& b) {
    return CompareNames(a.name, b.name) < 0;
  });
  const auto twice = std::adjacent_find(entries_.begin(), entries_.end(),
                                        [](const DirectoryEntry& a, const DirectoryEntry& b) {
                                          return CompareNames(a.name, b.name) == 0;
                                        });
  if (twice != entries_.end()) Fail(ContainerStatus::kDuplicateName, twice->name);
}

// Makes room before the content, which came first, and writes what lies before and behind it.
void ContainerWriter::WriteAround() {
  const std::vector<std::uint8_t> directory = WriteDirectory(entries_);
  ByteWriter middle;
  for (const PlainEntry& entry : plain_) middle.PutBytes(entry.bytes);
  ByteWriter behind;
  for (const PlainEntry& entry : behind_) behind.PutBytes(entry.bytes);
  const std::uint64_t content_start = kDirectoryStart + directory.size() + middle.Size();
  file_size_ = content_start + content_size_ + behind.Size();

  const bool written = MoveContent(content_start) &&
                       store_.WriteAt(0, Header(options_, directory.size(), file_size_)) &&
                       store_.WriteAt(kDirectoryStart, directory) &&
                       store_.WriteAt(kDirectoryStart + directory.size(), middle.Bytes()) &&
                       store_.WriteAt(content_start + content_size_, behind.Bytes());
  if (!written) Fail(ContainerStatus::kWriteFailed);
}

// Piece by piece from the end, since old and new place overlap.
bool ContainerWriter::MoveContent(std::uint64_t by) {
  std::vector<std::uint8_t> buffer(kPieceSize);
  for (std::uint64_t end = content_size_; end > 0;) {
    if (!Goes()) return false;
    const std::uint64_t size = std::min<std::uint64_t>(end, kPieceSize);
    const std::span<std::uint8_t> piece(buffer.data(), static_cast<std::size_t>(size));
    end -= size;
    if (!store_.ReadAt(end, piece) || !store_.WriteAt(end + by, piece)) return false;
  }
  return true;
}

}  // namespace scrivo

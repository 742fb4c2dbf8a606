#include "chm/directory.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "bytes/little_endian.h"
#include "chm/container_format.h"

namespace scrivo {
namespace {

// The smallest and largest chunk that makes sense; compilers write 0x1000.
constexpr std::uint32_t kMinChunkSize = 0x40;
constexpr std::uint32_t kMaxChunkSize = 0x100000;

// Density 2 is usual; one that no chunk could make use of says nothing.
constexpr std::uint32_t kMaxDensity = 16;

constexpr unsigned char Fold(char c) {
  return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

bool ChunkHasSignature(std::span<const std::uint8_t> chunk, std::string_view signature) {
  return std::equal(signature.begin(), signature.end(), chunk.begin());
}

// Where the chunks are.
struct ChunkLayout {
  std::uint64_t offset;        // of the first chunk, in the file
  std::uint32_t size;          // of each
  std::uint64_t count;         // that the directory should have
  std::uint64_t possible;      // that it has if the larger of two contradicting numbers is right
  std::uint64_t last_listing;  // chunks up to this one list entries, those after it are index
  std::size_t reference_step;  // entries from one quick reference to the next
};

std::optional<ChunkLayout> ReadLayout(const ByteSource& source, const ContainerHeader& header,
                                      Problems* problems) {
  std::array<std::uint8_t, itsp::kLength> bytes;
  if (!source.ReadAt(header.directory_offset, bytes)) {
    AddProblem(problems, {ProblemKind::kDirectoryCut, header.directory_offset, 0});
    return std::nullopt;
  }
  const auto check = [&](std::size_t field, std::uint32_t usual, ProblemKind kind) {
    const std::uint32_t value = LoadLe32(bytes.data() + field);
    if (value != usual) AddProblem(problems, {kind, value, usual});
  };
  check(itsp::kVersion, itsp::kVersionValue, ProblemKind::kDirectoryVersion);
  check(itsp::kHeaderLength, itsp::kLength, ProblemKind::kDirectoryHeader);

  ChunkLayout layout;
  layout.offset = header.directory_offset + itsp::kLength;
  layout.size = LoadLe32(bytes.data() + itsp::kChunkSize);
  layout.last_listing = LoadLe32(bytes.data() + itsp::kLastListing);
  // With a step beyond all reason the references are not used.
  layout.reference_step =
      1 + (std::size_t{1} << std::min(LoadLe32(bytes.data() + itsp::kDensity), kMaxDensity));
  const std::uint64_t stated = LoadLe32(bytes.data() + itsp::kChunkCount);
  const std::uint64_t length =
      std::max<std::uint64_t>(header.directory_length, itsp::kLength) - itsp::kLength;
  const bool possible = layout.size >= kMinChunkSize && layout.size <= kMaxChunkSize;
  const bool usual_fits_better =
      length != stated * layout.size && length == stated * itsp::kUsualChunkSize;
  if (!possible || usual_fits_better) {
    AddProblem(problems, {ProblemKind::kChunkSize, layout.size, itsp::kUsualChunkSize});
    layout.size = itsp::kUsualChunkSize;
  }
  layout.count = length / layout.size;
  layout.possible = std::max(stated, layout.count);
  if (stated != layout.count) {
    AddProblem(problems, {ProblemKind::kChunkCount, stated, layout.count});
    layout.count = std::min(stated, layout.count);
  }
  return layout;
}

// Takes one entry off the front of `*bytes`; `*entry` gets it. False when it is not a whole one.
bool TakeEntry(std::span<const std::uint8_t>* bytes, Entry* entry) {
  const auto name_length = TakeEncint(bytes);
  if (!name_length || *name_length == 0 || *name_length > bytes->size()) return false;
  const auto length = static_cast<std::size_t>(*name_length);
  entry->name = {reinterpret_cast<const char*>(bytes->data()), length};
  *bytes = bytes->subspan(length);
  const auto section = TakeEncint(bytes);
  const auto offset = section ? TakeEncint(bytes) : section;
  const auto size = offset ? TakeEncint(bytes) : offset;
  if (!size) return false;
  entry->section = *section;
  entry->offset = *offset;
  entry->length = *size;
  return true;
}

// The number (from 1) of the first quick reference of a listing chunk that points beyond `at`; 0
// when there is none. Reference i is that of entry i * step.
std::size_t NextReference(std::span<const std::uint8_t> chunk, std::size_t at, std::size_t count,
                          std::size_t step) {
  const std::size_t end = chunk.size() - kEntryCountSize;
  for (std::size_t i = 1; i * step < count && (i + 1) * kQuickReferenceSize < end; ++i) {
    const std::size_t place = LoadLe16(chunk.data() + end - i * kQuickReferenceSize);
    if (place + pmgl::kEntries > at && place + pmgl::kEntries < end) return i;
  }
  return 0;
}

}  // namespace

EntryKind KindOf(std::string_view name) {
  if (name.starts_with("::") || name.starts_with("/#") || name.starts_with("/$")) {
    return EntryKind::kInternal;
  }
  return name.ends_with('/') ? EntryKind::kFolder : EntryKind::kUser;
}

std::optional<std::uint64_t> TakeEncint(std::span<const std::uint8_t>* bytes) {
  std::uint64_t value = 0;
  while (!bytes->empty()) {
    const std::uint8_t byte = bytes->front();
    *bytes = bytes->subspan(1);
    if (value >> 57 != 0) return std::nullopt;
    value = value << 7 | (byte & 0x7F);
    if (byte < 0x80) return value;
  }
  return std::nullopt;
}

int CompareNames(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (const int difference = Fold(a[i]) - Fold(b[i]); difference != 0) return difference;
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

std::optional<Directory> Directory::Read(const ByteSource& source, const ContainerHeader& header,
                                         Problems* problems) {
  const auto layout = ReadLayout(source, header, problems);
  if (!layout) return std::nullopt;

  Directory directory;
  for (std::uint64_t number = 0; number < layout->possible; ++number) {
    std::vector<std::uint8_t> chunk(layout->size);
    if (!source.ReadAt(layout->offset + number * layout->size, chunk)) {
      if (number < layout->count) {
        AddProblem(problems, {ProblemKind::kChunksMissing, number, layout->count});
      }
      break;
    }
    if (ChunkHasSignature(chunk, pmgl::kSignature)) {
      directory.AddListing({std::move(chunk), number, layout->reference_step}, problems);
    } else if (!ChunkHasSignature(chunk, pmgi::kSignature) || number <= layout->last_listing) {
      // Past the number that both statements agree on, the first stranger ends the directory.
      if (number >= layout->count) break;
      AddProblem(problems, {ProblemKind::kChunkUnknown, number, 0});
    }
  }
  directory.IndexNames();
  return directory;
}

void Directory::AddListing(Listing listing, Problems* problems) {
  const std::span<const std::uint8_t> chunk = chunks_.emplace_back(std::move(listing.bytes));
  const std::size_t count = LoadLe16(chunk.data() + chunk.size() - kEntryCountSize);
  const std::uint32_t free_length = LoadLe32(chunk.data() + pmgl::kFreeLength);
  // Both the count and the free length tell where the entries end. As long as one of them says that
  // there is another one, try to read it.
  const std::size_t end = chunk.size() - kEntryCountSize;
  const bool end_stated = free_length >= kEntryCountSize && free_length <= end - pmgl::kEntries;
  const std::size_t entries_end = end_stated ? chunk.size() - free_length : pmgl::kEntries;
  std::size_t at = pmgl::kEntries;
  std::size_t read = 0;
  while (read < count || at < entries_end) {
    std::span<const std::uint8_t> rest = chunk.subspan(at, end - at);
    Entry entry;
    if (TakeEntry(&rest, &entry)) {
      entries_.push_back(entry);
      at = end - rest.size();
      ++read;
      continue;
    }
    // Nothing after the place where the free space should start: the count is wrong.
    if (at == entries_end) break;
    const std::size_t next = NextReference(chunk, at, count, listing.reference_step);
    AddProblem(problems, {ProblemKind::kEntryBroken, listing.number, read});
    if (next == 0) return;
    // Goes on where the directory has a mark; the entries skipped count as read.
    at = pmgl::kEntries + LoadLe16(chunk.data() + end - next * kQuickReferenceSize);
    read = next * listing.reference_step;
  }
  if (read != count) {
    AddProblem(problems, {ProblemKind::kEntryCount, count, read, std::to_string(listing.number)});
  }
}

void Directory::IndexNames() {
  by_name_.resize(entries_.size());
  std::iota(by_name_.begin(), by_name_.end(), 0);
  std::stable_sort(by_name_.begin(), by_name_.end(), [this](std::uint32_t a, std::uint32_t b) {
    return CompareNames(entries_[a].name, entries_[b].name) < 0;
  });
}

const Entry* Directory::Find(std::string_view name) const {
  const auto found = std::lower_bound(by_name_.begin(), by_name_.end(), name,
                                      [this](std::uint32_t place, std::string_view wanted) {
                                        return CompareNames(entries_[place].name, wanted) < 0;
                                      });
  if (found == by_name_.end() || CompareNames(entries_[*found].name, name) != 0) return nullptr;
  return &entries_[*found];
}

}  // namespace scrivo

#include "chm/directory_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bytes/little_endian.h"
#include "chm/container_format.h"
#include "chm/directory.h"

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kChunkSize = itsp::kUsualChunkSize;

std::vector<DirectoryEntry> MakeEntries(std::size_t count, std::size_t name_size = 12) {
  std::vector<DirectoryEntry> entries;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    std::string name = "/";
    name.append(7 - number.size(), '0').append(number);
    name.resize(std::max(name_size, name.size()), 'x');
    entries.push_back({name, kSectionCompressed, 1000 * i, i});
  }
  return entries;
}

std::uint32_t Field(const Bytes& bytes, std::size_t offset) { return LoadLe32(&bytes[offset]); }

std::span<const std::uint8_t> ChunkAt(const Bytes& directory, std::uint32_t number) {
  return std::span(directory).subspan(itsp::kLength + number * kChunkSize, kChunkSize);
}

std::string TakeName(std::span<const std::uint8_t>* bytes) {
  const std::size_t size = static_cast<std::size_t>(*TakeEncint(bytes));
  const std::string name(bytes->begin(), bytes->begin() + static_cast<std::ptrdiff_t>(size));
  *bytes = bytes->subspan(size);
  return name;
}

// The bytes of a chunk's entries, without header, free space and quick references.
std::span<const std::uint8_t> EntryBytes(std::span<const std::uint8_t> chunk, std::size_t header) {
  const std::size_t free = LoadLe32(&chunk[pmgl::kFreeLength]);
  return chunk.subspan(header, kChunkSize - free - header);
}

// Checks count and quick references of a chunk whose entries `skip` takes off one by one.
template <typename Skip>
void CheckQuickReferences(std::span<const std::uint8_t> chunk, std::size_t header, Skip skip) {
  std::span<const std::uint8_t> rest = EntryBytes(chunk, header);
  const std::size_t all = rest.size();
  std::size_t count = 0;
  std::size_t quick_at = kChunkSize - 2;
  for (; !rest.empty(); ++count) {
    if (count > 0 && count % 5 == 0) {
      quick_at -= 2;
      ASSERT_EQ(LoadLe16(&chunk[quick_at]), all - rest.size()) << "entry " << count;
    }
    skip(&rest);
  }
  EXPECT_EQ(LoadLe16(&chunk[kChunkSize - 2]), count);
  EXPECT_GE(quick_at, header + all);
}

void SkipListed(std::span<const std::uint8_t>* rest) {
  TakeName(rest);
  for (int number = 0; number < 3; ++number) ASSERT_TRUE(TakeEncint(rest));
}

// Looks a name up as the viewer does: from the root through the index to a listing chunk.
bool FindThroughIndex(const Bytes& directory, const std::string& wanted, DirectoryEntry* found) {
  const std::uint32_t levels = Field(directory, itsp::kDepth);
  std::uint32_t number = Field(directory, levels > 1 ? itsp::kRootChunk : itsp::kFirstListing);
  for (std::uint32_t depth = levels; depth > 1; --depth) {
    const std::span<const std::uint8_t> chunk = ChunkAt(directory, number);
    if (!std::equal(pmgi::kSignature.begin(), pmgi::kSignature.end(), chunk.begin())) return false;
    std::span<const std::uint8_t> rest = EntryBytes(chunk, pmgi::kEntries);
    while (!rest.empty()) {
      if (CompareNames(TakeName(&rest), wanted) > 0) break;
      number = static_cast<std::uint32_t>(*TakeEncint(&rest));
    }
  }
  std::span<const std::uint8_t> rest = EntryBytes(ChunkAt(directory, number), pmgl::kEntries);
  while (!rest.empty()) {
    found->name = TakeName(&rest);
    found->section = *TakeEncint(&rest);
    found->offset = *TakeEncint(&rest);
    found->length = *TakeEncint(&rest);
    if (found->name == wanted) return true;
  }
  return false;
}

TEST(DirectoryWriterTest, WritesOneEmptyChunkForNoEntries) {
  const Bytes directory = WriteDirectory({});
  ASSERT_EQ(directory.size(), itsp::kLength + kChunkSize);
  EXPECT_EQ(Field(directory, itsp::kDepth), 1u);
  EXPECT_EQ(Field(directory, itsp::kChunkCount), 1u);
  EXPECT_EQ(EntryBytes(ChunkAt(directory, 0), pmgl::kEntries).size(), 0u);
  EXPECT_EQ(LoadLe16(&directory[directory.size() - 2]), 0u);
}

TEST(DirectoryWriterTest, WritesTheHeaderToTheLastByte) {
  const Bytes directory = WriteDirectory(MakeEntries(1));
  const Bytes header(directory.begin(), directory.begin() + itsp::kLength);
  EXPECT_EQ(
      header,
      (Bytes{'I',  'T',  'S',  'P',  1,    0,    0,    0,    0x54, 0,    0,    0,    0x0A, 0,
             0,    0,    0,    0x10, 0,    0,    2,    0,    0,    0,    1,    0,    0,    0,
             0xFF, 0xFF, 0xFF, 0xFF, 0,    0,    0,    0,    0,    0,    0,    0,    0xFF, 0xFF,
             0xFF, 0xFF, 1,    0,    0,    0,    0x09, 0x04, 0,    0,    0x6A, 0x92, 0x02, 0x5D,
             0x2E, 0x21, 0xD0, 0x11, 0x9D, 0xF9, 0x00, 0xA0, 0xC9, 0x22, 0xE6, 0xEC, 0x54, 0,
             0,    0,    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(DirectoryWriterTest, WritesAnEntryAsNameSectionOffsetLength) {
  const Bytes directory = WriteDirectory({{"/a.htm", kSectionCompressed, 0x4000, 200}});
  const std::span<const std::uint8_t> chunk = ChunkAt(directory, 0);
  const Bytes expected = {6, '/', 'a', '.', 'h', 't', 'm', 1, 0x81, 0x80, 0x00, 0x81, 0x48};
  const std::span<const std::uint8_t> written = EntryBytes(chunk, pmgl::kEntries);
  EXPECT_EQ(Bytes(written.begin(), written.end()), expected);
  EXPECT_EQ(LoadLe32(&chunk[pmgl::kPrevious]), kNoChunk);
  EXPECT_EQ(LoadLe32(&chunk[pmgl::kNext]), kNoChunk);
}

TEST(DirectoryWriterTest, KeepsOffsetsBeyond32Bits) {
  const DirectoryEntry big = {"/big", kSectionCompressed, 0xFEDCBA9876543210, 0x7FFFFFFFFFFFFFFF};
  DirectoryEntry found;
  ASSERT_TRUE(FindThroughIndex(WriteDirectory({{"/a"}, big}), "/big", &found));
  EXPECT_EQ(found.offset, big.offset);
  EXPECT_EQ(found.length, big.length);
}

TEST(DirectoryWriterTest, RefersToEveryFifthEntryButTheFirst) {
  for (const std::size_t count : {1, 5, 6, 10, 11, 16}) {
    const Bytes directory = WriteDirectory(MakeEntries(count));
    CheckQuickReferences(ChunkAt(directory, 0), pmgl::kEntries, SkipListed);
    const std::size_t references = (count - 1) / 5;
    const std::size_t below = kChunkSize - 2 - 2 * references - 2;
    EXPECT_EQ(LoadLe16(&ChunkAt(directory, 0)[below]), 0u) << count;
  }
}

TEST(DirectoryWriterTest, LinksTheListingChunksBothWays) {
  const Bytes directory = WriteDirectory(MakeEntries(1000));
  const std::uint32_t last = Field(directory, itsp::kLastListing);
  ASSERT_GT(last, 2u);
  for (std::uint32_t number = 0; number <= last; ++number) {
    const std::span<const std::uint8_t> chunk = ChunkAt(directory, number);
    EXPECT_EQ(LoadLe32(&chunk[pmgl::kPrevious]), number == 0 ? kNoChunk : number - 1);
    EXPECT_EQ(LoadLe32(&chunk[pmgl::kNext]), number == last ? kNoChunk : number + 1);
    CheckQuickReferences(chunk, pmgl::kEntries, SkipListed);
  }
}

TEST(DirectoryWriterTest, AddsOneIndexChunkOverAFewListings) {
  const Bytes directory = WriteDirectory(MakeEntries(1000));
  EXPECT_EQ(Field(directory, itsp::kDepth), 2u);
  EXPECT_EQ(Field(directory, itsp::kChunkCount), Field(directory, itsp::kLastListing) + 2);
  EXPECT_EQ(Field(directory, itsp::kRootChunk), Field(directory, itsp::kLastListing) + 1);
}

class DirectorySizeTest : public testing::TestWithParam<std::pair<std::size_t, std::size_t>> {};

TEST_P(DirectorySizeTest, LeadsToEveryEntryThroughTheIndex) {
  const auto [count, name_size] = GetParam();
  const std::vector<DirectoryEntry> entries = MakeEntries(count, name_size);
  const Bytes directory = WriteDirectory(entries);
  ASSERT_EQ(directory.size(), itsp::kLength + Field(directory, itsp::kChunkCount) * kChunkSize);
  for (std::size_t i = 0; i < count; i += 1 + i / 100) {
    DirectoryEntry found;
    ASSERT_TRUE(FindThroughIndex(directory, entries[i].name, &found)) << i;
    EXPECT_EQ(found.offset, entries[i].offset);
    EXPECT_EQ(found.length, entries[i].length);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, DirectorySizeTest,
                         testing::Values(std::pair{1u, 12u}, std::pair{5u, 12u}, std::pair{6u, 12u},
                                         std::pair{200u, 12u}, std::pair{5000u, 12u},
                                         std::pair{60000u, 40u}, std::pair{300u, kMaxEntryName}));

TEST(DirectoryWriterTest, AddsLevelsUntilOneChunkIsTheRoot) {
  // Two of these names fill half of a chunk each, so every level halves at best.
  const Bytes directory = WriteDirectory(MakeEntries(9, 2000));
  EXPECT_EQ(Field(directory, itsp::kLastListing), 4u);
  EXPECT_EQ(Field(directory, itsp::kDepth), 4u);  // 5 listings, then 3, 2 and 1
  EXPECT_EQ(Field(directory, itsp::kChunkCount), 5u + 6u);
  EXPECT_EQ(Field(directory, itsp::kRootChunk), 10u);
}

}  // namespace
}  // namespace scrivo

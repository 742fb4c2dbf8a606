#include "chm/container_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bytes/little_endian.h"
#include "chm/chm_reader.h"
#include "chm/container_format.h"
#include "tests/bytes/memory_store.h"
#include "tests/lzx/sample_data.h"

namespace scrivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Input {
  std::string name;
  Bytes bytes;
};

Bytes Write(const std::vector<Input>& inputs, const ContainerOptions& options = {}) {
  MemoryStore store;
  ContainerWriter writer(store, options);
  for (const Input& input : inputs) writer.AddCompressed(input.name, input.bytes);
  writer.AddPlain("/#SYSTEM", ToBytes("system"));
  writer.AddPlain("/#ITBITS", {});
  EXPECT_EQ(writer.Finish(), ContainerStatus::kOk);
  EXPECT_EQ(writer.FileSize(), store.bytes.size());
  return store.bytes;
}

std::unique_ptr<ChmReader> Open(const Bytes& file) {
  Problems problems;
  auto reader = ChmReader::Open(std::make_unique<MemorySource>(file), &problems);
  for (const Problem& problem : problems)
    ADD_FAILURE() << "problem " << static_cast<int>(problem.kind);
  return reader;
}

void ExpectReadable(const Bytes& file, const std::vector<Input>& inputs) {
  const auto reader = Open(file);
  ASSERT_NE(reader, nullptr);
  for (const Input& input : inputs) {
    const Entry* entry = reader->Find(input.name);
    ASSERT_NE(entry, nullptr) << input.name;
    EXPECT_EQ(entry->name, input.name);
    EXPECT_EQ(reader->ReadWhole(*entry), input.bytes) << input.name;
  }
}

std::vector<std::string> Names(const Bytes& file) {
  std::vector<std::string> names;
  const auto reader = Open(file);
  for (const Entry& entry : reader->Entries()) names.emplace_back(entry.name);
  return names;
}

std::string Numbered(std::string_view prefix, int number, std::string_view suffix) {
  std::string name(prefix);
  name += std::to_string(number);
  name += suffix;
  return name;
}

TEST(ContainerWriterTest, WritesWhatTheReaderReads) {
  const std::vector<Input> inputs = {{"/index.htm", PageBytes(40000, 1)},
                                     {"/images/photo.jpg", RandomBytes(150000, 2)},
                                     {"/empty.txt", {}},
                                     {"/images/a.gif", RandomBytes(1, 3)},
                                     {"/\xD0\x93\xD0\xBB/\xD1\x8F.htm", PageBytes(70000, 4)}};
  const Bytes file = Write(inputs);
  ExpectReadable(file, inputs);
  ExpectReadable(file, {{"/#SYSTEM", ToBytes("system")}, {"/#ITBITS", {}}});
}

TEST(ContainerWriterTest, AddsRootFoldersAndStorageEntriesInOrder) {
  const Bytes file = Write({{"/htm/Deep/b.htm", ToBytes("b")},
                            {"/a.htm", ToBytes("a")},
                            {"/HTM/c.htm", ToBytes("c")},
                            {"/htm/d.htm", ToBytes("d")},
                            {"/_first.htm", ToBytes("e")}});
  EXPECT_EQ(Names(file),
            (std::vector<std::string>{
                "/", "/#ITBITS", "/#SYSTEM", "/_first.htm", "/a.htm", "/HTM/", "/HTM/c.htm",
                "/htm/d.htm", "/htm/Deep/", "/htm/Deep/b.htm", std::string(kNameListName),
                std::string(kContentName), std::string(kControlDataName),
                std::string(kSpanInfoName), std::string(kTransformListName),
                std::string(kInstanceDataName), std::string(kResetTableName)}));
}

TEST(ContainerWriterTest, PlacesEntriesInTheOrderGiven) {
  const auto reader = Open(Write({{"/z.htm", ToBytes("zz")}, {"/a.htm", ToBytes("aaa")}}));
  EXPECT_EQ(reader->Find("/z.htm")->offset, 0u);
  EXPECT_EQ(reader->Find("/a.htm")->offset, 2u);
  EXPECT_EQ(reader->Find("/a.htm")->section, kSectionCompressed);
}

TEST(ContainerWriterTest, PutsEntriesWithoutBytesAtOffsetZero) {
  MemoryStore store;
  ContainerWriter writer(store, {});
  writer.AddCompressed("/a.htm", ToBytes("text"));
  writer.StartEntry("/$FIftiMain");
  writer.AddPlain("/#SYSTEM", ToBytes("system"));
  writer.AddPlain("/#ITBITS", {});
  ASSERT_EQ(writer.Finish(), ContainerStatus::kOk);
  const auto reader = Open(store.bytes);
  EXPECT_EQ(reader->Find("/$FIftiMain")->offset, 0u);
  EXPECT_EQ(reader->Find("/$FIftiMain")->section, kSectionCompressed);
  EXPECT_EQ(reader->Find("/#ITBITS")->offset, 0u);
}

TEST(ContainerWriterTest, OrdersTheUncompressedSectionAsTheOriginalDoes) {
  const auto names_by_offset = [](const Bytes& file) {
    const auto reader = Open(file);
    std::vector<std::pair<std::uint64_t, std::string>> placed;
    for (const Entry& entry : reader->Entries()) {
      if (entry.section == kSectionUncompressed && entry.length > 0) {
        placed.emplace_back(entry.offset, entry.name);
      }
    }
    std::sort(placed.begin(), placed.end());
    std::vector<std::string> names;
    for (const auto& [offset, name] : placed) names.push_back(name);
    return names;
  };
  const std::string list(kNameListName), transforms(kTransformListName), span(kSpanInfoName),
      control(kControlDataName), table(kResetTableName), content(kContentName);
  EXPECT_EQ(
      names_by_offset(Write({{"/a.htm", PageBytes(100000, 1)}})),
      (std::vector<std::string>{list, transforms, span, control, table, "/#SYSTEM", content}));
  EXPECT_EQ(
      names_by_offset(Write({{"/a.htm", PageBytes(1000, 1)}})),
      (std::vector<std::string>{list, transforms, span, control, "/#SYSTEM", content, table}));
}

TEST(ContainerWriterTest, WritesHeaderAndStorageEntriesToTheLastByte) {
  MemoryStore store;
  ContainerWriter writer(store, {.language = 0x419, .timestamp = 0x11223344, .threads = 1});
  writer.AddCompressed("/a.htm", PageBytes(100000, 1));
  ASSERT_EQ(writer.Finish(), ContainerStatus::kOk);
  const Bytes& file = store.bytes;
  const auto low = [](std::uint64_t value, int byte) {
    return static_cast<std::uint8_t>(value >> 8 * byte);
  };
  const std::uint64_t size = file.size();
  EXPECT_EQ(Bytes(file.begin(), file.begin() + 0x78), (Bytes{'I',
                                                             'T',
                                                             'S',
                                                             'F',
                                                             3,
                                                             0,
                                                             0,
                                                             0,
                                                             0x60,
                                                             0,
                                                             0,
                                                             0,
                                                             1,
                                                             0,
                                                             0,
                                                             0,
                                                             0x44,
                                                             0x33,
                                                             0x22,
                                                             0x11,
                                                             0x19,
                                                             0x04,
                                                             0,
                                                             0,
                                                             0x10,
                                                             0xfd,
                                                             0x01,
                                                             0x7c,
                                                             0xaa,
                                                             0x7b,
                                                             0xd0,
                                                             0x11,
                                                             0x9e,
                                                             0x0c,
                                                             0x00,
                                                             0xa0,
                                                             0xc9,
                                                             0x22,
                                                             0xe6,
                                                             0xec,
                                                             0x11,
                                                             0xfd,
                                                             0x01,
                                                             0x7c,
                                                             0xaa,
                                                             0x7b,
                                                             0xd0,
                                                             0x11,
                                                             0x9e,
                                                             0x0c,
                                                             0x00,
                                                             0xa0,
                                                             0xc9,
                                                             0x22,
                                                             0xe6,
                                                             0xec,
                                                             0x60,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0x18,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0x78,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0x54,
                                                             0x10,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0xCC,
                                                             0x10,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0xFE,
                                                             1,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             low(size, 0),
                                                             low(size, 1),
                                                             low(size, 2),
                                                             low(size, 3),
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0,
                                                             0}));

  const auto reader = Open(file);
  const auto bytes_of = [&reader](std::string_view name) {
    return *reader->ReadWhole(*reader->Find(name));
  };
  EXPECT_EQ(
      bytes_of(kNameListName),
      (Bytes{0x1E, 0, 2,   0, 12,  0, 'U', 0, 'n', 0, 'c', 0, 'o', 0, 'm', 0, 'p', 0, 'r', 0,
             'e',  0, 's', 0, 's', 0, 'e', 0, 'd', 0, 0,   0, 12,  0, 'M', 0, 'S', 0, 'C', 0,
             'o',  0, 'm', 0, 'p', 0, 'r', 0, 'e', 0, 's', 0, 's', 0, 'e', 0, 'd', 0, 0,   0}));
  EXPECT_EQ(bytes_of(kTransformListName),
            (Bytes{'{', 0, '7', 0, 'F', 0, 'C', 0, '2', 0, '8', 0, '9', 0, '4', 0, '0', 0, '-', 0,
                   '9', 0, 'D', 0, '3', 0, '1', 0, '-', 0, '1', 0, '1', 0, 'D', 0, '0', 0}));
  EXPECT_EQ(bytes_of(kControlDataName), (Bytes{6, 0, 0, 0, 'L', 'Z', 'X', 'C', 2, 0, 0, 0, 2, 0,
                                               0, 0, 2, 0, 0,   0,   1,   0,   0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(bytes_of(kSpanInfoName), (Bytes{0xA0, 0x86, 1, 0, 0, 0, 0, 0}));  // 100000
}

TEST(ContainerWriterTest, ListsWhereEveryFrameStarts) {
  const auto reader = Open(Write({{"/a.htm", PageBytes(100000, 1)}}));
  const Bytes table = *reader->ReadWhole(*reader->Find(kResetTableName));
  ASSERT_EQ(table.size(), 0x28u + 8 * 4);
  EXPECT_EQ(LoadLe32(&table[0]), 2u);
  EXPECT_EQ(LoadLe32(&table[4]), 4u);
  EXPECT_EQ(LoadLe32(&table[8]), 8u);
  EXPECT_EQ(LoadLe32(&table[0xC]), 0x28u);
  EXPECT_EQ(LoadLe64(&table[0x10]), 100000u);
  EXPECT_EQ(LoadLe64(&table[0x18]), reader->Find(kContentName)->length);
  EXPECT_EQ(LoadLe64(&table[0x20]), 0x8000u);
  std::uint64_t before = 0;
  EXPECT_EQ(LoadLe64(&table[0x28]), 0u);
  for (std::size_t at = 0x30; at < table.size(); at += 8) {
    EXPECT_GT(LoadLe64(&table[at]), before);
    before = LoadLe64(&table[at]);
  }
  EXPECT_LT(before, reader->Find(kContentName)->length);
}

TEST(ContainerWriterTest, CompressesInLargerIntervalsWhenAsked) {
  std::vector<Input> inputs;
  const Bytes page = PageBytes(40000, 1);  // any two together do not fit into the usual interval
  for (int i = 0; i < 30; ++i) inputs.push_back({Numbered("/", i, ".htm"), page});
  const std::size_t usual = Write(inputs).size();
  std::size_t before = usual;
  for (const std::size_t factor : {2, 4, 8}) {
    const Bytes file = Write(inputs, {.threads = 2, .interval = factor * kLzxUsualInterval});
    EXPECT_LT(file.size(), before);
    before = file.size();
    ExpectReadable(file, inputs);
    const auto reader = Open(file);
    const Bytes control = *reader->ReadWhole(*reader->Find(kControlDataName));
    EXPECT_EQ(LoadLe32(&control[control_data::kResetInterval]), 2 * factor);
    EXPECT_EQ(LoadLe32(&control[control_data::kWindow]), 2u);
  }
}

TEST(ContainerWriterTest, NeverEndsTheSectionWithAFrameOrAByteBefore) {
  const auto span = [](std::size_t size) {
    const auto reader = Open(Write({{"/a", PageBytes(size, 7)}}));
    const Bytes info = *reader->ReadWhole(*reader->Find(kSpanInfoName));
    const Bytes table = *reader->ReadWhole(*reader->Find(kResetTableName));
    EXPECT_EQ(LoadLe64(&table[0x10]), LoadLe64(&info[0]));
    EXPECT_EQ(LoadLe32(&table[4]), LoadLe64(&info[0]) / 0x8000 + 1);
    return LoadLe64(&info[0]);
  };
  EXPECT_EQ(span(0), 1u);
  EXPECT_EQ(span(1), 1u);
  EXPECT_EQ(span(0x7FFE), 0x7FFEu);
  EXPECT_EQ(span(0x7FFF), 0x8001u);
  EXPECT_EQ(span(0x8000), 0x8001u);
  EXPECT_EQ(span(0x8001), 0x8001u);
  EXPECT_EQ(span(0xFFFF), 0x10001u);
  EXPECT_EQ(span(0x10000), 0x10001u);
  EXPECT_EQ(span(0x18000), 0x18001u);
}

TEST(ContainerWriterTest, ReadsBackAtTheBordersOfFramesAndIntervals) {
  for (const std::size_t border : {0x8000u, 0x10000u, 0x20000u}) {
    for (const std::size_t size : {border - 1, border + 0, border + 1}) {
      const std::vector<Input> inputs = {{"/a", PageBytes(size, 1)}, {"/b", PageBytes(3, 2)}};
      ExpectReadable(Write(inputs), inputs);
    }
  }
}

TEST(ContainerWriterTest, GivesTheSameBytesForAnyNumberOfThreads) {
  std::vector<Input> inputs;
  for (int i = 0; i < 60; ++i) {
    inputs.push_back({Numbered("/page", i, ".htm"), PageBytes(30000 + 997u * i, i)});
  }
  const Bytes expected = Write(inputs, {.threads = 1});
  EXPECT_EQ(Write(inputs, {.threads = 2}), expected);
  EXPECT_EQ(Write(inputs, {.threads = 8}), expected);
  ExpectReadable(expected, inputs);
}

TEST(ContainerWriterTest, AppendsToTheEntryStartedLast) {
  MemoryStore store;
  ContainerWriter writer(store, {});
  const Bytes page = PageBytes(90000, 1);
  writer.StartEntry("/a");
  for (std::size_t at = 0; at < page.size(); at += 900) {
    writer.Append(std::span(page).subspan(at, 900));
  }
  ASSERT_EQ(writer.Finish(), ContainerStatus::kOk);
  ExpectReadable(store.bytes, {{"/a", page}});
}

TEST(ContainerWriterTest, HoldsManyThousandEntriesAndLongNames) {
  std::vector<Input> inputs;
  for (int i = 0; i < 5000; ++i) {
    inputs.push_back(
        {Numbered(Numbered("/f", i % 50, "/"), i, ".htm"), ToBytes(std::to_string(i))});
  }
  inputs.push_back({std::string("/").append(kMaxEntryName - 1, 'n'), ToBytes("long")});
  ExpectReadable(Write(inputs), inputs);
}

TEST(ContainerWriterTest, MovesContentLargerAndSmallerThanWhatGoesBeforeIt) {
  const std::vector<Input> large = {{"/a", RandomBytes(5 << 20, 1)}};
  ExpectReadable(Write(large), large);
  std::vector<Input> small;
  for (int i = 0; i < 500; ++i) {
    small.push_back({Numbered("/", i, std::string(100, 'x')), ToBytes("x")});
  }
  ExpectReadable(Write(small), small);
}

TEST(ContainerWriterTest, RefusesANameTwiceInAnyCase) {
  MemoryStore store;
  ContainerWriter writer(store, {});
  writer.AddCompressed("/Index.htm", ToBytes("1"));
  writer.AddCompressed("/a.htm", ToBytes("2"));
  writer.AddCompressed("/index.HTM", ToBytes("3"));
  EXPECT_EQ(writer.Finish(), ContainerStatus::kDuplicateName);
  EXPECT_EQ(CompareNames(writer.BadName(), "/index.htm"), 0);
}

TEST(ContainerWriterTest, RefusesNamesThatDoNotFit) {
  for (const std::size_t size : {std::size_t{0}, kMaxEntryName + 1}) {
    MemoryStore store;
    ContainerWriter writer(store, {});
    writer.AddCompressed(std::string(size, 'x'), ToBytes("1"));
    EXPECT_EQ(writer.Status(), ContainerStatus::kBadName);
    EXPECT_EQ(writer.BadName().size(), size);
    EXPECT_EQ(writer.Finish(), ContainerStatus::kBadName);
  }
}

TEST(ContainerWriterTest, AsksWhetherToStopBeforeEachPiece) {
  constexpr std::size_t kPieces = 2;
  const Bytes bytes = RandomBytes(kPieces << 20, 1);
  const auto write = [&](std::size_t questions, MemoryStore* store) {
    std::size_t asked = 0;
    ContainerWriter writer(*store, {.stop_wanted = [&] { return ++asked > questions; }});
    writer.AddCompressed("/a", bytes);
    EXPECT_GE(asked, std::min(questions, kPieces));
    EXPECT_EQ(writer.Status(),
              questions < kPieces ? ContainerStatus::kStopped : ContainerStatus::kOk);
    const ContainerStatus status = writer.Finish();
    EXPECT_EQ(asked, std::min(questions + 1, 2 * kPieces + 1));
    return status;
  };
  MemoryStore whole;
  // What cannot be compressed grows a little, and needs a piece more to be moved.
  ASSERT_EQ(write(2 * kPieces + 1, &whole), ContainerStatus::kOk);
  for (std::size_t questions = 0; questions <= 2 * kPieces; ++questions) {
    MemoryStore store;
    EXPECT_EQ(write(questions, &store), ContainerStatus::kStopped) << questions;
    EXPECT_LT(store.writes, whole.writes) << questions;
    EXPECT_FALSE(store.bytes.size() >= 4 &&
                 LoadLe32(store.bytes.data()) == LoadLe32(whole.bytes.data()))
        << questions << ": the header is the last to be written";
  }
}

TEST(ContainerWriterTest, ReportsEveryWriteThatFails) {
  const auto write = [](MemoryStore& store) {
    ContainerWriter writer(store, {});
    writer.AddCompressed("/a", RandomBytes(9 << 17, 1));
    writer.AddPlain("/#SYSTEM", ToBytes("system"));
    return writer.Finish();
  };
  MemoryStore whole;
  ASSERT_EQ(write(whole), ContainerStatus::kOk);
  constexpr std::size_t kIntervals = 18;
  ASSERT_GT(whole.writes, kIntervals + 4);
  for (std::size_t works = 0; works < whole.writes; ++works) {
    // The writes of intervals are alike: one in the middle stands for those between the first and
    // the last.
    if (works == 2 || works == kIntervals / 2 + 1) works += kIntervals / 2 - 2;
    MemoryStore store;
    store.writes_that_work = works;
    EXPECT_EQ(write(store), ContainerStatus::kWriteFailed) << works;
    EXPECT_EQ(store.writes, works + 1) << "nothing more is written after a failure";
  }
  MemoryStore unreadable;
  unreadable.reads_work = false;
  EXPECT_EQ(write(unreadable), ContainerStatus::kWriteFailed);
}

}  // namespace
}  // namespace scrivo

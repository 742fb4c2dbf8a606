#include <gtest/gtest.h>

#include <string>

#include "bytes/little_endian.h"
#include "hhc/strings_table.h"
#include "hhc/system_stream.h"
#include "hhc/toc_index.h"
#include "hhc/topic_table.h"
#include "hhc/window_stream.h"
#include "project/project_lines.h"
#include "search/scale_root.h"
#include "search/search_index.h"

namespace scrivo {
namespace {

std::uint32_t Dword(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
  return LoadLe32(bytes.data() + offset);
}

TEST(StringsTable, StartsWithTheEmptyStringAndSharesOnRequest) {
  StringsTable strings;
  EXPECT_EQ(strings.Add(""), 0u);
  EXPECT_EQ(strings.Share("ab"), 1u);
  EXPECT_EQ(strings.Share("ab"), 1u);
  EXPECT_EQ(strings.Add("ab"), 4u);
  EXPECT_EQ(std::string(strings.Bytes().begin(), strings.Bytes().end()),
            std::string("\0ab\0ab\0", 7));
}

TEST(StringsTable, KeepsStringsOnOnePage) {
  StringsTable strings;
  strings.Add(std::string(4000, 'a'));
  EXPECT_EQ(strings.Add(std::string(93, 'b')), 4002u);
  EXPECT_EQ(strings.Add("c"), 4096u);
  strings.Add(std::string(9000, 'd'));
  EXPECT_EQ(strings.Bytes().size(), 3 * 4096u);
}

TEST(AddressHash, GivesTheHashesOfRealFiles) {
  EXPECT_EQ(AddressHash("Index.hhk"), 0x18FFD71Bu);
  EXPECT_EQ(AddressHash("Contents.hhc"), 0xB3FE0CB7u);
  EXPECT_EQ(AddressHash("license.htm"), 0xF1055360u);
  EXPECT_EQ(AddressHash("a\\b"), AddressHash("a/b"));
  EXPECT_EQ(AddressHash(""), 1u);
}

TEST(TopicTable, TakesAddressesInAnyCaseAsOneTopic) {
  TopicTable topics;
  EXPECT_EQ(topics.Add("A.htm"), 0u);
  EXPECT_EQ(topics.Add("b.htm#x"), 1u);
  EXPECT_EQ(topics.Add("a.HTM"), 0u);
  EXPECT_EQ(topics.At(0).address, "A.htm");
  EXPECT_FALSE(topics.At(1).is_file);
  EXPECT_EQ(topics.Find("a.htm"), 0u);
  EXPECT_FALSE(topics.Find("c.htm"));
}

TEST(TopicTable, SortsUrlsByHashInPagesOf341) {
  TopicTable topics;
  for (int i = 0; i < 700; ++i) topics.Add("page" + std::to_string(i) + ".htm");
  const TopicStreams streams = topics.Write();
  EXPECT_EQ(streams.topics.size(), 700 * 16u);
  EXPECT_EQ(streams.url_table.size(), 2 * 4096u + 18 * 12);
  EXPECT_EQ(Dword(streams.url_table, 4092), 4096u);
  for (std::uint32_t i = 0; i < 700; ++i) {
    const std::uint32_t url = Dword(streams.topics, i * 16 + 8);
    EXPECT_EQ(Dword(streams.url_table, url + 4), i);
    EXPECT_EQ(Dword(streams.url_table, url), AddressHash(topics.At(i).address));
    const std::uint32_t text = Dword(streams.url_table, url + 8);
    EXPECT_STREQ(reinterpret_cast<const char*>(streams.url_strings.data() + text + 8),
                 topics.At(i).address.c_str());
    EXPECT_EQ(text / 4096, (text + 9 + topics.At(i).address.size() - 1) / 4096);
  }
}

TEST(TopicTable, PutsWebAddressesBeforeTheEntryThatUsesThem) {
  TopicTable topics;
  topics.At(topics.Add("a.htm")).web_address = "http://x/";
  const TopicStreams streams = topics.Write();
  EXPECT_EQ(Dword(streams.url_strings, 11), 1u);
  EXPECT_STREQ(reinterpret_cast<const char*>(streams.url_strings.data() + 1), "http://x/");
}

TocNode Node(int level, std::uint32_t topic) { return {level, topic, 0, false}; }

TEST(TocIndex, NumbersEntriesBreadthFirst) {
  const TocIndex tree({Node(0, 10), Node(1, 11), Node(2, 12), Node(0, 13), Node(1, 14)});
  EXPECT_EQ(tree.BreadthFirst(), (std::vector<std::size_t>{0, 3, 1, 4, 2}));
  EXPECT_EQ(tree.EntryOffset(0), 0x1000u);
  EXPECT_EQ(tree.EntryOffset(3), 0x101Cu);
  EXPECT_EQ(tree.EntryOffset(1), 0x1038u);
  EXPECT_EQ(tree.EntryOffset(4), 0x1054u);
  EXPECT_EQ(tree.EntryOffset(2), 0x1068u);
  const auto bytes = tree.Write();
  EXPECT_EQ(Dword(bytes, 0x1004), 0x10Du);
  EXPECT_EQ(Dword(bytes, 0x1010), 0x101Cu);  // next sibling
  EXPECT_EQ(Dword(bytes, 0x1014), 0x1038u);  // first child
  EXPECT_EQ(Dword(bytes, 0x1054 + 4), 8u);
  EXPECT_EQ(Dword(bytes, 0x1054 + 12), 0x101Cu);  // parent
  EXPECT_EQ(Dword(bytes, 8), 3u);                 // groups
  const std::uint32_t list = Dword(bytes, 12);
  for (std::uint32_t i = 0; i < 5; ++i) EXPECT_EQ(Dword(bytes, list + 4 * i), 10 + i);
  const std::uint32_t groups = Dword(bytes, 4);
  EXPECT_EQ(groups % 16, 0u);
  EXPECT_EQ(Dword(bytes, groups), 0x1000u);
  EXPECT_EQ(Dword(bytes, groups + 4), 0x29Au);
  EXPECT_EQ(Dword(bytes, groups + 8), list);
  EXPECT_EQ(Dword(bytes, groups + 12), 3u);
  EXPECT_EQ(Dword(bytes, groups + 16), 0x1038u);
}

TEST(TocIndex, KeepsEntriesOnOnePage) {
  std::vector<TocNode> nodes;
  for (std::uint32_t i = 0; i < 1000; ++i) nodes.push_back(Node(i % 3 == 1 ? 1 : 0, i));
  const TocIndex tree(std::move(nodes));
  for (std::size_t i = 0; i < 1000; ++i) {
    EXPECT_LE(tree.EntryOffset(i) % 4096 + 20, 4096u);
  }
}

TEST(TocIndex, StandsAnyLevelsAndAnEmptyOne) {
  EXPECT_EQ(TocIndex({}).Write().size(), 0x1000u);
  std::vector<TocNode> nodes;
  for (int i = 0; i < 50000; ++i) nodes.push_back(Node(i, 0));
  EXPECT_EQ(TocIndex(std::move(nodes)).BreadthFirst().size(), 50000u);
  const TocIndex jump({Node(7, 0), Node(-3, 1)});
  EXPECT_EQ(jump.BreadthFirst().size(), 2u);
}

TEST(WriteWindows, WritesTheExampleOfARealProject) {
  StringsTable strings;
  const ProjectWindow window{
      "main", SplitQuoted("\"Help\",\"a.hhc\",\"a.hhk\",\"a.htm\",\"a.htm\",,,,,0x42120,,0x3006,"
                          "[93,94,816,705],,,,,,,0")};
  const auto bytes = WriteWindows({window}, false, &strings);
  ASSERT_EQ(bytes.size(), 8u + 0xC4);
  EXPECT_EQ(Dword(bytes, 0), 1u);
  EXPECT_EQ(Dword(bytes, 4), 0xC4u);
  EXPECT_EQ(Dword(bytes, 8 + 0x0C), 0x512u);
  EXPECT_EQ(Dword(bytes, 8 + 0x10), 0x42120u);
  EXPECT_EQ(Dword(bytes, 8 + 0x20), 93u);
  EXPECT_EQ(Dword(bytes, 8 + 0x2C), 705u);
  EXPECT_EQ(Dword(bytes, 8 + 0x70), 0x3006u);
  EXPECT_EQ(Dword(bytes, 8 + 0x68), Dword(bytes, 8 + 0x6C));  // the same page, one string
  EXPECT_STREQ(reinterpret_cast<const char*>(strings.Bytes().data() + Dword(bytes, 8 + 0x60)),
               "a.hhc");
  EXPECT_EQ(WriteWindows({window}, true, &strings).size(), 8u + 0xBC);
}

TEST(WriteSystem, WritesRecordsInTheOriginalsOrder) {
  SystemFacts facts;
  facts.compiler = "c";
  facts.contents_file = "a.hhc";
  facts.default_topic = "a.htm";
  facts.title = "t";
  facts.output_stem = "help";
  facts.contents_hash = 5;
  facts.custom_tabs = {{"tab", "prog"}};
  const auto bytes = WriteSystem(facts, std::vector<std::uint8_t>(4096));
  std::vector<int> codes;
  for (std::size_t at = 4; at < bytes.size(); at += 4u + LoadLe16(bytes.data() + at + 2)) {
    codes.push_back(LoadLe16(bytes.data() + at));
  }
  EXPECT_EQ(codes, (std::vector<int>{10, 9, 4, 2, 3, 6, 0, 11, 12, 13, 14, 15}));
}

TEST(FileTime, CountsFrom1601) { EXPECT_EQ(FileTime(0), 116444736000000000u); }

TEST(ScaleRoot, CodesTheExampleOfARealFile) {
  std::string out;
  ScaleRootWriter bits(&out);
  bits.Put(3, 1);
  bits.Put(1, 1);
  bits.Put(69, 4);
  bits.Align();
  EXPECT_EQ(out, "\xAF\x0A");
}

TEST(ScaleRoot, TakesTheRootThatCostsLeast) {
  BitLengths lengths{};
  lengths[2] = 100;
  EXPECT_EQ(BestRootSize(lengths), 1);  // 2 would cost the same
  lengths[6] = 1000;
  EXPECT_EQ(BestRootSize(lengths), 5);
  EXPECT_EQ(BestRootSize(BitLengths{}), 0);
}

TEST(WriteSearchObject, HasTheSizesOfTheOriginal) {
  EXPECT_EQ(WriteSearchObject(0x409, {}).size(), 2751u);
  EXPECT_EQ(WriteSearchObject(0xC0A, {}).size(), 2715u);
  EXPECT_EQ(WriteSearchObject(0x411, {}).size(), 2700u);
  const auto bytes = WriteSearchObject(0x407, {"der", "die"});
  EXPECT_EQ(bytes.size(), 2715u + 40 + 10 + 2);
  EXPECT_EQ(Dword(bytes, 0x2C), 7u);
}

TEST(WriteSearchIndex, AsksWhetherToStopBeforeEachWord) {
  const auto write = [](int questions) {
    WordCollector collector;
    for (const char* word : {"one", "two", "three"}) collector.Add(word, false);
    Postings postings;
    postings.AddPage(0, collector.Finish());
    SpilledBytes index;
    return WriteSearchIndex(&postings, 0x409, &index, [&] { return --questions < 0; });
  };
  for (const int questions : {0, 1, 2}) {
    EXPECT_EQ(write(questions), SearchIndexStatus::kStopped) << questions;
  }
  EXPECT_EQ(write(3), SearchIndexStatus::kOk);
}

TEST(WriteSearchIndex, IsEmptyWithoutWords) {
  Postings postings;
  SpilledBytes index;
  EXPECT_EQ(WriteSearchIndex(&postings, 0x409, &index), SearchIndexStatus::kOk);
  EXPECT_EQ(index.Size(), 0u);
}

}  // namespace
}  // namespace scrivo

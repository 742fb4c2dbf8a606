#include "search/spilled_words.h"

#include <gtest/gtest.h>

#include <random>

#include "bytes/spilled_bytes.h"
#include "search/postings.h"
#include "search/search_index.h"
#include "tests/bytes/memory_store.h"

namespace scrivo {
namespace {

std::vector<std::uint8_t> BytesOf(SpilledBytes* bytes) {
  std::vector<std::uint8_t> all;
  bytes->Take([&all](std::span<const std::uint8_t> piece) {
    all.insert(all.end(), piece.begin(), piece.end());
  });
  return all;
}

// The index of made-up pages with words of many lengths, some in titles, some on every page.
struct MadeIndex {
  SearchIndexStatus status;
  std::vector<std::uint8_t> bytes;
};

MadeIndex IndexOfPages(SpillSpace* space, std::uint32_t pages) {
  std::mt19937 random(5);
  WordCollector collector;
  Postings postings;
  postings.LeaveOut({"w7"});
  if (space != nullptr) postings.SpillTo(space);
  for (std::uint32_t page = 0; page < pages; ++page) {
    collector.Add("title" + std::to_string(page / 9), true);
    for (int i = 0; i < 200; ++i) {
      std::string word(1, 'w');
      word += std::to_string(random() % (1u << random() % 14));
      word.append(random() % 3, 'x');
      collector.Add(word, i < 2);
    }
    // Topics without words lie between.
    postings.AddPage(3 * page + page % 2, collector.Finish());
  }
  SpilledBytes index(space);
  const SearchIndexStatus status = WriteSearchIndex(&postings, 0x409, &index);
  return {status, BytesOf(&index)};
}

TEST(SpilledSearchIndex, IsTheSameAsOneMadeInMemory) {
  constexpr std::uint32_t kPages = 300;
  const MadeIndex expected = IndexOfPages(nullptr, kPages);
  ASSERT_EQ(expected.status, SearchIndexStatus::kOk);
  ASSERT_GT(expected.bytes.size(), 100000u);
  // One run for each page, runs of several pages, and a run that only the end makes.
  for (const std::size_t memory : {std::size_t{0}, std::size_t{1500000}, std::size_t{1} << 22}) {
    MemoryStore store;
    SpillSpace space(&store, memory);
    const MadeIndex spilled = IndexOfPages(&space, kPages);
    EXPECT_EQ(spilled.status, SearchIndexStatus::kOk);
    EXPECT_TRUE(spilled.bytes == expected.bytes) << memory;
    if (memory < 1500001) {
      EXPECT_FALSE(store.bytes.empty()) << memory;
    }
  }
}

TEST(SpilledSearchIndex, TellsWhenTheSpaceFails) {
  MemoryStore all;
  SpillSpace whole(&all, 0);
  IndexOfPages(&whole, 20);
  for (std::size_t works = 0; works < all.writes; works += 7) {
    MemoryStore store;
    store.writes_that_work = works;
    SpillSpace space(&store, 0);
    EXPECT_EQ(IndexOfPages(&space, 20).status, SearchIndexStatus::kNoSpace) << works;
  }
  MemoryStore unreadable;
  unreadable.reads_work = false;
  SpillSpace space(&unreadable, 0);
  EXPECT_EQ(IndexOfPages(&space, 20).status, SearchIndexStatus::kNoSpace);
}

TEST(SpilledWords, MergesRunsByWordAndPassesOverListsThatAreNotTaken) {
  MemoryStore store;
  SpillSpace space(&store, 0);
  SpilledWords words(&space);
  words.StartRun();
  words.Add({"a", false, 1, 2, 2, 1, 0}, "first");
  words.Add({"c", true, 1, 2, 2, 1, 0}, "second");
  words.EndRun();
  words.StartRun();
  words.Add({"a", true, 1, 5, 5, 1, 0}, "third");
  words.Add({"c", true, 2, 5, 9, 4, 0}, std::string(700000, 'x'));
  words.EndRun();
  EXPECT_EQ(words.Runs(), 2u);
  for (int pass = 0; pass < 2; ++pass) {
    words.StartMerge();
    std::vector<std::string> found;
    while (true) {
      const auto& parts = words.NextParts();
      if (parts.empty()) break;
      std::string text = parts[0].word;
      if (parts[0].in_title) text += "*";
      for (std::size_t i = 0; i < parts.size(); ++i) {
        text.append(" ").append(std::to_string(parts[i].last_topic));
        if (pass == 1) continue;
        std::string list;
        words.TakeList(i, &list);
        EXPECT_EQ(list.size(), parts[i].list_bytes);
        text.append(":").append(list.substr(0, 6));
      }
      found.push_back(text);
    }
    EXPECT_EQ(found, pass == 0 ? (std::vector<std::string>{"a 2:first", "a* 5:third",
                                                           "c* 2:second 9:xxxxxx"})
                               : (std::vector<std::string>{"a 2", "a* 5", "c* 2 9"}));
  }
}

TEST(SpilledBytes, KeepsWhatWasPutAndReplacedWhereverItLies) {
  for (const std::size_t memory : {std::size_t{0}, std::size_t{40}, std::size_t{1} << 20}) {
    MemoryStore store;
    SpillSpace space(&store, memory);
    space.Append(std::vector<std::uint8_t>(5, 1));
    SpilledBytes bytes(&space);
    bytes.Put("0123456789");
    bytes.PadTo(14);
    bytes.Put32(0x44332211);
    bytes.Set32(8, 0x64636261);  // on the border for the middle size
    bytes.Put("end");
    bytes.Set16(0, 0x4241);
    const std::string expected =
        std::string("AB234567abcd").append(2, '\0').append("\x11\x22\x33\x44").append("end");
    const auto all = BytesOf(&bytes);
    EXPECT_EQ(std::string(all.begin(), all.end()), expected) << memory;
    EXPECT_EQ(bytes.Size(), expected.size());
  }
}

}  // namespace
}  // namespace scrivo

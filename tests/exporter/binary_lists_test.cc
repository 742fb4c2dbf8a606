#include "exporter/binary_lists.h"

#include <gtest/gtest.h>

#include "bytes/byte_writer.h"

namespace scrivo {
namespace {

// Streams with topics that are told to it, laid out as compilers do.
class TopicMaker {
 public:
  // The number of a new topic. An empty title is none.
  std::uint32_t Add(std::string_view title, std::string_view address, std::string_view web = "") {
    std::uint32_t web_place = 0;
    if (!web.empty()) {
      web_place = static_cast<std::uint32_t>(url_strings_.Size());
      url_strings_.PutText(web);
      url_strings_.Put8(0);
    }
    const std::size_t place = url_strings_.Size();
    url_strings_.Put32(web_place);
    url_strings_.Put32(0);
    url_strings_.PutText(address);
    url_strings_.Put8(0);
    topics_.Put32(0);
    topics_.Put32(title.empty() ? 0xFFFFFFFF : Text(title));
    topics_.Put32(static_cast<std::uint32_t>(url_table_.Size()));
    topics_.Put32(0);
    url_table_.Put32(0x1234);
    url_table_.Put32(count_);
    url_table_.Put32(static_cast<std::uint32_t>(place));
    return count_++;
  }
  std::uint32_t Text(std::string_view text) {
    const std::size_t place = strings_.Size();
    strings_.PutText(text);
    strings_.Put8(0);
    return static_cast<std::uint32_t>(place);
  }
  TopicBytes Bytes() const {
    return {topics_.Bytes(), url_table_.Bytes(), url_strings_.Bytes(), strings_.Bytes()};
  }

 private:
  static ByteWriter Started() {
    ByteWriter bytes;
    bytes.Put8(0);
    return bytes;
  }
  ByteWriter topics_, url_table_, url_strings_ = Started(), strings_ = Started();
  std::uint32_t count_ = 0;
};

constexpr std::uint32_t kEntries = 0x1000;

class BinaryContents : public testing::Test {
 protected:
  BinaryContents() {
    contents.Put32(kEntries);
    contents.PadTo(kEntries);
  }
  void Leaf(std::uint32_t flags, std::uint32_t value, std::uint32_t next) {
    for (const std::uint32_t field : {0u, flags, value, 0u, next}) contents.Put32(field);
  }
  void Book(std::uint32_t flags, std::uint32_t value, std::uint32_t next, std::uint32_t child) {
    Leaf(flags, value, next);
    contents.Put32(child);
    contents.Put32(0);
  }
  // "  title -> address" by level.
  std::vector<std::string> Read() {
    std::vector<std::string> lines;
    for (const SitemapItem& item :
         ReadBinaryContents(contents.Bytes(), topics.Bytes(), 1251).items) {
      lines.push_back(std::string(2 * static_cast<std::size_t>(item.level), ' ') + item.name);
      for (const SitemapTarget& target : item.targets) {
        if (item.name.empty()) lines.back() += "(" + target.title + ")";
        lines.back() += " -> " + target.local + (target.url.empty() ? "" : " or " + target.url);
      }
    }
    return lines;
  }
  ByteWriter contents;
  TopicMaker topics;
};

using Lines = std::vector<std::string>;

TEST_F(BinaryContents, AreATreeOfTopicsAndNames) {
  Book(0x10D, topics.Add("First", "a.htm"), kEntries + 28, kEntries + 56);
  Book(0x105, topics.Text("Only a name"), 0, kEntries + 76);
  Leaf(8, topics.Add("Below", "dir/b.htm#x"), 0);
  Leaf(8, topics.Add("\xCF\xF0\xE8", "\xCF.htm", "http://example.com/"), 0);
  EXPECT_EQ(Read(),
            (Lines{"(First) -> /a.htm", "  Below -> /dir/b.htm#x", "Only a name",
                   "  (\xD0\x9F\xD1\x80\xD0\xB8) -> /\xD0\x9F.htm or http://example.com/"}));
}

TEST_F(BinaryContents, LeaveWholeAddressesAsTheyAre) {
  Leaf(8, topics.Add("Other", "ms-its:other.chm::/a.htm"), 0);
  EXPECT_EQ(Read(), (Lines{"(Other) -> ms-its:other.chm::/a.htm"}));
}

TEST_F(BinaryContents, LeaveTheTitleToThePageWhereTheTopicHasNone) {
  Leaf(8, topics.Add("", "a.htm"), 0);
  EXPECT_EQ(Read(), (Lines{"() -> /a.htm"}));
}

TEST_F(BinaryContents, EndWhateverTheirPlacesSay) {
  const std::uint32_t topic = topics.Add("A", "a.htm");
  Book(0x10D, topic, kEntries + 28, kEntries);  // below itself
  Book(0x10D, topic, kEntries, 0xFFFFFFF0);     // before itself, and outside
  EXPECT_EQ(Read(), (Lines{"(A) -> /a.htm", "(A) -> /a.htm"}));
  contents.Set32(kEntries + 8, 77);  // no such topic
  EXPECT_EQ(Read(), (Lines{"(A) -> /a.htm"}));
  contents.Set32(0, 0xFFFFFFFF);
  EXPECT_EQ(Read(), Lines{});
  EXPECT_TRUE(ReadBinaryContents({1, 2}, topics.Bytes(), 1252).items.empty());
}

TEST_F(BinaryContents, EndBeforeTheBytesDo) {
  Leaf(8, topics.Add("A", "a.htm"), kEntries + 20);
  contents.PutBytes(std::vector<std::uint8_t>(19));  // one byte short of an entry
  EXPECT_EQ(Read(), (Lines{"(A) -> /a.htm"}));
}

constexpr std::size_t kHeader = 76, kBlock = 0x800;

class BinaryIndex : public testing::Test {
 protected:
  BinaryIndex() {
    tree.PadTo(kHeader);
    tree.Set16(4, kBlock);
  }
  void StartBlock(std::uint16_t entries, std::uint32_t next) {
    tree.PadTo(kHeader + kBlock * blocks++);
    tree.Put16(0);
    tree.Put16(entries);
    tree.Put32(0xFFFFFFFF);
    tree.Put32(next);
  }
  void Wide(std::u16string_view text) {
    for (const char16_t unit : text) tree.Put16(unit);
    tree.Put16(0);
  }
  void Head(std::u16string_view keyword, bool see, std::uint16_t level, std::uint32_t last) {
    Wide(keyword);
    tree.Put16(see ? 2 : 0);
    tree.Put16(level);
    tree.Put32(last);
    tree.Put32(0);
  }
  void Tail() {
    tree.Put32(1);
    tree.Put32(13);
  }
  void Keyword(std::u16string_view keyword, std::uint16_t level, std::uint32_t last,
               std::vector<std::uint32_t> numbers) {
    Head(keyword, false, level, last);
    tree.Put32(static_cast<std::uint32_t>(numbers.size()));
    for (const std::uint32_t number : numbers) tree.Put32(number);
    Tail();
  }
  // "  keyword -> title, title" by level.
  std::vector<std::string> Read() {
    tree.PadTo(kHeader + kBlock * blocks);
    std::vector<std::string> lines;
    for (const SitemapItem& item : ReadBinaryIndex(tree.Bytes(), topics.Bytes(), 1252).items) {
      lines.push_back(std::string(2 * static_cast<std::size_t>(item.level), ' ') + item.name);
      if (!item.see_also.empty()) lines.back() += ", see " + item.see_also;
      std::string_view separator = " -> ";
      for (const SitemapTarget& target : item.targets) {
        lines.back() += separator;
        lines.back() += target.title + " " + target.local;
        separator = ", ";
      }
    }
    return lines;
  }
  ByteWriter tree;
  TopicMaker topics;
  std::size_t blocks = 0;
};

TEST_F(BinaryIndex, HasLevelsTopicsAndReferences) {
  const std::uint32_t a = topics.Add("A", "a.htm"), b = topics.Add("B", "b.htm");
  StartBlock(2, 2);
  Keyword(u"cats", 0, 0, {});
  Keyword(u"cats, tails", 1, 6, {a, b});
  StartBlock(0, 0xFFFFFFFF);  // not in the chain
  StartBlock(2, 0xFFFFFFFF);
  Keyword(u"\u0416\xD834\xDD1E\xD834", 0, 0, {b});
  Head(u"dogs", true, 0, 0);
  tree.Put32(3);  // has a reference in place of topics, whatever their number
  Wide(u"cats, tails");
  Tail();
  EXPECT_EQ(Read(),
            (Lines{"cats", "  tails -> A /a.htm, B /b.htm",
                   "\xD0\x96\xF0\x9D\x84\x9E\xEF\xBF\xBD -> B /b.htm", "dogs, see cats, tails"}));
}

TEST_F(BinaryIndex, GoesOnBehindBlocksThatSucceedThemselves) {
  const std::uint32_t a = topics.Add("A", "a.htm");
  for (const char16_t* keyword : {u"one", u"two", u"three"}) {
    StartBlock(1, static_cast<std::uint32_t>(blocks));
    Keyword(keyword, 0, 0, {a});
  }
  tree.Set32(0x1A, 1);  // the third block is none of the listing
  EXPECT_EQ(Read(), (Lines{"one -> A /a.htm", "two -> A /a.htm"}));
}

TEST_F(BinaryIndex, EndsWhateverItsNumbersSay) {
  const std::uint32_t a = topics.Add("A", "a.htm");
  StartBlock(3, 0);  // leads to itself
  Keyword(u"one", 5, 77, {a, 99});
  Keyword(u"two", 0xFFFF, 0, {});
  Head(u"three", false, 0, 0);
  tree.Put32(0xFFFFFFFF);  // more topics than there are bytes
  EXPECT_EQ(Read(), (Lines{" -> A /a.htm", "  two"}));
  tree.Set16(4, 3);  // blocks without room
  EXPECT_EQ(Read(), Lines{});
  EXPECT_TRUE(ReadBinaryIndex({0x3B, 0x29}, topics.Bytes(), 1252).items.empty());
}

TEST_F(BinaryIndex, TakesNoMemoryOutOfProportion) {
  const std::uint32_t a = topics.Add(std::string(4000, 'x'), "a.htm");
  constexpr std::size_t kTopics = 400;
  for (int i = 0; i < 50; ++i) {
    StartBlock(1, static_cast<std::uint32_t>(blocks + 1));
    Keyword(u"k", 0, 0, std::vector<std::uint32_t>(kTopics, a));
  }
  tree.PadTo(kHeader + kBlock * blocks);
  std::size_t targets = 0;
  const Sitemap index = ReadBinaryIndex(tree.Bytes(), topics.Bytes(), 1252);
  for (const SitemapItem& item : index.items) targets += item.targets.size();
  EXPECT_EQ(index.items.size(), 50u);
  EXPECT_GT(targets, kTopics);
  EXPECT_LT(targets * 4000, 65 * (tree.Size() + 8000));
}

TEST(JoinedNames, HaveThoseAboveInFront) {
  Sitemap index;
  for (const auto& [level, name] :
       std::vector<std::pair<int, std::string>>{{0, "a"}, {1, "b"}, {2, "c"}, {1, "d"}, {0, "e"}}) {
    SitemapItem item;
    item.level = level;
    item.name = name;
    index.items.push_back(item);
  }
  EXPECT_EQ(JoinedNames(index), (Lines{"a", "a, b", "a, b, c", "a, d", "e"}));
}

}  // namespace
}  // namespace scrivo

#include "exporter/search_writer.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "exporter/script_text.h"

namespace scrivo {
namespace {

// The data files, and what they say read back.
class SearchFiles {
 public:
  SearchWriter::Store Store() {
    return [this](const std::string& name, const std::string& value) { files[name] = value; };
  }

  // Every word with what stands for it.
  std::map<std::string, std::string> Words() const {
    std::map<std::string, std::string> words;
    for (const auto& [name, value] : files) {
      if (!name.starts_with("words/")) continue;
      const std::size_t middle = value.find("\",\"");
      std::string_view keys = std::string_view(value).substr(2, middle - 2);
      std::string_view postings = std::string_view(value).substr(middle + 3);
      postings.remove_suffix(2);
      while (!keys.empty()) {
        const std::size_t blank = std::min(keys.find(' '), keys.size());
        const std::size_t end = std::min(postings.find('!'), postings.size());
        words[std::string(keys.substr(0, blank))] = postings.substr(0, end);
        keys.remove_prefix(std::min(blank + 1, keys.size()));
        postings.remove_prefix(std::min(end + 1, postings.size()));
      }
    }
    return words;
  }

  // Page, best place and positions of a word, as "page:place:1,2".
  std::vector<std::string> Postings(const std::string& word) const {
    std::vector<std::string> found;
    const std::map<std::string, std::string> words = Words();
    if (!words.contains(word)) return found;
    std::string_view rest = words.at(word);
    std::uint64_t page = 0;
    while (!rest.empty()) {
      const std::uint64_t number = TakeNumber(&rest);
      page += number / 6;
      const std::uint64_t count = number % 2 == 0 ? 1 : TakeNumber(&rest) + 2;
      std::string text = std::to_string(page) + ":" + std::to_string(number % 6 / 2);
      std::uint64_t at = 0;
      for (std::uint64_t i = 0; i < count; ++i) {
        at += TakeNumber(&rest);
        text += (i == 0 ? ":" : ",") + std::to_string(at);
      }
      found.push_back(text);
    }
    return found;
  }

  std::map<std::string, std::string> files;
};

using Found = std::vector<std::string>;

TEST(SearchWriter, WritesWhereEachWordStands) {
  SearchFiles files;
  SearchWriter writer(files.Store());
  writer.AddPage("a.htm", "A", {"red roses", "The rose is red. Pruning roses", {{17, 30}}});
  writer.AddPage("b.htm", "B", {"", "no words of it", {}});
  writer.AddPage("c.htm", "C", {"C", "red red", {}});
  writer.Finish();
  EXPECT_EQ(files.Postings("red"), (Found{"0:2:0,5", "2:0:1,2"}));
  EXPECT_EQ(files.Postings("roses"), (Found{"0:2:1,7"}));
  EXPECT_EQ(files.Postings("pruning"), (Found{"0:1:6"}));
  EXPECT_EQ(files.Postings("it"), (Found{"1:0:3"}));
  EXPECT_EQ(files.Postings("none"), Found{});
}

TEST(SearchWriter, CutsLongTextsBetweenWords) {
  SearchFiles files;
  SearchWriter writer(files.Store());
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "word" + std::to_string(i) + " ";
  writer.AddPage("a.htm", "A", {"title", text, {}});
  writer.Finish();
  std::string joined;
  for (int i = 0; files.files.contains("text/" + std::to_string(i)); ++i) {
    const std::string& value = files.files["text/" + std::to_string(i)];
    EXPECT_LT(value.size(), 8000u);
    const std::size_t end = value.rfind("\"]");
    const std::size_t start = value.rfind(",\"", end) + 2;
    // The piece says which word it begins with.
    const std::string first = value.substr(start, value.find(' ', start) - start);
    EXPECT_EQ(value.substr(0, value.find(",\"")),
              "[[0," + std::to_string(std::stoi(first.substr(4)) + 1));
    joined += value.substr(start, end - start);
  }
  EXPECT_EQ(joined, text);
}

TEST(SearchWriter, GivesBeginningsOfManyWordsAnEntryOfTheirOwn) {
  SearchFiles files;
  SearchWriter writer(files.Store());
  std::set<std::string> all;
  for (int page = 0; page < 300; ++page) {
    std::string text;
    for (int i = 0; i < 200; ++i) text += "shared" + std::to_string((page * 7 + i) % 900) + " ";
    writer.AddPage("p.htm", "P", {"", text + "rare" + std::to_string(page), {}});
  }
  writer.Finish();
  const std::map<std::string, std::string> words = files.Words();
  ASSERT_TRUE(words.contains("s*"));
  EXPECT_TRUE(words.contains("shared*"));
  EXPECT_FALSE(words.contains("rare*"));
  std::string_view rest = words.at("s*");
  int pages = 0;
  for (; !rest.empty(); ++pages) {
    TakeNumber(&rest);
    TakeNumber(&rest);
  }
  EXPECT_EQ(pages, 300);
  EXPECT_LT(words.at("s*").size(), 1000u);
}

TEST(SearchWriter, KeepsTheFilesSmall) {
  SearchFiles files;
  SearchWriter writer(files.Store());
  std::string text;
  for (int i = 0; i < 30000; ++i) text += "w" + std::to_string(i * 7919 % 100003) + " ";
  for (int page = 0; page < 4; ++page) writer.AddPage("p.htm", "P", {"", text, {}});
  writer.Finish();
  for (const auto& [name, value] : files.files) {
    if (!name.starts_with("words/")) continue;
    EXPECT_LT(value.size(), 60000u) << name;
  }
}

}  // namespace
}  // namespace scrivo

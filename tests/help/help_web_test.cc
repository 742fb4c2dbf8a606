// The add-in's own help, as it was compiled into the folder of the programs.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "chm/chm_reader.h"
#include "platform/paths.h"
#include "project/sitemap.h"
#include "system/services.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class HelpWebTest : public testing::Test {
 protected:
  HelpWebTest() {
    const std::string path =
        JoinPath(CreateSystemServices().system->ModuleFolder(), "Scrivo.CHM", SystemPathStyle());
    std::error_code error;
    auto source = OpenFileSource(path, &error);
    if (source) reader = ChmReader::Open(std::move(source), &problems);
  }

  void SetUp() override { ASSERT_NE(reader, nullptr); }

  // The items of the contents or index file, which has a name of its own at every compile.
  std::vector<SitemapItem> Items(const std::string& extension) {
    for (const Entry& entry : reader->Entries()) {
      if (!std::string(entry.name).ends_with(extension)) continue;
      const auto bytes = reader->ReadWhole(entry);
      if (!bytes) continue;
      return ReadSitemap({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, 1252).items;
    }
    return {};
  }
  // The names of the web's own files of a kind.
  static std::vector<std::string> Sources(const std::string& extension) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(HELP_WEB)) {
      if (entry.path().extension() == extension) names.push_back(entry.path().filename().string());
    }
    return names;
  }

  Problems problems;
  std::unique_ptr<ChmReader> reader;
};

TEST_F(HelpWebTest, TheFileIsFlawlessAndHoldsThePageThatTheHelpCommandOpens) {
  EXPECT_TRUE(problems.empty());
  EXPECT_NE(reader->Find("/index.html"), nullptr);
}

TEST_F(HelpWebTest, EveryPageIsReachableFromTheContents) {
  std::set<std::string> reached;
  for (const SitemapItem& item : Items(".hhc")) {
    for (const SitemapTarget& target : item.targets) reached.insert(target.local);
  }
  const std::vector<std::string> pages = Sources(".html");
  EXPECT_GE(pages.size(), 10U);
  for (const std::string& page : pages) {
    EXPECT_TRUE(reached.count(page)) << page;
    EXPECT_NE(reader->Find("/" + page), nullptr) << page;
  }
  EXPECT_EQ(reached.size(), pages.size());
}

TEST_F(HelpWebTest, EveryPageHasIndexEntries) {
  std::set<std::string> indexed;
  for (const SitemapItem& item : Items(".hhk")) {
    ASSERT_FALSE(item.name.empty());
    EXPECT_NE(item.name.front(), ' ') << item.name;
    for (const SitemapTarget& target : item.targets) indexed.insert(target.local);
  }
  for (const std::string& page : Sources(".html")) EXPECT_TRUE(indexed.count(page)) << page;
}

TEST_F(HelpWebTest, ThePicturesAndTheStyleSheetAreInIt) {
  for (const char* name : {"/help.css", "/images/compile.png", "/images/run.png",
                           "/images/decompile.png", "/images/error.png"}) {
    EXPECT_NE(reader->Find(name), nullptr) << name;
  }
}

}  // namespace
}  // namespace scrivo

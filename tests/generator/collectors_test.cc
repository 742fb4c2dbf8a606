#include <gtest/gtest.h>

#include "tests/doubles/memory_site.h"

namespace scrivo {
namespace {

std::string Urls(const SiteFiles& files) {
  std::string text;
  for (const auto& file : files) text += file->Url().substr(sizeof "file:///C:/Webs/site") + " ";
  return text;
}

std::string Labels(const SiteNodes& nodes) {
  std::string text;
  for (const auto& node : nodes) text += node->Label() + " ";
  return text;
}

TEST(CollectorsTest, AFoldersOwnFilesComeBeforeThoseOfItsSubfolders) {
  MemorySite site;
  for (const char* name : {"b/deep/x", "z", "a/y", "b/w", "c"}) site.AddPage(name);
  EXPECT_EQ(Urls(AllFiles(*site.Web())), "z c b/w b/deep/x a/y ");
}

TEST(CollectorsTest, ANodeComesBeforeItsChildrenAndTheRootIsLeftOut) {
  MemorySite site;
  const auto one = site.AddNode(nullptr, "1");
  site.AddNode(site.AddNode(one, "1.1"), "1.1.1");
  site.AddNode(one, "1.2");
  site.AddNode(nullptr, "2");
  EXPECT_EQ(Labels(AllNodes(*site.Web())), "1 1.1 1.1.1 1.2 2 ");
}

TEST(CollectorsTest, ANodeWithoutAPageIsListed) {
  MemorySite site;
  site.AddNode(nullptr, "label");
  const SiteNodes nodes = AllNodes(*site.Web());
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0]->File(), nullptr);
}

TEST(CollectorsTest, AWebWithoutAStructureHasFilesAndNoNodes) {
  MemorySite site;
  site.AddPage("a");
  EXPECT_EQ(Urls(AllFiles(*site.Web())), "a ");
  EXPECT_TRUE(AllNodes(*site.Web()).empty());
  site.has_navigation = false;
  EXPECT_TRUE(AllNodes(*site.Web()).empty());
}

TEST(CollectorsTest, AFailureReachesTheCaller) {
  MemorySite site;
  site.AddPage("sub/a");
  site.AddNode(nullptr, "n");
  site.Fail("Files sub", 1);
  EXPECT_THROW(AllFiles(*site.Web()), Error);
  site.Fail("Children n", 1);
  EXPECT_THROW(AllNodes(*site.Web()), Error);
}

TEST(CollectorsTest, AStatementThatTheCallerSkipsAddsNothing) {
  MemorySite site;
  for (const char* name : {"a", "sub/b", "sub/deep/c", "zz/d"}) site.AddPage(name);
  const auto skip_failing = [](const std::function<void()>& statement) {
    try {
      statement();
    } catch (const Error&) {
    }
  };
  site.Fail("Files sub", 1);
  EXPECT_EQ(Urls(AllFiles(*site.Web(), skip_failing)), "a sub/deep/c zz/d ");
  site.Fail("Folders sub", 1);
  EXPECT_EQ(Urls(AllFiles(*site.Web(), skip_failing)), "a sub/b zz/d ");
  site.AddNode(site.AddNode(nullptr, "1"), "1.1");
  site.AddNode(nullptr, "2");
  site.Fail("Children 1", 1);
  EXPECT_EQ(Labels(AllNodes(*site.Web(), skip_failing)), "1 2 ");
}

TEST(CollectorsTest, DepthIsNoLimit) {
  constexpr int kDepth = 100000;
  MemorySite site;
  site.is_recording = false;
  std::shared_ptr<SiteNode> node;
  for (int i = 0; i < kDepth; ++i) node = site.AddNode(node, "n");
  EXPECT_EQ(AllNodes(*site.Web()).size(), std::size_t{kDepth});
}

}  // namespace
}  // namespace scrivo

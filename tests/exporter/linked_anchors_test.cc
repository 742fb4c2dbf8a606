#include "exporter/linked_anchors.h"

#include <gtest/gtest.h>

#include <vector>

namespace scrivo {
namespace {

class LinkedAnchorsTest : public testing::Test {
 protected:
  LinkedAnchorsTest() {
    places.AddPlace("a/one.htm");
    places.AddPlace("two.htm");
  }
  void Read(std::string_view html, std::string_view place) {
    anchors.ReadPage(html, place, places, [&](const std::string& to) { linked.push_back(to); });
  }
  SiteNames places{"book.chm"};
  LinkedAnchors anchors;
  std::vector<std::string> linked;
};

TEST_F(LinkedAnchorsTest, AreThoseThatAPageHasAndALinkNames) {
  Read("<p id=x><p id=unused><a name=n><a href=../two.htm#y>", "a/one.htm");
  Read("<p id=y><a href=a/one.htm#x><a href=a/one.htm?q#n><a href='a/one.htm#gone'>", "two.htm");
  anchors.Finish();
  EXPECT_TRUE(anchors.Has("a/one.htm", "x"));
  EXPECT_TRUE(anchors.Has("two.htm", "y"));
  EXPECT_FALSE(anchors.Has("two.htm", "x"));
  EXPECT_FALSE(anchors.Has("a/one.htm", "unused"));
  EXPECT_EQ(anchors.Find("a/one.htm", "?q#n"), "n");
  EXPECT_EQ(anchors.Find("a/one.htm", "#gone"), "");
  EXPECT_EQ(anchors.Find("a/one.htm", ""), "");
  EXPECT_EQ(linked, (std::vector<std::string>{"two.htm", "a/one.htm", "a/one.htm", "a/one.htm"}));
}

TEST_F(LinkedAnchorsTest, AreFoundWithinAPageAndFromElsewhere) {
  Read("<p id='here &amp; now'><p id=toc><a href='#here &amp; now'>", "two.htm");
  anchors.AddLink("two.htm", "#toc");
  anchors.Finish();
  EXPECT_EQ(anchors.Find("two.htm", "#here & now"), "here & now");
  EXPECT_TRUE(anchors.Has("two.htm", "toc"));
}

TEST_F(LinkedAnchorsTest, AreNamedAsTheyStandOrByTheirBytes) {
  Read("<a name='a b'><a name='c%20d'><a href='#a%20b'><a href='#c%20d'>", "two.htm");
  anchors.Finish();
  EXPECT_EQ(anchors.Find("two.htm", "#a%20b"), "a b");
  EXPECT_EQ(anchors.Find("two.htm", "#c%20d"), "c%20d");
}

}  // namespace
}  // namespace scrivo

#include "html/links.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

using Texts = std::vector<std::string>;

std::vector<PageLink> Links(std::string_view html, int code_page = 1252) {
  HtmlTokenizer tokens(html);
  LinkFinder finder(code_page);
  HtmlToken token;
  while (tokens.Next(&token)) finder.See(token);
  return finder.Take();
}

Texts Addresses(std::string_view html, int code_page = 1252) {
  Texts addresses;
  for (const PageLink& link : Links(html, code_page)) addresses.push_back(link.address);
  return addresses;
}

TEST(LinkFinder, FollowsEveryAttributeThatNamesAFile) {
  EXPECT_EQ(
      Addresses("<body background=b.gif><a href='a.htm#x'><area href=\"m.htm\"><img src = i.png "
                "lowsrc=l.png dynsrc=d.avi><link href=s.css><script src=s.js></script>"
                "<table background=t.gif><tr background=r.gif><td background=d.gif>"
                "<th background=h.gif><frame src=f.htm><iframe src=g.htm></iframe>"
                "<input src=n.gif><embed src=e.swf><bgsound src=w.wav><object data=o.svg>"
                "</object><video src=v.mp4 poster=p.png><source src=v.webm><track src=t.vtt>"
                "</video><audio src=u.mp3></audio>"),
      (Texts{"b.gif", "a.htm#x", "m.htm", "i.png", "l.png",  "d.avi", "s.css", "s.js",
             "t.gif", "r.gif",   "d.gif", "h.gif", "f.htm",  "g.htm", "n.gif", "e.swf",
             "w.wav", "o.svg",   "v.mp4", "p.png", "v.webm", "t.vtt", "u.mp3"}));
}

TEST(LinkFinder, FollowsPicturesAndLinksOfDrawings) {
  EXPECT_EQ(Addresses("<svg><image xlink:href=a.png /><image href='b.png'/>"
                      "<use xlink:href=\"c.svg#x\"/><use href=#y /><a xlink:href=d.htm></a></svg>"),
            (Texts{"a.png", "b.png", "c.svg#x", "d.htm"}));
}

TEST(LinkFinder, FollowsEveryCandidateOfAPicture) {
  EXPECT_EQ(Addresses("<img srcset=\" a.png, b.png 2x,c,d.png 300w ,,\te.png 1x, \">"
                      "<picture><source srcset='f.webp'></picture><link imagesrcset='g.png 1x'>"),
            (Texts{"a.png", "b.png", "c,d.png", "e.png", "f.webp", "g.png"}));
  EXPECT_EQ(Addresses("<img srcset='data:image/png;base64,AA== 1x, a&amp;b.png 2x'>"),
            (Texts{"data:image/png;base64,AA==", "a&b.png"}));
  EXPECT_EQ(Addresses("<img srcset=''><img srcset=' , '>"), Texts{});
}

TEST(LinkFinder, FollowsStylesAndStyleAttributes) {
  EXPECT_EQ(Addresses("<style>@import 'a.css'; b { background: url( \"c d.png\" ) }</style>"
                      "<p style=\"background:url(e.gif)\">"
                      "<custom-tag style='x:url(&quot;f&amp;g.gif&quot;)'>"),
            (Texts{"a.css", "c d.png", "e.gif", "f&g.gif"}));
}

TEST(LinkFinder, FollowsRefreshes) {
  EXPECT_EQ(Addresses("<meta http-equiv=Refresh content=\"0; URL=next.htm?a=1&amp;b\">"
                      "<meta content=\"5;url='quoted.htm'\" http-equiv=refresh>"
                      "<meta http-equiv=refresh content=30><meta name=refresh content='0;url=no'>"),
            (Texts{"next.htm?a=1&b", "quoted.htm"}));
}

TEST(LinkFinder, FollowsFilmsOfObjects) {
  EXPECT_EQ(
      Addresses("<object data=a.swf><param name=Movie value=b.swf><param name=src value=c.mov>"
                "<param name=FileName value='d e.avi'><param name=quality value=high>"
                "</object>"),
      (Texts{"a.swf", "b.swf", "c.mov", "d e.avi"}));
}

TEST(LinkFinder, FollowsTheTopicsOfARelatedTopicsObject) {
  const auto links = Links(
      "<object classid=\"clsid:adb880a6-d8ff-11cf-9377-00aa003b7a11\">"
      "<param name=Command value=\"Related Topics, MENU\"><param name=Text value=\"Text:See\">"
      "<param name=Item1 value=\"One; two;a.htm\"><param name=Item2 value=b.htm#c>"
      "<param name=Item3 value=\"Empty;\"></object>");
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(links[0].address, "a.htm");
  EXPECT_EQ(links[0].kind, LinkKind::kAnchor);
  EXPECT_EQ(links[1].address, "b.htm#c");
}

TEST(LinkFinder, ReadsTheCommandOfAnObjectWhereverItStands) {
  EXPECT_EQ(Addresses("<object><param name=Item1 value=x;a.htm>"
                      "<param name=Command value='related topics'>"),
            Texts{"a.htm"});
  EXPECT_EQ(Addresses("<object><param name=Command value=KLink><param name=Item1 value=''>"
                      "<param name=Item2 value=word;other></object>"),
            Texts{});
  EXPECT_EQ(Addresses("<object><param name=Command value='Related Topics'></object>"
                      "<object><param name=Item1 value=no.htm></object>"),
            Texts{});
}

TEST(LinkFinder, TakesNoAttributeThatOnlyEndsLikeOne) {
  EXPECT_EQ(Addresses("<img data-src=no.png data-srcset=no.png><a data-href=no.htm>"
                      "<p data-style='x:url(no.gif)'><object data-data=no data=yes.svg>"),
            Texts{"yes.svg"});
}

TEST(LinkFinder, PassesOverPlacesOfThePageCommentsAndScripts) {
  EXPECT_EQ(
      Addresses("<a href=\"#top\"><a href=''><!-- <a href=no.htm> --><script>'<a href=no.htm>'"
                "</script><xmp><a href=no.htm></xmp><a name=x>"),
      Texts{});
}

TEST(LinkFinder, GivesAddressesInTheCodePageOfThePage) {
  EXPECT_EQ(Addresses("<a href=\"a&amp;b.htm?x=1&copy=2\">"), (Texts{"a&b.htm?x=1&copy=2"}));
  EXPECT_EQ(Addresses("<a href=\"\xE9&eacute;.htm\">"), Texts{"\xE9\xE9.htm"});
  EXPECT_EQ(Addresses("<a href=\"\xC3\xA9&eacute;.htm\">", 65001), Texts{"\xC3\xA9\xC3\xA9.htm"});
  EXPECT_EQ(Addresses("<a href=\"&#1078;.htm\">"), Texts{"\xD0\xB6.htm"});  // 1252 lacks it
}

TEST(LinkFinder, TellsKindAndPlace) {
  const auto links = Links("ab\n<img src=x.gif>");
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(links[0].offset, 3u);
  EXPECT_EQ(links[0].kind, LinkKind::kImage);
}

TEST(LinkFinder, KeepsTheBase) {
  HtmlTokenizer tokens("<base target=x><base href=' docs/ '>");
  LinkFinder finder(1252);
  HtmlToken token;
  while (tokens.Next(&token)) finder.See(token);
  EXPECT_EQ(finder.Base(), "docs/");
}

TEST(LinkFinder, TakesTimeInProportionForHostileInput) {
  std::string candidates, items;
  for (int i = 0; i < 100000; ++i) {
    candidates += "a (,";
    items += "<param name=item1 value=x;y>";
  }
  EXPECT_FALSE(Links("<img srcset='" + candidates + "'>").empty());
  EXPECT_EQ(Links("<object>" + items + "<param name=command value='related topics'>").size(),
            100000u);
}

TEST(FindCssLinks, FindsAddressesAndPassesOverComments) {
  Texts found;
  for (const CssLink& link : FindCssLinks(
           "@import url(a.css); @import \"b.css\"; /* url(no.png) */ p { src: URL('c.woff') }"
           " q { background: url(d.png")) {
    found.emplace_back(link.address);
  }
  EXPECT_EQ(found, (Texts{"a.css", "b.css", "c.woff", "d.png"}));
}

}  // namespace
}  // namespace scrivo

#include "checker/component_finder.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

// "offset name" of each component of a page.
std::vector<std::string> Found(std::string_view page) {
  ComponentFinder finder;
  HtmlTokenizer tokens(page);
  HtmlToken token;
  while (tokens.Next(&token)) finder.See(token);
  std::vector<std::string> found;
  for (const ServerComponent& component : finder.Take()) {
    found.push_back(std::to_string(component.offset) + " " + component.name);
  }
  return found;
}

using Names = std::vector<std::string>;

TEST(ComponentFinder, FindsFormsForTheWebsOwnServer) {
  EXPECT_EQ(Found("<form action=\"--WEBBOT-SELF--\" method=\"POST\"></form>"), Names{"0 form"});
  EXPECT_EQ(Found("ab<FORM action=_vti_bin/shtml.dll/a.htm>"), Names{"2 form"});
  EXPECT_EQ(Found("<form action=/cgi-bin/mail.pl>"), Names{"0 form"});
}

TEST(ComponentFinder, LeavesFormsThatNeedNoServerOfTheWebs) {
  EXPECT_EQ(Found("<form><input type=button></form><form action=\"\"></form><form action=#top>"),
            Names{});
  EXPECT_EQ(Found("<form action=\"http://example.org/search\"><form action=mailto:a@example.org>"
                  "<form action=\"javascript:go()\">"),
            Names{});
}

TEST(ComponentFinder, NamesAFormByItsComponentAndCountsItOnce) {
  EXPECT_EQ(Found("<form action=\"--WEBBOT-SELF--\">\n<!--webbot bot=\"Search\" S-Index=\"All\" "
                  "startspan --><input><!--webbot bot=\"Search\" endspan --></form>"),
            Names{"0 search form"});
  EXPECT_EQ(Found("<!--webbot bot=\"Search\" startspan --><form action=x></form><!--webbot "
                  "bot=\"Search\" endspan -->"),
            Names{"0 search form"});
  EXPECT_EQ(Found("<form action=x><!--webbot bot=\"SaveResults\" U-File=\"a.txt\" --></form>"
                  "<form action=y></form>"),
            (Names{"0 form", "69 form"}));
}

TEST(ComponentFinder, FindsCountersAndDatabases) {
  EXPECT_EQ(Found("<!--webbot bot=\"HitCounter\" i-image=\"1\" startspan --><img "
                  "src=\"_vti_bin/fpcount.exe/?Page=a\"><!--webbot bot=\"HitCounter\" endspan -->"
                  "<!--webbot bot='DatabaseRegionStart' -->"),
            (Names{"0 hit counter", "132 database results"}));
}

TEST(ComponentFinder, LeavesComponentsThatAreFilledWhenThePageIsSaved) {
  EXPECT_EQ(
      Found("<!--webbot bot=\"Timestamp\" startspan -->May<!--webbot bot=\"Timestamp\" "
            "endspan --><!--webbot bot=\"Navigation\" startspan --><!--webbot bot=\"Include\" "
            "--><!-- a search form -->"),
      Names{});
}

}  // namespace
}  // namespace scrivo

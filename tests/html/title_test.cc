#include "html/title.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

std::string Title(std::string_view html, int code_page = 1252) {
  HtmlTokenizer tokens(html);
  TitleFinder finder(code_page);
  HtmlToken token;
  while (tokens.Next(&token)) finder.See(token);
  return finder.Title();
}

TEST(TitleFinder, GivesTheTextInUtf8WithItsReferencesReplaced) {
  EXPECT_EQ(Title("<HEAD><TITLE lang=en> A &amp; B\r\n \xE9 </Title ></HEAD>"),
            " A & B\r\n \xC3\xA9 ");
  EXPECT_EQ(Title("<title>\xC1</title>", 20866), "\xD0\xB0");
}

TEST(TitleFinder, FindsNoneWhereThereIsNone) {
  EXPECT_EQ(Title("<html><head></head><body>Text</body></html>"), "");
  EXPECT_EQ(Title(""), "");
}

TEST(TitleFinder, TakesTheFirstThatIsMoreThanBlanks) {
  EXPECT_EQ(Title("<title>One</title><title>Two</title>"), "One");
  EXPECT_EQ(Title("<title> \n</title><title>&nbsp;</title><title>\xA0</title><title>Real</title>"),
            "Real");
}

TEST(TitleFinder, TakesOneInTheBodyButNotThatOfADrawing) {
  EXPECT_EQ(Title("<body><title>Late</title>"), "Late");
  EXPECT_EQ(Title("<body><svg><title>No</title></svg><title>Yes</title>"), "Yes");
  EXPECT_EQ(Title("<body><svg/><title>Yes</title>"), "Yes");
}

TEST(TitleFinder, PassesOverWhatOnlyLooksLikeOne) {
  EXPECT_EQ(Title("<!-- <title>No</title> --><title>Yes</title>"), "Yes");
  EXPECT_EQ(Title("<script>'<title>No</title>'</script><title>Yes</title>"), "Yes");
  EXPECT_EQ(Title("<xmp><title>No</title></xmp><title>Yes</title>"), "Yes");
}

TEST(TitleFinder, CutsALongOneBetweenTwoCharacters) {
  EXPECT_EQ(Title("<title>" + std::string(100000, 'x')), std::string(4096, 'x'));
  EXPECT_EQ(Title("<title>x" + std::string(100000, '\xE9')).size(), 4095u);
}

}  // namespace
}  // namespace scrivo

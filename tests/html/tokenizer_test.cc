#include "html/tokenizer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace scrivo {
namespace {

using Texts = std::vector<std::string>;

// The tokens of a document in a short notation: text, [raw element: content], <start>, </end>, <!>.
Texts Tokens(std::string_view html) {
  Texts tokens;
  HtmlTokenizer tokenizer(html);
  HtmlToken token;
  while (tokenizer.Next(&token)) {
    const std::string name(token.name), content(token.content);
    switch (token.kind) {
      case HtmlToken::Kind::kText:
        tokens.push_back(content);
        break;
      case HtmlToken::Kind::kRaw:
        tokens.push_back("[" + name + ": " + content + "]");
        break;
      case HtmlToken::Kind::kStartTag:
        tokens.push_back("<" + name + ">");
        break;
      case HtmlToken::Kind::kEndTag:
        tokens.push_back("</" + name + ">");
        break;
      case HtmlToken::Kind::kOther:
        tokens.push_back("<!>");
        break;
    }
  }
  return tokens;
}

TEST(HtmlTokenizer, SplitsTextTagsAndDeclarations) {
  EXPECT_EQ(Tokens("<!DOCTYPE html><p a='>'>a < b<BR/></p><?x?>"),
            (Texts{"<!>", "<p>", "a ", "< b", "<BR>", "</p>", "<!>"}));
}

TEST(HtmlTokenizer, TakesNoTagsFromElementsThatHoldText) {
  for (const std::string element : {"script", "style", "textarea", "xmp", "title", "XMP"}) {
    const std::string open = "<" + element + ">", close = "</" + element + ">";
    EXPECT_EQ(Tokens(open + "a<b>c</b><!--" + close + "d"),
              (Texts{open, "[" + element + ": a<b>c</b><!--]", close, "d"}));
  }
}

TEST(HtmlTokenizer, EndsAnElementThatHoldsTextAtItsOwnEndTagOnly) {
  EXPECT_EQ(Tokens("<script>a</b></scrip</scr<</scripts></SCRIPT >x"),
            (Texts{"<script>", "[script: a</b></scrip</scr<</scripts>]", "</SCRIPT>", "x"}));
  EXPECT_EQ(Tokens("<xmp>never closed <b>"), (Texts{"<xmp>", "[xmp: never closed <b>]"}));
}

TEST(HtmlTokenizer, KeepsTagsInATitleThatIsClosed) {
  EXPECT_EQ(Tokens("<title>The <script> and <p> elements < 3</title><p>"),
            (Texts{"<title>", "[title: The <script> and <p> elements < 3]", "</title>", "<p>"}));
}

TEST(HtmlTokenizer, EndsATitleThatIsNeverClosedAtTheNextTag) {
  const Texts start = {"<title>", "[title: Open]"};
  const std::pair<std::string, std::string> kRests[] = {
      {"<p>x", "<p>"},
      {"<b>x</b></head><body>", "<b>"},
      {"<meta name=a></head><svg><title>No</title>", "<meta>"},
      {"</head></title>", "</head>"},
      {"<body></title>", "<body>"},
      {"<!-- x --><p>", "<!>"},
  };
  for (const auto& [rest, next] : kRests) {
    const Texts tokens = Tokens("<title>Open" + rest);
    ASSERT_GE(tokens.size(), 3u) << rest;
    EXPECT_EQ(Texts(tokens.begin(), tokens.begin() + 2), start) << rest;
    EXPECT_EQ(tokens[2], next) << rest;
  }
  EXPECT_EQ(Tokens("<title>One<title>Two</title>"),
            (Texts{"<title>", "[title: One]", "<title>", "[title: Two]", "</title>"}));
  EXPECT_EQ(Tokens("<title>a < b"), (Texts{"<title>", "[title: a < b]"}));
}

TEST(HtmlTokenizer, ClosesCommentsAsBrowsersDo) {
  EXPECT_EQ(Tokens("<!-->a"), (Texts{"<!>", "a"}));
  EXPECT_EQ(Tokens("<!--->a"), (Texts{"<!>", "a"}));
  EXPECT_EQ(Tokens("<!--a->b--c---><p>"), (Texts{"<!>", "<p>"}));
  EXPECT_EQ(Tokens("<!-- a --!>b"), (Texts{"<!>", "b"}));
  EXPECT_EQ(Tokens("<!--!>b--><p>"), (Texts{"<!>", "<p>"}));
}

TEST(HtmlTokenizer, DoesNotHideThePageBehindACommentThatIsNeverClosed) {
  EXPECT_EQ(Tokens("<!-- a <b>c<p>"), (Texts{"<!>", "c", "<p>"}));
}

TEST(HtmlTokenizer, FindsAttributesByNameInAnyCase) {
  HtmlTokenizer tokenizer("<Meta CONTENT = 'a > \"b\"' data-name=no name=x name=y empty/>");
  HtmlToken token;
  ASSERT_TRUE(tokenizer.Next(&token));
  EXPECT_TRUE(token.Starts("meta"));
  EXPECT_EQ(token.Attribute("content"), "a > \"b\"");
  EXPECT_EQ(token.Attribute("name"), "x");
  EXPECT_EQ(token.Attribute("empty"), "");
  EXPECT_EQ(token.Attribute("none"), std::nullopt);
}

TEST(HtmlTokenizer, TakesTimeInProportionForHostileInput) {
  for (const std::string piece : {"<title>", "<title>a<b>", "<!--", "<!--a--", "<script></s",
                                  "<xmp></xm", "<a b=\"", "<a b='x ", "<title></titl"}) {
    std::string html;
    for (int i = 0; i < 200000; ++i) html += piece;
    HtmlTokenizer tokenizer(html);
    HtmlToken token;
    std::size_t bytes = 0;
    while (tokenizer.Next(&token)) bytes += token.content.size();
    EXPECT_LE(bytes, html.size());
  }
}

// The part of `html` that its first tag is.
std::string FirstTag(std::string_view html) {
  HtmlTokenizer tokens(html);
  HtmlToken token;
  tokens.Next(&token);
  return std::string(html.substr(0, tokens.Position()));
}

TEST(HtmlTokenizer, EndsATagWhereBrowsersDo) {
  EXPECT_EQ(FirstTag("<a x=\"y>\" z='>'>b"), "<a x=\"y>\" z='>'>");
  EXPECT_EQ(FirstTag("<a x = \"y>\">b"), "<a x = \"y>\">");
  // Quotes within a value or a name are no quotes.
  EXPECT_EQ(FirstTag("<a x=y='z><script>b</script>'>"), "<a x=y='z>");
  EXPECT_EQ(FirstTag("<a x=y\"z><script>b</script>\">"), "<a x=y\"z>");
  EXPECT_EQ(FirstTag("<a \"><script>b</script>\">"), "<a \">");
  EXPECT_EQ(FirstTag("<a =\"><script>b</script>\">"), "<a =\">");
  EXPECT_EQ(FirstTag("<a x/=\"><script>b</script>\">"), "<a x/=\">");
  EXPECT_EQ(FirstTag("<a x=\"y\"='><script>b</script>'>"), "<a x=\"y\"='>");
}

}  // namespace
}  // namespace scrivo

// Pages of which the index, made from a web's facts, and the help file, made from a compiler's
// scan, have to say the same.

#include <gtest/gtest.h>

#include "hhc/page_scan.h"
#include "webs/page_head.h"

namespace scrivo {
namespace {

// The title that both find; a text that names both where they differ.
std::string TitleInHead(const std::string& page, int default_code_page) {
  const std::string by_web =
      FindPageHead(page, Headings::kNo, [&] { return default_code_page; }).title;
  const std::string by_compiler = ScanPage(page, default_code_page, nullptr).title;
  return by_web == by_compiler ? by_web : "web: " + by_web + ", compiler: " + by_compiler;
}

TEST(OneReader, DoesNotReadADeclarationInAComment) {
  // "Hello world" in Russian, in windows-1251.
  const std::string page =
      "<head><!-- <meta charset=koi8-r> --><title>\xCF\xF0\xE8\xE2\xE5\xF2 \xEC\xE8\xF0</title>";
  const std::string russian =
      "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82 "
      "\xD0\xBC\xD0\xB8\xD1\x80";
  EXPECT_EQ(TitleInHead(page, 1251), russian);
  EXPECT_EQ(TitleInHead("<meta charset=windows-1251>" + page, 1252), russian);
}

TEST(OneReader, TakesNoTitleFromAnExample) {
  EXPECT_EQ(TitleInHead("<head><xmp><title>Example</title></xmp><title>Real</title></head>", 1252),
            "Real");
  EXPECT_EQ(TitleInHead("<body><xmp><title>Example</title></xmp>", 1252), "");
}

TEST(OneReader, EndsATitleThatIsNeverClosed) {
  EXPECT_EQ(TitleInHead("<head><title>Open<meta name=a content=b></head><body>Text</body>", 1252),
            "Open");
  EXPECT_EQ(TitleInHead("<head><title>Open</head><body><svg><title>Drawing</title></svg>", 1252),
            "Open");
}

TEST(OneReader, BelievesAShortPageThatDeclaresGbk) {
  // "Contents" in Chinese, whose bytes are well-formed UTF-8 as well.
  EXPECT_EQ(TitleInHead("<meta http-equiv=Content-Type content=\"text/html; charset=gb2312\">"
                        "<title>\xC4\xBF\xC2\xBC</title>",
                        1252),
            "\xE7\x9B\xAE\xE5\xBD\x95");
}

TEST(OneReader, SeesThroughAPageThatDeclaresBig5AndIsUtf8) {
  const std::string title = "\xE7\xB4\x85\xE6\xA8\xB9\xE6\x9E\x97";
  std::string body;
  for (int i = 0; i < 10; ++i) body += title;
  EXPECT_EQ(TitleInHead("<meta charset=big5><title>" + title + "</title><body>" + body, 950),
            title);
}

}  // namespace
}  // namespace scrivo

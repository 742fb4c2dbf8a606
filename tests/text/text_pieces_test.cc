#include "text/text_pieces.h"

#include <gtest/gtest.h>

#include "text/code_page.h"

namespace scrivo {
namespace {

// All of `bytes` in pieces of `size` bytes.
std::string InPieces(std::string_view bytes, std::size_t size, int code_page) {
  TextPieces pieces(code_page);
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += size) {
    text += pieces.Take(bytes.substr(at, size));
  }
  return text + pieces.TakeRest();
}

TEST(TextPieces, GiveTheSameTextHoweverTheyAreCut) {
  const std::string text =
      "a\xC3\xA9\xE7\x9B\xAE\xD0\x94, \xCE\xA9 \xE5\xBD\x95|\xE8\xA1\xA8\r\n";  // aé目Д, Ω 录|表
  for (const int code_page : {932, 936, 949, 950, 1251, kUtf8CodePage}) {
    const std::string bytes = FromUtf8(text, code_page);
    for (std::size_t size = 1; size <= bytes.size(); ++size) {
      EXPECT_EQ(InPieces(bytes, size, code_page), ToUtf8(bytes, code_page))
          << code_page << " in pieces of " << size;
    }
  }
}

TEST(TextPieces, ComeWithTheirCharactersWhole) {
  TextPieces pieces(936);
  EXPECT_EQ(pieces.Take("x\xC4"), "x");
  EXPECT_EQ(pieces.Take("\xBF"), "\xE7\x9B\xAE");
  EXPECT_EQ(pieces.TakeRest(), "");
}

TEST(TextPieces, TellASecondByteThatLooksLikeAFirst) {
  TextPieces pieces(936);  // both bytes of U+6CA1 may be first ones
  EXPECT_EQ(pieces.Take("\xC3\xBB"), "\xE6\xB2\xA1");
}

TEST(TextPieces, DoNotWaitForTheRestOfWhatIsNoCharacter) {
  TextPieces pieces(kUtf8CodePage);
  EXPECT_EQ(pieces.Take("\xE9"
                        "a"),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(pieces.Take("\xE7\x9B"), "");
  EXPECT_EQ(pieces.TakeRest(), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace scrivo

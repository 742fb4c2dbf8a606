#include "exporter/text_breaker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace scrivo {
namespace {

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  BreakText(text, [&](std::string_view word, std::size_t) { words.emplace_back(word); });
  return words;
}

using Words = std::vector<std::string>;

TEST(TextBreaker, MakesWordsOfLettersDigitsAndUnderscores) {
  EXPECT_EQ(WordsOf("std::push_back(x2)"), (Words{"std", "push_back", "x2"}));
  EXPECT_EQ(WordsOf(""), Words{});
  EXPECT_EQ(WordsOf(" ... "), Words{});
}

TEST(TextBreaker, FoldsCaseAndAccents) {
  EXPECT_EQ(WordsOf("ÀÉÎõü Straße ŒUVRE Łódź"), (Words{"aeiou", "strasse", "oeuvre", "lodz"}));
  EXPECT_EQ(WordsOf("ΆΛΦΑ Ёлка ЖУК"), (Words{"αλφα", "елка", "жук"}));
  EXPECT_EQ(WordsOf("e\u0301te\u0301"), Words{"ete"});  // accents of their own
  EXPECT_EQ(WordsOf("Ệ Ａ１"), (Words{"e", "a1"}));
}

TEST(TextBreaker, JoinsApostrophesAndTheMarksOfNumbers) {
  EXPECT_EQ(WordsOf("don't 'quoted' 1,000 3.14. 2. x1.5 a,b"),
            (Words{"dont", "quoted", "1000", "3.14", "2", "x1", "5", "a", "b"}));
}

TEST(TextBreaker, PairsIdeographs) {
  EXPECT_EQ(WordsOf("東京は a漢b"), (Words{"東京", "京は", "は", "a", "漢", "b"}));
}

TEST(TextBreaker, TellsWhereWordsBegin) {
  std::vector<std::size_t> starts;
  BreakText("é ab 東京", [&](std::string_view, std::size_t start) { starts.push_back(start); });
  EXPECT_EQ(starts, (std::vector<std::size_t>{0, 3, 6, 9}));
}

TEST(TextBreaker, DropsWhatIsTooMuchOfAWord) {
  EXPECT_EQ(WordsOf(std::string(300, 'x') + " y"), (Words{std::string(kMaxReaderWord, 'x'), "y"}));
}

}  // namespace
}  // namespace scrivo

#pragma once

// The character table of the full-text search: which bytes make words and what they fold to. The
// viewer reads it from $OBJINST and breaks queries with it; the compiler breaks the pages with the
// same rules, or words would not be found.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "search/word_collector.h"

namespace scrivo {

namespace character_class {
inline constexpr std::uint16_t kSeparator = 0;
inline constexpr std::uint16_t kLowerLetter = 1;
inline constexpr std::uint16_t kOtherLetter = 2;  // upper case or with an accent
inline constexpr std::uint16_t kDigit = 3;
inline constexpr std::uint16_t kComma = 4;
inline constexpr std::uint16_t kPeriod = 5;
inline constexpr std::uint16_t kApostrophe = 6;
inline constexpr std::uint16_t kMark = 7;
inline constexpr std::uint16_t kWildcard = 9;
inline constexpr std::uint16_t kLigature = 0x0C;
}  // namespace character_class

// Whether `c` is one of `first` to `last`.
constexpr bool IsWithin(int c, int first, int last) { return c >= first && c <= last; }

struct SearchCharacter {
  std::uint16_t kind = 0;
  std::uint8_t folded = 0;
};

// One table serves all single-byte code pages, as in the files of the original compiler.
extern const std::array<SearchCharacter, 256> kSearchAlphabet;

struct SearchLigature {
  std::uint8_t byte, first, second;
};
inline constexpr SearchLigature kSearchLigatures[] = {
    {0xC6, 'a', 'e'}, {0xE6, 'a', 'e'}, {0xDF, 's', 's'}, {0x8C, 'o', 'e'}, {0x9C, 'o', 'e'}};

// Breaks text in a project's code page into folded words. Text may come in any number of pieces; a
// word goes on from one piece to the next unless Break() comes between.
class WordBreaker {
 public:
  // Words go to `words`, which must outlive the breaker. In a double-byte code page each
  // double-byte character is a word of its own.
  WordBreaker(int code_page, WordCollector* words);

  void SetInTitle(bool in_title) { in_title_ = in_title; }

  void Text(std::string_view bytes);
  void Byte(unsigned char byte);
  void Break();

 private:
  void Append(unsigned char c) {
    if (length_ < kMaxWordLength) word_[length_++] = static_cast<char>(c);
  }
  void Special(unsigned char byte, std::uint16_t kind);

  WordCollector* words_;
  bool in_title_ = false;
  bool double_byte_;
  int code_page_;
  bool numeric_ = false;         // the word began with a digit
  bool period_pending_ = false;  // a "." that belongs to the word if a digit or letter follows
  unsigned char lead_ = 0;       // first half of a double-byte character
  std::array<char, kMaxWordLength> word_;
  std::size_t length_ = 0;
};

}  // namespace scrivo

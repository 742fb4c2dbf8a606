#include "hhc/keyword_order.h"

#include <algorithm>
#include <iterator>

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

struct LetterRule {
  char32_t letter, first, second;  // second: 0 when it sorts as one letter
  bool upper;
};

constexpr LetterRule kLetters[] = {
#include "hhc/letter_table.inc"
};

// ASCII punctuation in ascending order; what is not here and no letter or digit comes before.
constexpr std::string_view kPunctuation = " _,;:!?/.`^~\"()[]{}@$*\\&#%+<=>|";

constexpr char32_t kPunctuationBase = 0x100, kDigitBase = 0x200, kLetterBase = 0x300,
                   kOtherBase = 0x1000;

struct Weight {
  char32_t primary = 0;  // 0: none
  char mark = 1, upper = 1;
};

class KeyWriter {
 public:
  void Add(char32_t c);
  std::string Take() && {
    // A zero ends each level, so that a shorter text sorts before a longer one.
    return primary_ + '\0' + marks_ + '\0' + cases_ + '\0' + ignored_;
  }

 private:
  void Put(const Weight& weight) {
    // Three bytes, none of them zero: 7 bits each.
    for (const int shift : {14, 7, 0}) {
      primary_.push_back(static_cast<char>(0x80 | ((weight.primary >> shift) & 0x7F)));
    }
    marks_.push_back(weight.mark);
    cases_.push_back(weight.upper);
    ++count_;
  }

  std::string primary_, marks_, cases_, ignored_;
  std::size_t count_ = 0;
};

char32_t LetterWeight(char32_t letter) {
  return letter < 0x80 ? kLetterBase + letter : kOtherBase + letter;
}

void KeyWriter::Add(char32_t c) {
  if (c == '-' || c == '\'') {
    ignored_.push_back(static_cast<char>(1 + std::min<std::size_t>(count_, 0x7D)));
    ignored_.push_back(static_cast<char>(c));
    return;
  }
  if (c < 0x80) {
    const char ascii = static_cast<char>(c);
    if (IsAsciiLetter(ascii)) {
      const char lower = AsciiLower(ascii);
      Put({kLetterBase + static_cast<char32_t>(lower), 1,
           static_cast<char>(lower == ascii ? 1 : 2)});
    } else if (c >= '0' && c <= '9') {
      Put({kDigitBase + c, 1, 1});
    } else if (const std::size_t at = kPunctuation.find(ascii); at != std::string_view::npos) {
      Put({kPunctuationBase + static_cast<char32_t>(at), 1, 1});
    }
    return;
  }
  const auto* rule = std::lower_bound(
      std::begin(kLetters), std::end(kLetters), c,
      [](const LetterRule& entry, char32_t wanted) { return entry.letter < wanted; });
  if (rule == std::end(kLetters) || rule->letter != c) {
    Put({c < 0xC0 ? kPunctuationBase + 0x40 + (c - 0x80) : kOtherBase + c, 1, 1});
    return;
  }
  const char upper = rule->upper ? 2 : 1;
  // Two marks on one letter keep the order of their characters.
  Put({LetterWeight(rule->first), static_cast<char>(2 + (c & 0x7F) % 0x7D), upper});
  if (rule->second != 0) Put({LetterWeight(rule->second), 2, upper});
}

}  // namespace

std::string KeywordSortKey(std::string_view keyword) {
  KeyWriter key;
  while (!keyword.empty()) key.Add(NextUtf8(&keyword));
  return std::move(key).Take();
}

}  // namespace scrivo

#pragma once

// Breaks text into the words of a site's search. The browser breaks what is asked, and the text it
// marks, by the same rules (reader/words.js).

#include <cstddef>
#include <string>
#include <string_view>

#include "exporter/alphabet.h"
#include "text/code_page.h"

namespace scrivo {

// Characters of a word beyond these are dropped.
inline constexpr std::size_t kMaxReaderWord = 99;

// Calls on_word(std::string_view word, std::size_t start) for each word of `text`, which is UTF-8,
// in order; `start` is where it begins in `text`. Letters, digits and "_" make words; inside one an
// apostrophe is passed over, inside a number a comma too, and a period stays when a digit follows.
// Each ideograph gives a word of it and the next one, the last of a run a word of its own.
template <typename OnWord>
void BreakText(std::string_view text, OnWord on_word) {
  const Alphabet& alphabet = Alphabet::The();
  std::string word, run;
  std::size_t start = 0, length = 0, run_start = 0;
  bool numeric = false, period = false;
  const auto finish = [&] {
    if (!word.empty()) on_word(std::string_view(word), start);
    word.clear();
    length = 0;
    period = false;
  };
  const auto finish_run = [&] {
    if (!run.empty()) on_word(std::string_view(run), run_start);
    run.clear();
  };
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t at = text.size() - rest.size();
    const unsigned char byte = static_cast<unsigned char>(rest[0]);
    char32_t character = byte;
    if (byte < 0x80) {
      rest.remove_prefix(1);
    } else {
      character = NextUtf8(&rest);
    }
    const CharacterKind kind = alphabet.KindOf(character);
    if (kind == CharacterKind::kIdeograph) {
      finish();
      const std::size_t before = run.size();
      alphabet.AppendFolded(character, &run);
      if (before > 0) {
        on_word(std::string_view(run), run_start);
        run.erase(0, before);
      }
      run_start = at;
      continue;
    }
    finish_run();
    if (kind != CharacterKind::kSeparator) {
      if (word.empty()) {
        start = at;
        numeric = kind == CharacterKind::kDigit;
      }
      if (length < kMaxReaderWord) {
        if (period) word.push_back('.');
        if (byte < 0x80) {
          word.push_back(static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 0x20 : byte));
        } else {
          alphabet.AppendFolded(character, &word);
        }
        length += period ? 2 : 1;
      }
      period = false;
    } else if (!word.empty() && byte == '\'') {
      // "don't" is one word
    } else if (!word.empty() && numeric && !period && byte == ',') {
      // and so is 1,000
    } else if (!word.empty() && numeric && !period && byte == '.') {
      period = true;
    } else {
      finish();
    }
  }
  finish();
  finish_run();
}

}  // namespace scrivo

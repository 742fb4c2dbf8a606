#pragma once

// Which characters make words in the search of an exported site, and what they fold to. For the
// letters of windows-1252 the rules are those of the help file's own index.

#include <cstdint>
#include <string>
#include <vector>

namespace scrivo {

enum class CharacterKind : std::uint8_t {
  kSeparator = 0,
  kLetter = 1,
  kDigit = 2,
  kIdeograph = 3,  // of a script that puts no blanks between words
};

class Alphabet {
 public:
  // The one alphabet there is.
  static const Alphabet& The();

  CharacterKind KindOf(char32_t character) const {
    if (character < kinds_.size()) return kinds_[character];
    return character >= kFirstRareIdeograph && character <= kLastRareIdeograph
               ? CharacterKind::kIdeograph
               : CharacterKind::kSeparator;
  }

  // Appends what `character` folds to: small letters without accents, in UTF-8. Marks that are put
  // on letters fold to nothing.
  void AppendFolded(char32_t character, std::string* out) const;

  // The alphabet as the browser's side wants it, a JavaScript object.
  std::string Script() const;

 private:
  static constexpr char32_t kFirstRareIdeograph = 0x20000;
  static constexpr char32_t kLastRareIdeograph = 0x3FFFF;

  Alphabet();

  std::vector<CharacterKind> kinds_;   // up to U+FFFF
  std::vector<std::uint16_t> folded_;  // the same; 0: nothing, kSeveral: see several_
  std::vector<std::pair<char32_t, std::string>> several_;  // in ascending order
};

}  // namespace scrivo

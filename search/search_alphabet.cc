#include "search/search_alphabet.h"

#include "text/code_page.h"

namespace scrivo {
namespace {

// The base letter of the accented letters of windows-1252, or 0.
constexpr std::uint8_t BaseLetter(int c) {
  if (c == 0xD0) return 'd';
  if (c == 0xDE || c == 0xFE) return static_cast<std::uint8_t>(c);
  if (c == 0x8C || c == 0x9C || c == 0xF0) return 'o';
  if (c == 0x8A || c == 0x9A || c == 0xDF) return 's';
  if (c == 0x9F || c == 0xDD || c == 0xFD || c == 0xFF) return 'y';
  const int lower = IsWithin(c, 0xC0, 0xDE) ? c + 0x20 : c;
  if (IsWithin(lower, 0xE0, 0xE6)) return 'a';
  if (lower == 0xE7) return 'c';
  if (IsWithin(lower, 0xE8, 0xEB)) return 'e';
  if (IsWithin(lower, 0xEC, 0xEF)) return 'i';
  if (lower == 0xF1) return 'n';
  if (IsWithin(lower, 0xF2, 0xF6) || lower == 0xF8) return 'o';
  if (IsWithin(lower, 0xF9, 0xFC)) return 'u';
  return 0;
}

constexpr std::uint16_t KindOf(int c) {
  using namespace character_class;
  if (IsWithin(c, 'a', 'z') || c == '_') return kLowerLetter;
  if (IsWithin(c, 'A', 'Z')) return kOtherLetter;
  if (IsWithin(c, '0', '9')) return kDigit;
  if (c == ',') return kComma;
  if (c == '.') return kPeriod;
  if (c == '\'') return kApostrophe;
  if (c == 1) return kMark;
  if (c == '*' || c == '?') return kWildcard;
  for (const SearchLigature& ligature : kSearchLigatures) {
    if (c == ligature.byte) return kLigature;
  }
  constexpr int kTypographicMarks[] = {0x95, 0x96, 0x97, 0x91, 0x92, 0x93, 0x94};
  for (int i = 0; i < 7; ++i) {
    if (c == kTypographicMarks[i]) return static_cast<std::uint16_t>(0x100 * (i + 1));
  }
  if (c == 0xD7 || c == 0xF7) return kSeparator;
  return BaseLetter(c) != 0 ? kOtherLetter : kSeparator;
}

constexpr std::uint8_t FoldedOf(int c) {
  if (IsWithin(c, 'A', 'Z')) return static_cast<std::uint8_t>(c + 'a' - 'A');
  const std::uint8_t base = c >= 0x80 ? BaseLetter(c) : 0;
  return base != 0 ? base : static_cast<std::uint8_t>(c);
}

constexpr std::array<SearchCharacter, 256> MakeAlphabet() {
  std::array<SearchCharacter, 256> alphabet;
  for (int c = 0; c < 256; ++c) alphabet[static_cast<std::size_t>(c)] = {KindOf(c), FoldedOf(c)};
  return alphabet;
}

// In a double-byte code page: whether this byte begins a character of two.
bool IsLeadByte(unsigned char byte, int code_page) {
  if (code_page == 932) return IsWithin(byte, 0x81, 0x9F) || IsWithin(byte, 0xE0, 0xFC);
  return IsWithin(byte, 0x81, 0xFE);
}

}  // namespace

constexpr std::array<SearchCharacter, 256> kSearchAlphabet = MakeAlphabet();

WordBreaker::WordBreaker(int code_page, WordCollector* words)
    : words_(words), double_byte_(IsDoubleByte(code_page)), code_page_(code_page) {}

void WordBreaker::Text(std::string_view bytes) {
  for (const char c : bytes) Byte(static_cast<unsigned char>(c));
}

void WordBreaker::Byte(unsigned char byte) {
  if (lead_ != 0) {
    word_[0] = static_cast<char>(lead_);
    word_[1] = static_cast<char>(byte);
    length_ = 2;
    lead_ = 0;
    Break();
    return;
  }
  if (double_byte_ && byte >= 0x80) {
    Break();
    if (IsLeadByte(byte, code_page_)) lead_ = byte;
    return;
  }
  const SearchCharacter& character = kSearchAlphabet[byte];
  if (character.kind >= character_class::kLowerLetter &&
      character.kind <= character_class::kDigit) {
    if (length_ == 0) numeric_ = character.kind == character_class::kDigit;
    if (period_pending_) {
      Append('.');
      period_pending_ = false;
    }
    Append(character.folded);
    return;
  }
  Special(byte, character.kind);
}

void WordBreaker::Special(unsigned char byte, std::uint16_t kind) {
  if (kind == character_class::kLigature) {
    for (const SearchLigature& ligature : kSearchLigatures) {
      if (ligature.byte != byte) continue;
      if (length_ == 0) numeric_ = false;
      Append(ligature.first);
      Append(ligature.second);
    }
    return;
  }
  if (length_ > 0 && kind == character_class::kApostrophe) return;
  if (length_ > 0 && numeric_ && !period_pending_) {
    if (kind == character_class::kComma) return;
    if (kind == character_class::kPeriod) {
      period_pending_ = true;
      return;
    }
  }
  Break();
}

void WordBreaker::Break() {
  if (length_ > 0) words_->Add({word_.data(), length_}, in_title_);
  length_ = 0;
  period_pending_ = false;
  lead_ = 0;
}

}  // namespace scrivo

// $OBJINST. Format: DWORD 0x04000000, the number of objects and each one's offset and length.
// Object 1 is the word breaker with its character table, object 2 the index itself.

#include <array>

#include "search/search_alphabet.h"
#include "search/search_index.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

using ClassId = std::array<std::uint8_t, 16>;
constexpr ClassId kBreakerClass = {0xaf, 0xda, 0x62, 0x46, 0x93, 0xd3, 0xd0, 0x11,
                                   0x9a, 0x56, 0x00, 0xc0, 0x4f, 0xb6, 0x8b, 0xf7};
constexpr ClassId kStemmerClass = {0xa8, 0xd5, 0xa0, 0x8f, 0xdf, 0xde, 0xd0, 0x11,
                                   0x9a, 0x61, 0x00, 0xc0, 0x4f, 0xb6, 0x8b, 0xf7};
constexpr ClassId kIndexClass = {0xb0, 0xda, 0x62, 0x46, 0x93, 0xd3, 0xd0, 0x11,
                                 0x9a, 0x56, 0x00, 0xc0, 0x4f, 0xb6, 0x8b, 0x66};
constexpr std::uint32_t kVersion = 0x04000000;
constexpr std::uint32_t kFlagsAlways = 3, kFlagStopList = 4, kFlagStemmer = 8;
constexpr std::uint32_t kEnglish = 9;  // primary language
constexpr std::uint32_t kObjectOffset = 0x18;
constexpr std::size_t kReserved = 26;

// The Mac Roman equivalents of the bytes 0x80 to 0xFF; a blank where there is none.
constexpr std::uint8_t kMacRoman[] = {
    0x20, 0x20, 0xE2, 0xC4, 0xE3, 0xC9, 0xA0, 0xE0, 0x5E, 0xE4, 0x20, 0xDC, 0xCE, 0x20, 0x20, 0x20,
    0x20, 0xD4, 0xD5, 0xD2, 0xD3, 0xA5, 0xD0, 0xD1, 0x7E, 0xAA, 0x20, 0xDD, 0xCF, 0x20, 0x20, 0xD9,
    0xA0, 0xC1, 0xA2, 0xA3, 0xDB, 0xB4, 0x20, 0xA4, 0xAC, 0xA9, 0xBB, 0xC7, 0xC2, 0x2D, 0xA8, 0xF8,
    0xA1, 0xB1, 0x20, 0x20, 0xAB, 0xB5, 0xA6, 0xE1, 0xFC, 0x20, 0xBC, 0xC8, 0x20, 0x20, 0x20, 0xC0,
    0xCB, 0xE7, 0xE5, 0xCC, 0x80, 0x81, 0xAE, 0x82, 0xE9, 0x83, 0xE6, 0xE8, 0xED, 0xEA, 0xEB, 0xEC,
    0x20, 0x84, 0xF1, 0xEE, 0xEF, 0xCD, 0x85, 0x20, 0xAF, 0xF4, 0xF2, 0xF3, 0x86, 0x20, 0x20, 0xA7,
    0x88, 0x87, 0x89, 0x8B, 0x8A, 0x8C, 0xBE, 0x8D, 0x8F, 0x8E, 0x90, 0x91, 0x93, 0x92, 0x94, 0x95,
    0x20, 0x96, 0x98, 0x97, 0x99, 0x9B, 0x9A, 0xD6, 0xBF, 0x9D, 0x9C, 0x9E, 0x9F, 0x20, 0x20, 0xD8};

// The sort weights of the bytes 0x7F to 0xBF, which follow no rule.
constexpr std::uint16_t kUpperWeights[] = {
    0x0BF, 0x0C0, 0x0C1, 0x0C3, 0x0C8, 0x0CD, 0x0D2, 0x0D7, 0x0DC, 0x0E1, 0x0E6, 0x636, 0x0F0,
    0x5E6, 0x0F6, 0x0F7, 0x0F8, 0x0F9, 0x0FA, 0x0FF, 0x104, 0x109, 0x10E, 0x113, 0x118, 0x11D,
    0x122, 0x636, 0x131, 0x5E6, 0x137, 0x138, 0x6AE, 0x13C, 0x140, 0x145, 0x14A, 0x14F, 0x154,
    0x159, 0x15E, 0x163, 0x168, 0x16D, 0x172, 0x177, 0x17C, 0x181, 0x186, 0x18B, 0x190, 0x195,
    0x19A, 0x19F, 0x1A4, 0x1A9, 0x1AE, 0x1B3, 0x1B8, 0x1BD, 0x1C2, 0x1C7, 0x1CC, 0x1D1, 0x1D6};

std::uint16_t SortWeight(int c) {
  const SearchCharacter& character = kSearchAlphabet[static_cast<std::size_t>(c)];
  int weight = c;
  if (c == 0x14) weight = 0x20;
  if (IsWithin(c, 0x21, 0x2F)) weight = 0x23 + 5 * (c - 0x21);
  if (IsWithin(c, '0', '9')) weight = 0x460 + 10 * (c - '0');
  if (IsWithin(c, 0x3A, 0x40)) weight = 0x6E + 5 * (c - 0x3A);
  if (IsWithin(c, 0x5B, 0x60)) weight = 0x91 + 5 * (c - 0x5B);
  if (IsWithin(c, 0x7B, 0x7E)) weight = 0xAF + 5 * (c - 0x7B);
  if (IsWithin(c, 0x7F, 0xBF)) weight = kUpperWeights[c - 0x7F];
  if (IsWithin(character.folded, 'a', 'z')) weight = 0x4CE + 20 * (character.folded - 'a');
  if (c == 0xD7) weight = 0x1DB;
  if (c == 0xDE) weight = 0x442;
  if (c == 0xF0) weight = 0x50A;  // sorts with "d", folds to "o"
  if (c == 0xF7) weight = 0x66;
  if (c == 0xFE) weight = 0x44C;
  return static_cast<std::uint16_t>(weight);
}

void PutCharacters(ByteWriter* out) {
  for (int c = 0; c < 256; ++c) {
    const SearchCharacter& character = kSearchAlphabet[static_cast<std::size_t>(c)];
    const int mac = c == 0x0E ? 0x14 : c < 0x80 ? c : kMacRoman[c - 0x80];
    out->Put16(character.kind);
    out->Put16(SortWeight(c));
    out->Put8(character.folded);
    out->Put8(static_cast<std::uint8_t>(c));
    out->Put8(static_cast<std::uint8_t>(mac));
    out->Put8(static_cast<std::uint8_t>(mac));
    out->Put16(0);
  }
}

void PutStopList(const std::vector<std::string>& stop_words, ByteWriter* out) {
  std::uint32_t length = 0;
  for (const std::string& word : stop_words) length += 2 + static_cast<std::uint32_t>(word.size());
  out->Put32(0x00282222);
  out->Put32(length);
  out->PadTo(out->Size() + 32);
  for (const std::string& word : stop_words) {
    out->Put16(static_cast<std::uint16_t>(word.size()));
    out->PutText(word);
  }
  out->Put16(0);
}

std::vector<std::uint8_t> Breaker(std::uint32_t language, std::uint32_t code_page,
                                  const std::vector<std::string>& stop_words) {
  const bool stems = (language & 0x3FF) == kEnglish;
  const bool has_ligatures = !IsDoubleByte(static_cast<int>(code_page));
  const std::size_t ligatures = has_ligatures ? std::size(kSearchLigatures) : 0;
  ByteWriter out;
  out.PutBytes(kBreakerClass);
  out.Put32(kVersion);
  out.Put32(kFlagsAlways | (stop_words.empty() ? 0 : kFlagStopList) | (stems ? kFlagStemmer : 0));
  out.Put32(code_page);
  out.Put32(language);
  out.Put32(0);
  out.Put32(0);
  out.Put32(0x00145555);
  out.Put32(static_cast<std::uint32_t>(0xA00 + 3 * ligatures));
  out.Put16(0x100);
  out.Put16(static_cast<std::uint16_t>(ligatures));
  out.Put16(3);
  out.PadTo(out.Size() + kReserved);
  PutCharacters(&out);
  for (std::size_t i = 0; i < ligatures; ++i) {
    out.Put8(kSearchLigatures[i].byte);
    out.Put8(static_cast<std::uint8_t>(kSearchLigatures[i].first));
    out.Put8(static_cast<std::uint8_t>(kSearchLigatures[i].second));
  }
  if (!stop_words.empty()) PutStopList(stop_words, &out);
  if (stems) {
    out.PutBytes(kStemmerClass);
    out.Put32(kVersion);
    out.Put32(1);
    out.Put32(code_page);
    out.Put32(language);
    out.Put32(0);
  }
  return out.Take();
}

}  // namespace

std::vector<std::uint8_t> WriteSearchObject(std::uint32_t language,
                                            const std::vector<std::string>& stop_words) {
  const auto code_page = static_cast<std::uint32_t>(CodePageOfLanguage(language));
  const std::vector<std::uint8_t> breaker = Breaker(language, code_page, stop_words);
  const auto breaker_size = static_cast<std::uint32_t>(breaker.size());
  constexpr std::uint32_t kIndexObjectSize = 36;
  ByteWriter out;
  out.Put32(kVersion);
  out.Put32(2);
  out.Put32(kObjectOffset);
  out.Put32(breaker_size);
  out.Put32(kObjectOffset + breaker_size);
  out.Put32(kIndexObjectSize);
  out.PutBytes(breaker);
  out.PutBytes(kIndexClass);
  out.Put32(0x29A);
  out.Put32(code_page);
  out.Put32(language);
  out.Put32(0x272F);
  out.Put32(0);
  return out.Take();
}

}  // namespace scrivo

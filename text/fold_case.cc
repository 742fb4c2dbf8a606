#include "text/fold_case.h"

#include <algorithm>
#include <iterator>

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

struct CaseRange {
  char32_t first, last;
  char32_t offset;  // from capital to small; 1: capitals stand at every other number, small follows
};

// The capital letters of the alphabets that ANSI code pages hold.
constexpr CaseRange kCapitals[] = {
    {0xC0, 0xD6, 32},   {0xD8, 0xDE, 32},    {0x100, 0x12E, 1},   {0x132, 0x136, 1},
    {0x139, 0x147, 1},  {0x14A, 0x176, 1},   {0x179, 0x17D, 1},   {0x1CD, 0x1DB, 1},
    {0x386, 0x386, 38}, {0x388, 0x38A, 37},  {0x38C, 0x38C, 64},  {0x38E, 0x38F, 63},
    {0x391, 0x3A1, 32}, {0x3A3, 0x3AB, 32},  {0x400, 0x40F, 80},  {0x410, 0x42F, 32},
    {0x460, 0x480, 1},  {0x48A, 0x4BE, 1},   {0x4C1, 0x4CD, 1},   {0x4D0, 0x52E, 1},
    {0x531, 0x556, 48}, {0x1E00, 0x1E94, 1}, {0x1EA0, 0x1EFE, 1},
};

char32_t SmallLetter(char32_t c) {
  if (c == 0x178) return 0xFF;   // Y with diaeresis, whose small letter is in Latin-1
  if (c == 0x3C2) return 0x3C3;  // the sigma at the end of a word
  const auto range = std::find_if(std::begin(kCapitals), std::end(kCapitals),
                                  [c](const CaseRange& r) { return c >= r.first && c <= r.last; });
  if (range == std::end(kCapitals)) return c;
  if (range->offset == 1) return (c - range->first) % 2 == 0 ? c + 1 : c;
  return c + range->offset;
}

}  // namespace

std::string FoldCase(std::string_view utf8) {
  std::string folded;
  folded.reserve(utf8.size());
  while (!utf8.empty()) {
    const char c = utf8.front();
    if (static_cast<unsigned char>(c) < 0x80) {
      folded.push_back(AsciiLower(c));
      utf8.remove_prefix(1);
      continue;
    }
    const std::string_view before = utf8;
    const char32_t character = NextUtf8(&utf8);
    const char32_t small = SmallLetter(character);
    if (small == character) {
      folded.append(before.substr(0, before.size() - utf8.size()));
    } else {
      AppendUtf8(small, &folded);
    }
  }
  return folded;
}

}  // namespace scrivo

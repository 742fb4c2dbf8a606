#include "webs/name_order.h"

#include "text/fold_case.h"

namespace scrivo {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string PersonOrderKey(std::string_view utf8) {
  const std::string folded = FoldCase(utf8);
  std::string key;
  key.reserve(folded.size() + 8);
  for (std::size_t at = 0; at < folded.size();) {
    if (!IsDigit(folded[at])) {
      key.push_back(folded[at++]);
      continue;
    }
    while (at + 1 < folded.size() && folded[at] == '0' && IsDigit(folded[at + 1])) ++at;
    const std::size_t first = at;
    while (at < folded.size() && IsDigit(folded[at])) ++at;
    const std::size_t digits = at - first;
    // Longer numbers are larger: the count goes first, behind a digit so that numbers keep their
    // place among the other characters.
    key.push_back('0');
    for (int shift = 24; shift >= 0; shift -= 8) {
      key.push_back(static_cast<char>((digits >> shift) & 0xFF));
    }
    key.append(folded, first, digits);
  }
  return key;
}

}  // namespace scrivo

#include "ui/number_text.h"

#include <charconv>
#include <cmath>

#include "system/error.h"

namespace scrivo {

std::string TextOfSingle(float number) {
  char buffer[64];  // the longest single has 39 digits before the point or 45 places behind it
  const std::to_chars_result end =
      std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed);
  return std::string(buffer, end.ptr);
}

double NumberFromText(const std::string& text) {
  constexpr char kBlanks[] = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  const std::size_t last = text.find_last_not_of(kBlanks);
  double number = 0;
  if (first != std::string::npos) {
    const char* begin = text.data() + first;
    const char* end = text.data() + last + 1;
    if (*begin == '+' && end - begin > 1 && begin[1] != '-') ++begin;  // from_chars takes no plus
    const std::from_chars_result read = std::from_chars(begin, end, number);
    if (read.ec == std::errc() && read.ptr == end && std::isfinite(number)) return number;
  }
  throw Error(kTypeMismatch, "Scrivo", "Type mismatch: \"" + text + "\" is not a number");
}

}  // namespace scrivo

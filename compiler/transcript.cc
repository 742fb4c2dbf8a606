#include "compiler/transcript.h"

#include <algorithm>
#include <cmath>

namespace scrivo {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr std::string_view kLineEnds = "\r\n";

bool IsLetter(char c, char upper_case) { return c == upper_case || c == upper_case - 'A' + 'a'; }

// True when the letters HHC stand at the beginning of `text`.
bool BeginsWithMark(std::string_view text) {
  return text.size() >= 3 && IsLetter(text[0], 'H') && IsLetter(text[1], 'H') &&
         IsLetter(text[2], 'C');
}

// Where the message text of the mark at `mark` begins, npos when what follows the mark is no
// message.
std::size_t MessageTextAfter(std::string_view transcript, std::size_t mark) {
  const std::size_t digits = mark + 3;
  const std::size_t colon = transcript.find_first_not_of(kDigits, digits);
  if (colon == std::string_view::npos || colon == digits || transcript[colon] != ':') {
    return std::string_view::npos;
  }
  const std::size_t text = colon + 2;
  if (text >= transcript.size()) return std::string_view::npos;
  if (kWhiteSpace.find(transcript[colon + 1]) == std::string_view::npos) {
    return std::string_view::npos;
  }
  return kLineEnds.find(transcript[text]) == std::string_view::npos ? text : std::string_view::npos;
}

}  // namespace

std::vector<std::string> ScanForMessages(std::string_view transcript) {
  std::vector<std::string> messages;
  std::size_t at = 0;
  while ((at = transcript.find_first_of("Hh", at)) != std::string_view::npos) {
    const bool is_mark = BeginsWithMark(transcript.substr(at));
    const std::size_t text = is_mark ? MessageTextAfter(transcript, at) : std::string_view::npos;
    if (text == std::string_view::npos) {
      ++at;  // the digits after a mark hold no other mark, so they are read at most once
      continue;
    }
    const std::size_t end = std::min(transcript.find_first_of(kLineEnds, text), transcript.size());
    messages.emplace_back(transcript.substr(text, end - text));
    at = end;
  }
  return messages;
}

int EstimateProgress(std::int64_t line_breaks, std::int32_t files_count) {
  const double expected_lines = static_cast<double>(files_count) + 10;
  if (expected_lines <= 0) return 0;
  const double progress = std::nearbyint(static_cast<double>(line_breaks) / expected_lines * 100);
  return progress > 100 ? 99 : static_cast<int>(progress);
}

}  // namespace scrivo

#pragma once

// ASCII rules of markup and of project files: letters fold, blanks separate. Bytes from 0x80 up are
// never folded here.

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivo {

constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  }
  return true;
}

constexpr bool StartsWithIgnoringCase(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && EqualsIgnoringCase(text.substr(0, start.size()), start);
}

inline std::string AsciiLowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) c = AsciiLower(c);
  return lowered;
}

// `text` without the blanks at both ends.
constexpr std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Takes the first line off the front of `*text`, without its end: CR LF, LF, or CR alone. Behind
// the last line `*text` is empty.
constexpr std::string_view TakeLine(std::string_view* text) {
  const std::size_t end = text->find_first_of("\r\n");
  const std::string_view line = text->substr(0, end);
  if (end == std::string_view::npos) {
    *text = {};
  } else {
    text->remove_prefix(end);
    text->remove_prefix(text->starts_with("\r\n") ? 2 : 1);
  }
  return line;
}

// How many of these line ends begin in `text` from `from` on and before `to`.
constexpr std::size_t CountLineEnds(std::string_view text, std::size_t from, std::size_t to) {
  std::size_t count = 0;
  for (std::size_t at = from; at < to; ++at) {
    const bool after_cr = at > 0 && text[at - 1] == '\r';
    if (text[at] == '\r' || (text[at] == '\n' && !after_cr)) ++count;
  }
  return count;
}

}  // namespace scrivo

#include "webs/html_tag.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";

void SkipBlanks(std::string_view* text) {
  text->remove_prefix(std::min(text->find_first_not_of(kBlanks), text->size()));
}

std::string_view TakeUntil(std::string_view* text, std::string_view stops) {
  const std::size_t end = std::min(text->find_first_of(stops), text->size());
  const std::string_view taken = text->substr(0, end);
  text->remove_prefix(end);
  return taken;
}

std::string_view TakeValue(std::string_view* text) {
  SkipBlanks(text);
  if (text->empty()) return {};
  const char quote = text->front();
  if (quote != '"' && quote != '\'') return TakeUntil(text, kBlanks);
  text->remove_prefix(1);
  const std::string_view value = TakeUntil(text, std::string_view(&quote, 1));
  if (!text->empty()) text->remove_prefix(1);
  return value;
}

}  // namespace

std::string SmallAscii(std::string_view text) {
  std::string small(text);
  for (char& c : small) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return small;
}

HtmlTag::HtmlTag(std::string_view text) : attributes_(text) {
  if (text.starts_with('/')) {
    is_end_ = true;
    attributes_.remove_prefix(1);
  }
  name_ = SmallAscii(TakeUntil(&attributes_, " \t\r\n\f/"));
}

std::optional<std::string_view> HtmlTag::Attribute(std::string_view wanted) const {
  std::string_view rest = attributes_;
  for (;;) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n\f/"), rest.size()));
    if (rest.empty()) return std::nullopt;
    // An "=" at the start of a name is part of it.
    std::string_view after = rest.substr(1);
    TakeUntil(&after, " \t\r\n\f/=");
    const std::string_view name = rest.substr(0, rest.size() - after.size());
    rest = after;
    SkipBlanks(&after);
    std::string_view value;
    if (after.starts_with('=')) {
      after.remove_prefix(1);
      value = TakeValue(&after);
      rest = after;
    }
    if (SmallAscii(name) == wanted) return value;
  }
}

}  // namespace scrivo

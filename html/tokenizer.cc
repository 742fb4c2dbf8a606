#include "html/tokenizer.h"

#include <algorithm>
#include <span>

#include "html/name_filter.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool EndsName(char c) { return IsBlank(c) || c == '>' || c == '/'; }

// Whether `text` begins with the name of a tag, given in small letters, and not with a longer one.
bool StartsWithName(std::string_view text, std::string_view name) {
  return StartsWithIgnoringCase(text, name) &&
         (text.size() == name.size() || EndsName(text[name.size()]));
}

constexpr std::string_view kNamesWithoutTags[] = {"script", "style", "title", "textarea", "xmp"};

constexpr std::string_view kInlineNames[] = {
    "a", "abbr", "acronym", "b",    "big",    "code",   "em", "font", "i",   "kbd",
    "s", "samp", "small",   "span", "strike", "strong", "tt", "u",    "var", "wbr"};

constexpr std::string_view kBodyNames[] = {
    "body", "frameset", "p", "h1", "h2", "h3", "h4",   "h5",  "h6",   "table",  "div", "ul",  "ol",
    "dl",   "img",      "a", "hr", "b",  "i",  "font", "pre", "form", "center", "br",  "span"};

class ElementNames {
 public:
  constexpr explicit ElementNames(std::span<const std::string_view> names) : names_(names) {
    for (const std::string_view name : names) filter_.Add(name);
  }

  bool Hold(std::string_view name) const {
    return filter_.MayBe(name) &&
           std::any_of(names_.begin(), names_.end(),
                       [&](std::string_view known) { return EqualsIgnoringCase(name, known); });
  }

 private:
  std::span<const std::string_view> names_;
  NameFilter filter_;
};

constexpr ElementNames kWithoutTags(kNamesWithoutTags), kInline(kInlineNames), kOfBody(kBodyNames);

}  // namespace

std::optional<std::string_view> HtmlToken::Attribute(std::string_view lower) const {
  std::string_view rest = content;
  HtmlAttribute attribute;
  while (NextAttribute(&rest, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, lower)) return attribute.value;
  }
  return std::nullopt;
}

bool HtmlTokenizer::Next(HtmlToken* token) {
  if (position_ >= html_.size()) return false;
  token->offset = position_;
  token->name = {};
  if (!raw_element_.empty()) {
    ReadRaw(token);
    raw_element_ = {};
    if (!token->content.empty()) return true;
    token->name = {};
  }
  if (html_[position_] == '<' && position_ + 1 < html_.size()) {
    const char next = html_[position_ + 1];
    if (next == '!' || next == '?') {
      ReadOther(token);
      return true;
    }
    if ((IsAsciiLetter(next) || next == '/') && ReadTag(token)) return true;
  }
  // A "<" that starts no tag is text, and so is everything up to the next "<".
  std::size_t end = html_.find('<', position_ + 1);
  if (end == kNone) end = html_.size();
  token->kind = HtmlToken::Kind::kText;
  token->content = html_.substr(position_, end - position_);
  position_ = end;
  return true;
}

bool HtmlTokenizer::ReadTag(HtmlToken* token) {
  std::size_t at = position_ + 1;
  const bool is_end = html_[at] == '/';
  if (is_end) {
    ++at;
    if (at >= html_.size() || !IsAsciiLetter(html_[at])) return false;
  }
  const std::size_t name_start = at;
  while (at < html_.size() && !EndsName(html_[at])) ++at;
  token->name = html_.substr(name_start, at - name_start);
  if (!is_end && !own_tag_.empty() && EqualsIgnoringCase(token->name, own_tag_)) {
    token->kind = HtmlToken::Kind::kStartTag;
    token->content = {};
    position_ = at;
    return true;
  }
  const std::size_t end = TagEnd(at);
  token->content = html_.substr(at, end - at);
  token->kind = is_end ? HtmlToken::Kind::kEndTag : HtmlToken::Kind::kStartTag;
  position_ = end < html_.size() ? end + 1 : end;
  if (!is_end && kWithoutTags.Hold(token->name)) raw_element_ = token->name;
  return true;
}

// Where the ">" of the tag is whose attributes start at `from`; quoted values may contain ">".
// Browsers must see the same end, or what is an attribute here would be a script there.
std::size_t HtmlTokenizer::TagEnd(std::size_t from) {
  enum class In { kBlank, kName, kBehindName, kBeforeValue, kValue } in = In::kBlank;
  for (std::size_t at = from; at < html_.size(); ++at) {
    const char c = html_[at];
    if (c == '>') return at;
    if (IsBlank(c)) {
      if (in == In::kName) in = In::kBehindName;
      if (in == In::kValue) in = In::kBlank;
    } else if (in == In::kBeforeValue) {
      // A quote opens a value only here; elsewhere it is a stray character.
      const std::size_t closing = c == '"' || c == '\'' ? ClosingQuote(c, at + 1) : kNone;
      in = closing == kNone ? In::kValue : In::kBlank;
      if (closing != kNone) at = closing;
    } else if (in != In::kValue) {
      // An "=" without a name in front of it begins one.
      const bool has_name = in == In::kName || in == In::kBehindName;
      in = c == '/' ? In::kBlank : c == '=' && has_name ? In::kBeforeValue : In::kName;
    }
  }
  return html_.size();
}

std::size_t HtmlTokenizer::ClosingQuote(char quote, std::size_t from) {
  bool& none_left = quote == '"' ? no_double_quote_ : no_single_quote_;
  if (none_left) return kNone;
  const std::size_t closing = html_.find(quote, from);
  none_left = closing == kNone;
  return closing;
}

void HtmlTokenizer::ReadOther(HtmlToken* token) {
  token->kind = HtmlToken::Kind::kOther;
  std::size_t end = kNone;
  if (html_.substr(position_).starts_with("<!--")) end = CommentEnd(position_ + 2);
  // A comment that is never closed ends at the next ">", so that it does not hide the whole page.
  if (end == kNone) end = html_.find('>', position_);
  if (end == kNone) end = html_.size();
  token->content = html_.substr(position_, end - position_);
  position_ = std::min(end + 1, html_.size());
}

// The ">" of the "-->" or "--!>" that closes a comment, whose first dash is at `from`. The dashes
// of
// "<!-->" and "<!--->" close it too.
std::size_t HtmlTokenizer::CommentEnd(std::size_t from) {
  if (no_comment_end_) return kNone;
  for (std::size_t dashes = from; (dashes = html_.find("--", dashes)) != kNone; ++dashes) {
    const std::string_view rest = html_.substr(dashes + 2);
    if (rest.starts_with('>')) return dashes + 2;
    if (rest.starts_with("!>") && dashes > from) return dashes + 3;
  }
  no_comment_end_ = true;
  return kNone;
}

void HtmlTokenizer::ReadRaw(HtmlToken* token) {
  const std::size_t end = EqualsIgnoringCase(raw_element_, "title") ? TitleEnd() : RawEnd();
  token->kind = HtmlToken::Kind::kRaw;
  token->name = raw_element_;
  token->content = html_.substr(position_, end - position_);
  position_ = end;
}

std::size_t HtmlTokenizer::RawEnd() const {
  std::size_t end = position_;
  while ((end = html_.find("</", end)) != kNone) {
    if (StartsWithName(html_.substr(end + 2), raw_element_)) return end;
    end += 2;
  }
  return html_.size();
}

// No byte is looked at twice for two titles, since the search never passes another title.
std::size_t HtmlTokenizer::TitleEnd() const {
  std::size_t first_tag = kNone;
  for (std::size_t at = position_; (at = html_.find('<', at)) != kNone; ++at) {
    const std::string_view rest = html_.substr(at + 1);
    // A "<" at the end of a file that was cut off began a tag.
    const char next = rest.empty() ? '/' : rest[0];
    if (!IsAsciiLetter(next) && next != '/' && next != '!') continue;
    if (StartsWithName(rest, "/title")) return at;
    if (first_tag == kNone) first_tag = at;
    if (StartsWithName(rest, "/head") || StartsWithName(rest, "body") ||
        StartsWithName(rest, "title")) {
      break;
    }
  }
  return std::min(first_tag, html_.size());
}

bool NextAttribute(std::string_view* content, HtmlAttribute* attribute) {
  std::string_view rest = *content;
  while (!rest.empty() &&
         (IsBlank(rest[0]) || rest[0] == '/' || rest[0] == '"' || rest[0] == '\'')) {
    rest.remove_prefix(1);
  }
  if (rest.empty()) return false;
  std::size_t end = 1;  // a name is at least one character, even a stray "="
  while (end < rest.size() && !IsBlank(rest[end]) && rest[end] != '=' && rest[end] != '/') ++end;
  attribute->name = rest.substr(0, end);
  attribute->value = {};
  rest.remove_prefix(end);
  std::size_t equals = 0;
  while (equals < rest.size() && IsBlank(rest[equals])) ++equals;
  if (equals < rest.size() && rest[equals] == '=') {
    rest.remove_prefix(equals + 1);
    while (!rest.empty() && IsBlank(rest[0])) rest.remove_prefix(1);
    std::size_t value_end = kNone;
    if (!rest.empty() && (rest[0] == '"' || rest[0] == '\'')) value_end = rest.find(rest[0], 1);
    if (value_end != kNone) {
      attribute->value = rest.substr(1, value_end - 1);
      rest.remove_prefix(value_end + 1);
    } else {
      value_end = 0;
      while (value_end < rest.size() && !IsBlank(rest[value_end])) ++value_end;
      attribute->value = rest.substr(0, value_end);
      rest.remove_prefix(value_end);
    }
  }
  *content = rest;
  return true;
}

bool IsInlineElement(std::string_view name) { return kInline.Hold(name); }

bool StartsBody(std::string_view name) { return kOfBody.Hold(name); }

int HeadingLevel(std::string_view name) {
  if (name.size() != 2 || (name[0] != 'h' && name[0] != 'H')) return 0;
  return name[1] >= '1' && name[1] <= '6' ? name[1] - '0' : 0;
}

}  // namespace scrivo

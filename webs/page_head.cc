#include "webs/page_head.h"

#include <algorithm>
#include <array>

#include "text/code_page.h"
#include "webs/html_tag.h"

namespace scrivo {
namespace {

// A page's head seldom takes more; a larger block would only read bytes that nobody wants.
constexpr std::size_t kBlock = 4096;
// A longer title or heading is a mistake of the page, such as a title that is never closed.
constexpr std::size_t kLongestText = 4096;
// The longest byte order mark, that of UTF-8.
constexpr std::size_t kMarkLength = 3;
// A longer tag is cut: only meta tags are looked into, and keywords as long are none.
constexpr std::size_t kLongestTag = 64 * 1024;

template <std::size_t n>
bool IsOneOf(std::string_view name, const std::array<std::string_view, n>& names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; }

// Elements that hold text without tags. Their end tag ends them and nothing else does.
bool HoldsRawText(std::string_view name) {
  constexpr std::array<std::string_view, 4> kNames = {"script", "style", "textarea", "xmp"};
  return IsOneOf(name, kNames);
}

// Elements that can only stand in a body: a page may go without its <body> tag.
bool StartsBody(std::string_view name) {
  constexpr std::array<std::string_view, 25> kNames = {
      "body",  "frameset", "p",   "h1",   "h2",     "h3",  "h4",  "h5", "h6",
      "table", "div",      "ul",  "ol",   "dl",     "img", "a",   "hr", "b",
      "i",     "font",     "pre", "form", "center", "br",  "span"};
  return IsOneOf(name, kNames);
}

// Elements that show that a title was never closed.
bool EndsTitle(std::string_view name, bool is_end) {
  constexpr std::array<std::string_view, 6> kStarts = {"meta",  "link", "script",
                                                       "style", "base", "body"};
  return is_end ? name == "title" || name == "head" : IsOneOf(name, kStarts);
}

// Elements that stand between words of a heading.
bool SeparatesWords(std::string_view name) {
  constexpr std::array<std::string_view, 4> kNames = {"br", "p", "div", "img"};
  return IsOneOf(name, kNames);
}

bool IsHeading(std::string_view name) { return name == "h1" || name == "h2" || name == "h3"; }

// Elements that show that a heading was never closed.
bool EndsHeading(std::string_view name, bool is_end) {
  constexpr std::array<std::string_view, 4> kEnds = {"td", "table", "body", "html"};
  constexpr std::array<std::string_view, 4> kStarts = {"td", "table", "ul", "ol"};
  const bool any_heading = name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6';
  return any_heading || (is_end ? IsOneOf(name, kEnds) : IsOneOf(name, kStarts));
}

// Blanks only; the no-break spaces of an empty heading too, in whatever way they are written.
bool IsEmptyText(std::string_view text) {
  while (!text.empty()) {
    if (IsBlank(text[0]) || text[0] == '\xA0') {
      text.remove_prefix(1);
    } else if (text.starts_with("\xC2\xA0")) {
      text.remove_prefix(2);
    } else if (text.starts_with("&nbsp;")) {
      text.remove_prefix(6);
    } else {
      return false;
    }
  }
  return true;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The charset in "text/html; charset=windows-1252".
std::optional<int> CharsetOf(std::string_view content) {
  const std::string small = SmallAscii(content);
  const std::size_t at = small.find("charset");
  if (at == std::string::npos) return std::nullopt;
  const std::size_t equals = small.find('=', at);
  if (equals == std::string::npos) return std::nullopt;
  const std::size_t end = std::min(small.find(';', equals), small.size());
  return CodePageFromName(std::string_view(small).substr(equals + 1, end - equals - 1));
}

}  // namespace

bool PageHeadScanner::Feed(std::string_view bytes) {
  if (encoding_ == Encoding::kUnknown) {
    const std::size_t missing = std::min(kMarkLength - mark_.size(), bytes.size());
    mark_ += bytes.substr(0, missing);
    bytes.remove_prefix(missing);
    if (mark_.size() < kMarkLength) return false;
    Start();
  }
  Decode(bytes);
  return done_;
}

PageHead PageHeadScanner::Finish() {
  if (encoding_ == Encoding::kUnknown) Start();
  EndCollecting();
  return std::move(head_);
}

void PageHeadScanner::Start() {
  std::string_view first = mark_;
  encoding_ = Encoding::kBytes;
  std::size_t mark_length = 0;
  if (first.starts_with("\xEF\xBB\xBF")) {
    mark_length = 3;
  } else if (first.starts_with("\xFF\xFE")) {
    encoding_ = Encoding::kUtf16Le;
    mark_length = 2;
  } else if (first.starts_with("\xFE\xFF")) {
    encoding_ = Encoding::kUtf16Be;
    mark_length = 2;
  }
  if (mark_length > 0) head_.code_page = kUtf8CodePage;
  Decode(first.substr(mark_length));
}

void PageHeadScanner::Decode(std::string_view bytes) {
  if (encoding_ == Encoding::kBytes) {
    Scan(bytes);
    return;
  }
  const bool little = encoding_ == Encoding::kUtf16Le;
  std::string utf8;
  for (const char c : bytes) {
    if (++utf16_bytes_ % 2 == 1) {
      utf16_byte_ = static_cast<unsigned char>(c);
      continue;
    }
    const char32_t second = static_cast<unsigned char>(c);
    const char32_t unit = little ? utf16_byte_ | second << 8 : utf16_byte_ << 8 | second;
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      high_surrogate_ = unit;
    } else if (unit >= 0xDC00 && unit <= 0xDFFF && high_surrogate_ != 0) {
      AppendUtf8(0x10000 + ((high_surrogate_ - 0xD800) << 10) + (unit - 0xDC00), &utf8);
      high_surrogate_ = 0;
    } else {
      AppendUtf8(unit, &utf8);
    }
  }
  Scan(utf8);
}

void PageHeadScanner::Scan(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size() && !done_;) {
    const char c = bytes[at];
    switch (state_) {
      case State::kText: {
        const std::size_t end = std::min(bytes.find('<', at), bytes.size());
        Collect(bytes.substr(at, end - at));
        at = end + 1;
        if (end < bytes.size()) state_ = State::kTagStart;
        continue;
      }
      case State::kTagStart:
        if (!ScanTagStart(c)) continue;
        break;
      case State::kTag:
        ScanTag(c);
        break;
      case State::kDeclaration:
        ScanDeclaration(c);
        break;
      case State::kComment:
        ScanComment(c);
        break;
      case State::kRawText:
        ScanRawText(c);
        break;
    }
    ++at;
  }
}

// False when `c` is still to be read: the "<" was only text.
bool PageHeadScanner::ScanTagStart(char c) {
  tag_.clear();
  quote_ = '\0';
  last_solid_ = '\0';
  if (IsLetter(c) || c == '/') {
    state_ = State::kTag;
  } else if (c == '!' || c == '?') {
    state_ = State::kDeclaration;
  } else {
    state_ = State::kText;
    Collect("<");
    return false;
  }
  tag_.push_back(c);
  return true;
}

void PageHeadScanner::ScanTag(char c) {
  if (c == '>' && quote_ == '\0') {
    state_ = State::kText;
    HandleTag();
    return;
  }
  if (tag_.size() < kLongestTag) tag_.push_back(c);
  if (quote_ != '\0') {
    if (c == quote_) quote_ = '\0';
  } else if ((c == '"' || c == '\'') && last_solid_ == '=') {
    quote_ = c;
  }
  if (!IsBlank(c)) last_solid_ = c;
}

void PageHeadScanner::ScanDeclaration(char c) {
  if (c == '>') {
    state_ = State::kText;
    return;
  }
  if (tag_.size() < 3) tag_.push_back(c);
  if (tag_ == "!--") {
    state_ = State::kComment;
    dashes_ = 2;  // "<!-->" is a whole comment
  }
}

void PageHeadScanner::ScanComment(char c) {
  if (c == '>' && dashes_ >= 2) {
    state_ = State::kText;
  } else {
    dashes_ = c == '-' ? std::min(dashes_ + 1, 2) : 0;
  }
}

void PageHeadScanner::ScanRawText(char c) {
  const char small = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  if (small == raw_end_[raw_matched_]) {
    ++raw_matched_;
  } else {
    raw_matched_ = small == '<' ? 1 : 0;
  }
  if (raw_matched_ < raw_end_.size()) return;
  ScanTagStart('/');
  tag_ = raw_end_.substr(1);
}

void PageHeadScanner::Collect(std::string_view text) {
  if (collecting_ == Collecting::kNothing) return;
  collected_ += text.substr(0, kLongestText - std::min(collected_.size(), kLongestText));
}

void PageHeadScanner::EndCollecting() {
  const bool is_empty = IsEmptyText(collected_);
  if (collecting_ == Collecting::kTitle && !is_empty) head_.title = std::move(collected_);
  if (collecting_ == Collecting::kHeading && !is_empty) {
    head_.headings.push_back(std::move(collected_));
  }
  collected_.clear();
  collecting_ = Collecting::kNothing;
}

void PageHeadScanner::HandleTag() {
  const HtmlTag tag(tag_);
  const std::string& name = tag.name();
  if (collecting_ == Collecting::kTitle) {
    if (!EndsTitle(name, tag.is_end())) {
      Collect("<" + tag_ + ">");
      return;
    }
    EndCollecting();
  }
  if (collecting_ == Collecting::kHeading) {
    if (EndsHeading(name, tag.is_end())) {
      EndCollecting();
    } else if (SeparatesWords(name)) {
      Collect(" ");
    }
  }
  if (tag.is_end()) {
    if (name == "head") EnterBody();
    if (name == "html") done_ = true;
  } else {
    HandleStart(tag);
  }
}

void PageHeadScanner::HandleStart(const HtmlTag& tag) {
  const std::string& name = tag.name();
  if (StartsBody(name)) EnterBody();
  if (HoldsRawText(name)) {
    state_ = State::kRawText;
    raw_end_ = "</" + name;
    raw_matched_ = 0;
  } else if (in_body_) {
    if (IsHeading(name)) collecting_ = Collecting::kHeading;
  } else if (name == "title" && head_.title.empty()) {
    collecting_ = Collecting::kTitle;
  } else if (name == "meta") {
    HandleMeta(tag);
  }
}

void PageHeadScanner::EnterBody() {
  in_body_ = true;
  if (headings_ == Headings::kNo) done_ = true;
}

void PageHeadScanner::HandleMeta(const HtmlTag& tag) {
  const std::string_view content = tag.Attribute("content").value_or("");
  const auto name = tag.Attribute("name");
  const std::string equivalent = SmallAscii(Trimmed(tag.Attribute("http-equiv").value_or("")));
  std::optional<int> code_page;
  if (const auto charset = tag.Attribute("charset")) code_page = CodePageFromName(*charset);
  if (equivalent == "content-type") code_page = CharsetOf(content);
  if (!head_.code_page) head_.code_page = code_page;
  std::string named = name ? SmallAscii(Trimmed(*name)) : equivalent;
  if (!named.empty()) head_.metas.push_back({std::move(named), std::string(content)});
}

PageHead ReadPageHead(FileReader& reader, Headings headings) {
  PageHeadScanner scanner(headings);
  std::array<char, kBlock> block;
  for (;;) {
    const std::size_t got = reader.Read(block.data(), block.size());
    if (got == 0 || scanner.Feed({block.data(), got})) return scanner.Finish();
  }
}

}  // namespace scrivo

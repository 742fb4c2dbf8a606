#include "html/html_scanner.h"

#include <algorithm>
#include <optional>

#include "html/css_links.h"
#include "html/html_tokenizer.h"
#include "html/page_text.h"
#include "html/text_charset.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

// Which attribute of which element names a file.
struct LinkRule {
  std::string_view element, attribute;
  LinkKind kind;
};

constexpr LinkRule kLinkRules[] = {
    {"a", "href", LinkKind::kAnchor},          {"area", "href", LinkKind::kAnchor},
    {"img", "src", LinkKind::kImage},          {"img", "lowsrc", LinkKind::kImage},
    {"img", "dynsrc", LinkKind::kImage},       {"link", "href", LinkKind::kPart},
    {"script", "src", LinkKind::kPart},        {"body", "background", LinkKind::kImage},
    {"table", "background", LinkKind::kImage}, {"tr", "background", LinkKind::kImage},
    {"td", "background", LinkKind::kImage},    {"th", "background", LinkKind::kImage},
    {"frame", "src", LinkKind::kPage},         {"iframe", "src", LinkKind::kPage},
    {"input", "src", LinkKind::kImage},        {"embed", "src", LinkKind::kPart},
    {"bgsound", "src", LinkKind::kPart},       {"object", "data", LinkKind::kPart},
    {"audio", "src", LinkKind::kPart},         {"video", "src", LinkKind::kPart},
    {"video", "poster", LinkKind::kImage},     {"source", "src", LinkKind::kPart},
};

constexpr std::string_view kIndexObjectClass = "1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e";

// The elements that stand inside a line of text; every other tag ends a word.
bool IsInline(std::string_view element) {
  constexpr std::string_view kInline[] = {
      "a", "abbr", "acronym", "b",    "big",    "code",   "em", "font", "i",   "kbd",
      "s", "samp", "small",   "span", "strike", "strong", "tt", "u",    "var", "wbr"};
  for (const std::string_view name : kInline) {
    if (EqualsIgnoringCase(element, name)) return true;
  }
  return false;
}

// 1 to 6 for H1 to H6, 0 for other elements.
int HeadingLevel(std::string_view element) {
  if (element.size() != 2 || (element[0] != 'h' && element[0] != 'H')) return 0;
  return element[1] >= '1' && element[1] <= '6' ? element[1] - '0' : 0;
}

class Scanner {
 public:
  Scanner(std::string_view html, int code_page, WordCollector* words)
      : html_(html), tokens_(html), bad_tags_(html) {
    page_.code_page = DeclaredCodePage(html);
    if (page_.code_page == 0) {
      page_.code_page = LooksLikeUtf8(html) ? kUtf8CodePage : code_page;
    }
    if (words != nullptr) text_.emplace(page_.code_page, code_page, words);
  }

  PageScan Scan();

 private:
  void StartTag(const HtmlToken& token);
  void Links(const HtmlToken& token);
  void StyleLinks(std::string_view css, std::size_t offset);
  void Meta(const HtmlToken& token);
  void Object(const HtmlToken& token);
  void Param(const HtmlToken& token);
  void AddLink(LinkKind kind, std::string_view address, std::size_t offset);
  void Heading(const HtmlToken& token);
  void EndHeading();
  void TitleText(std::string_view content);
  void EndTitle();
  std::string Value(std::string_view value) const {
    return DecodeEntities(ToUtf8(value, page_.code_page), EntityPlace::kAttribute);
  }

  std::string_view html_;
  HtmlTokenizer tokens_;
  BadTagFinder bad_tags_;
  PageScan page_;
  std::optional<PageText> text_;
  std::string title_;  // raw bytes so far
  bool in_title_ = false, in_index_object_ = false, in_style_ = false;
  PageHeading heading_;       // while one is open
  std::string heading_text_;  // raw bytes so far
  bool in_heading_ = false;
};

PageScan Scanner::Scan() {
  if (html_.starts_with(kUtf8Mark)) tokens_.set_position(kUtf8Mark.size());
  HtmlToken token;
  while (tokens_.Next(&token)) {
    bad_tags_.See(token);
    switch (token.kind) {
      case HtmlToken::Kind::kText:
        if (in_heading_) heading_text_.append(token.content);
        if (in_title_) {
          TitleText(token.content);
        } else if (text_) {
          text_->Add(token.content);
        }
        break;
      case HtmlToken::Kind::kRaw:
        if (in_style_) StyleLinks(token.content, token.offset);
        in_style_ = false;
        break;
      case HtmlToken::Kind::kStartTag:
        StartTag(token);
        break;
      case HtmlToken::Kind::kEndTag:
        if (in_title_ && EqualsIgnoringCase(token.name, "title")) EndTitle();
        if (EqualsIgnoringCase(token.name, "object")) in_index_object_ = false;
        if (in_heading_ && HeadingLevel(token.name) != 0) EndHeading();
        if (text_ && !IsInline(token.name)) text_->Break();
        break;
      case HtmlToken::Kind::kOther:
        break;
    }
  }
  if (in_title_) EndTitle();
  if (in_heading_) EndHeading();
  if (text_) text_->Break();
  page_.bad_tags = bad_tags_.Take();
  return std::move(page_);
}

void Scanner::StartTag(const HtmlToken& token) {
  if (text_ && !IsInline(token.name)) text_->Break();
  in_style_ = EqualsIgnoringCase(token.name, "style");
  Heading(token);
  if (EqualsIgnoringCase(token.name, "title")) {
    in_title_ = !page_.has_title;  // a second title, as in an inline drawing, is text
  } else if (EqualsIgnoringCase(token.name, "meta")) {
    Meta(token);
  } else if (EqualsIgnoringCase(token.name, "param")) {
    if (in_index_object_) Param(token);
  } else if (EqualsIgnoringCase(token.name, "base")) {
    std::string_view content = token.content;
    HtmlAttribute attribute;
    while (NextAttribute(&content, &attribute)) {
      if (EqualsIgnoringCase(attribute.name, "href")) page_.base = Trimmed(attribute.value);
    }
  } else {
    if (EqualsIgnoringCase(token.name, "object")) Object(token);
    Links(token);
  }
}

// A heading's place is its own id, or else that of an anchor within it.
void Scanner::Heading(const HtmlToken& token) {
  const int level = HeadingLevel(token.name);
  if (level == 0 && !(in_heading_ && EqualsIgnoringCase(token.name, "a"))) {
    if (in_heading_ && !IsInline(token.name)) heading_text_.push_back(' ');
    return;
  }
  if (level != 0) {
    if (in_heading_) EndHeading();
    in_heading_ = true;
    heading_ = {};
    heading_.level = level;
    heading_text_.clear();
  }
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (heading_.anchor.empty() && NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "id") ||
        (level == 0 && EqualsIgnoringCase(attribute.name, "name"))) {
      heading_.anchor = Value(Trimmed(attribute.value));
    }
  }
}

void Scanner::EndHeading() {
  in_heading_ = false;
  const std::string text = DecodeEntities(ToUtf8(heading_text_, page_.code_page));
  for (const char c : text) {
    if (!IsBlank(c)) {
      heading_.text.push_back(c);
    } else if (!heading_.text.empty() && heading_.text.back() != ' ') {
      heading_.text.push_back(' ');
    }
  }
  if (heading_.text.ends_with(' ')) heading_.text.pop_back();
  page_.headings.push_back(std::move(heading_));
}

void Scanner::Links(const HtmlToken& token) {
  bool rules_apply = false;
  for (const LinkRule& rule : kLinkRules) {
    rules_apply = rules_apply || EqualsIgnoringCase(token.name, rule.element);
  }
  const bool has_style = token.content.find('(') != std::string_view::npos;
  if (!rules_apply && !has_style) return;
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (NextAttribute(&content, &attribute)) {
    if (has_style && EqualsIgnoringCase(attribute.name, "style")) {
      StyleLinks(attribute.value, token.offset);
    }
    for (const LinkRule& rule : kLinkRules) {
      if (EqualsIgnoringCase(attribute.name, rule.attribute) &&
          EqualsIgnoringCase(token.name, rule.element)) {
        AddLink(rule.kind, attribute.value, token.offset);
      }
    }
  }
}

void Scanner::StyleLinks(std::string_view css, std::size_t offset) {
  for (const CssLink& link : FindCssLinks(css)) AddLink(LinkKind::kPart, link.address, offset);
}

void Scanner::AddLink(LinkKind kind, std::string_view address, std::size_t offset) {
  address = Trimmed(address);
  if (address.empty() || address[0] == '#') return;
  PageLink link{kind, std::string(address), offset};
  if (address.find('&') != std::string_view::npos) {
    link.address = DecodeEntities(address, EntityPlace::kAttribute);
  }
  page_.links.push_back(std::move(link));
}

// <META http-equiv="refresh" content="0; url=page.htm">
void Scanner::Meta(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  bool refresh = false;
  std::string_view target;
  while (NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "http-equiv")) {
      refresh = EqualsIgnoringCase(Trimmed(attribute.value), "refresh");
    } else if (EqualsIgnoringCase(attribute.name, "content")) {
      target = attribute.value;
    }
  }
  const std::size_t semicolon = target.find(';');
  if (!refresh || semicolon == std::string_view::npos) return;
  target = Trimmed(target.substr(semicolon + 1));
  if (!StartsWithIgnoringCase(target, "url=")) return;
  target = Trimmed(target.substr(4));
  if (target.size() >= 2 && (target[0] == '\'' || target[0] == '"')) {
    target = target.substr(1, target.size() - 2);
  }
  AddLink(LinkKind::kPage, target, token.offset);
}

void Scanner::Object(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  in_index_object_ = false;
  while (NextAttribute(&content, &attribute)) {
    if (!EqualsIgnoringCase(attribute.name, "classid")) continue;
    std::string_view id = Trimmed(attribute.value);
    if (StartsWithIgnoringCase(id, "clsid:")) id.remove_prefix(6);
    in_index_object_ = EqualsIgnoringCase(id, kIndexObjectClass);
  }
}

void Scanner::Param(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  std::string_view name, value;
  while (NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "name")) name = Trimmed(attribute.value);
    if (EqualsIgnoringCase(attribute.name, "value")) value = Trimmed(attribute.value);
  }
  if (value.empty()) return;
  if (EqualsIgnoringCase(name, "keyword")) page_.keywords.push_back(Value(value));
  if (EqualsIgnoringCase(name, "alink name")) page_.associations.push_back(Value(value));
}

void Scanner::TitleText(std::string_view content) {
  title_.append(content);
  if (!text_) return;
  text_->set_in_title(true);
  text_->Add(content);
  text_->set_in_title(false);
}

void Scanner::EndTitle() {
  in_title_ = false;
  page_.has_title = true;
  if (text_) text_->Break();
  std::string title = DecodeEntities(ToUtf8(Trimmed(title_), page_.code_page));
  std::replace_if(
      title.begin(), title.end(), [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
  page_.title = std::move(title);
}

}  // namespace

PageScan ScanHtml(std::string_view html, int code_page, WordCollector* words) {
  return Scanner(html, code_page, words).Scan();
}

}  // namespace scrivo

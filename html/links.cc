#include "html/links.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "html/name_filter.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

class Finder {
 public:
  explicit Finder(std::string_view css) : css_(css) {}

  std::vector<CssLink> Find() {
    while (at_ < css_.size()) {
      const std::string_view rest = css_.substr(at_);
      if (rest.starts_with("/*")) {
        const std::size_t end = css_.find("*/", at_ + 2);
        at_ = end == std::string_view::npos ? css_.size() : end + 2;
      } else if (rest[0] == 'u' || rest[0] == 'U') {
        if (StartsWithIgnoringCase(rest, "url(")) {
          at_ += 4;
          TakeAddress(")");
        } else {
          ++at_;
        }
      } else if (rest[0] == '@' && StartsWithIgnoringCase(rest, "@import")) {
        at_ += 7;
        SkipBlanks();
        if (at_ < css_.size() && (css_[at_] == '"' || css_[at_] == '\'')) TakeAddress(";");
      } else {
        ++at_;
      }
    }
    return std::move(links_);
  }

 private:
  void SkipBlanks() {
    while (at_ < css_.size() && IsBlank(css_[at_])) ++at_;
  }

  // Takes an address in quotes, or up to `stop`; a line end stops an unclosed one.
  void TakeAddress(std::string_view stop) {
    SkipBlanks();
    if (at_ >= css_.size()) return;
    const char quote = css_[at_];
    const bool quoted = quote == '"' || quote == '\'';
    const std::size_t start = quoted ? at_ + 1 : at_;
    const char stops[] = {quoted ? quote : stop[0], '\r', '\n', '\0'};
    std::size_t end = css_.find_first_of(stops, start);
    if (end == std::string_view::npos) end = css_.size();
    const std::string_view address = Trimmed(css_.substr(start, end - start));
    if (!address.empty()) links_.push_back({address, start});
    at_ = end;
  }

  std::string_view css_;
  std::size_t at_ = 0;
  std::vector<CssLink> links_;
};

// Which attribute of which element names a file.
struct LinkRule {
  std::string_view element, attribute;
  LinkKind kind;
};

// Those of an element stand side by side.
constexpr LinkRule kLinkRules[] = {
    {"a", "href", LinkKind::kAnchor},
    {"a", "xlink:href", LinkKind::kAnchor},  // in a drawing
    {"area", "href", LinkKind::kAnchor},
    {"img", "src", LinkKind::kImage},
    {"img", "lowsrc", LinkKind::kImage},
    {"img", "dynsrc", LinkKind::kImage},
    {"image", "href", LinkKind::kImage},
    {"image", "xlink:href", LinkKind::kImage},
    {"use", "href", LinkKind::kImage},
    {"use", "xlink:href", LinkKind::kImage},
    {"link", "href", LinkKind::kPart},
    {"script", "src", LinkKind::kPart},
    {"body", "background", LinkKind::kImage},
    {"table", "background", LinkKind::kImage},
    {"tr", "background", LinkKind::kImage},
    {"td", "background", LinkKind::kImage},
    {"th", "background", LinkKind::kImage},
    {"frame", "src", LinkKind::kPage},
    {"iframe", "src", LinkKind::kPage},
    {"input", "src", LinkKind::kImage},
    {"embed", "src", LinkKind::kPart},
    {"bgsound", "src", LinkKind::kPart},
    {"object", "data", LinkKind::kPart},
    {"audio", "src", LinkKind::kPart},
    {"video", "src", LinkKind::kPart},
    {"video", "poster", LinkKind::kImage},
    {"source", "src", LinkKind::kPart},
    {"track", "src", LinkKind::kPart},
};

constexpr bool StandSideBySide() {
  for (std::size_t i = 1; i < std::size(kLinkRules); ++i) {
    if (kLinkRules[i].element == kLinkRules[i - 1].element) continue;
    for (std::size_t j = 0; j + 1 < i; ++j) {
      if (kLinkRules[j].element == kLinkRules[i].element) return false;
    }
  }
  return true;
}
static_assert(StandSideBySide());

constexpr NameFilter kElementsWithLinks = [] {
  NameFilter elements;
  for (const LinkRule& rule : kLinkRules) elements.Add(rule.element);
  return elements;
}();

// The rules for a tag's element.
std::span<const LinkRule> RulesFor(const HtmlToken& tag) {
  if (!kElementsWithLinks.MayBe(tag.name)) return {};
  const auto is_for_tag = [&](const LinkRule& rule) { return tag.Is(rule.element); };
  const auto* const first = std::find_if(std::begin(kLinkRules), std::end(kLinkRules), is_for_tag);
  return {first, std::find_if_not(first, std::end(kLinkRules), is_for_tag)};
}

// Attributes that hold several addresses, each with a size or a density behind it.
constexpr std::pair<std::string_view, std::string_view> kCandidateRules[] = {
    {"img", "srcset"}, {"source", "srcset"}, {"link", "imagesrcset"}};

// Parameters of objects that name the file to be played.
bool NamesFilm(std::string_view parameter) {
  return EqualsIgnoringCase(parameter, "movie") || EqualsIgnoringCase(parameter, "src") ||
         EqualsIgnoringCase(parameter, "filename");
}

// "Item1", "Item2", ...
bool IsItem(std::string_view parameter) {
  return StartsWithIgnoringCase(parameter, "item") && parameter.size() > 4 &&
         parameter.find_first_not_of("0123456789", 4) == std::string_view::npos;
}

}  // namespace

std::vector<CssLink> FindCssLinks(std::string_view css) { return Finder(css).Find(); }

void LinkFinder::See(const HtmlToken& token) {
  if (token.kind == HtmlToken::Kind::kStartTag) StartTag(token);
  if (token.kind == HtmlToken::Kind::kRaw && token.Is("style")) {
    StyleLinks(token.content, token.offset);
  }
  if (token.Ends("object")) EndObject();
}

std::vector<PageLink> LinkFinder::Take() {
  EndObject();
  return std::move(links_);
}

void LinkFinder::StartTag(const HtmlToken& token) {
  if (token.Is("base")) {
    if (const auto address = token.Attribute("href")) base_ = Trimmed(*address);
  } else if (token.Is("meta")) {
    Refresh(token);
  } else if (token.Is("param")) {
    Parameter(token);
  } else {
    if (token.Is("object")) EndObject();
    AttributeLinks(token);
  }
}

void LinkFinder::AttributeLinks(const HtmlToken& token) {
  const std::span<const LinkRule> rules = RulesFor(token);
  const bool has_style = token.content.find('(') != std::string_view::npos;
  if (rules.empty() && !has_style) return;
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (NextAttribute(&content, &attribute)) {
    if (has_style && EqualsIgnoringCase(attribute.name, "style")) {
      StyleLinks(WithoutReferences(attribute.value), token.offset);
    }
    for (const LinkRule& rule : rules) {
      if (EqualsIgnoringCase(attribute.name, rule.attribute)) {
        Add(rule.kind, WithoutReferences(attribute.value), token.offset);
      }
    }
    for (const auto& [element, name] : kCandidateRules) {
      if (EqualsIgnoringCase(attribute.name, name) && token.Is(element)) {
        CandidateLinks(WithoutReferences(attribute.value), token.offset);
      }
    }
  }
}

// <META http-equiv="refresh" content="0; url=page.htm">
void LinkFinder::Refresh(const HtmlToken& token) {
  const auto kind = token.Attribute("http-equiv");
  if (!kind || !EqualsIgnoringCase(Trimmed(*kind), "refresh")) return;
  const std::string content = WithoutReferences(token.Attribute("content").value_or(""));
  const std::size_t semicolon = content.find(';');
  if (semicolon == std::string::npos) return;
  std::string_view target = Trimmed(std::string_view(content).substr(semicolon + 1));
  if (!StartsWithIgnoringCase(target, "url=")) return;
  target = Trimmed(target.substr(4));
  if (target.size() >= 2 && (target[0] == '\'' || target[0] == '"')) {
    target = target.substr(1, target.size() - 2);
  }
  Add(LinkKind::kPage, target, token.offset);
}

// <PARAM name="Command" value="Related Topics"> and <PARAM name="Item1" value="Title;page.htm"> of
// the help control, in whatever order; the title may be missing or hold a semicolon itself.
void LinkFinder::Parameter(const HtmlToken& token) {
  const std::string_view name = Trimmed(token.Attribute("name").value_or(""));
  const std::string value = WithoutReferences(token.Attribute("value").value_or(""));
  if (NamesFilm(name)) {
    Add(LinkKind::kPart, value, token.offset);
  } else if (EqualsIgnoringCase(name, "command")) {
    is_related_topics_ = StartsWithIgnoringCase(Trimmed(value), "related topics");
  } else if (IsItem(name)) {
    const std::size_t semicolon = value.rfind(';');
    related_.push_back(
        {semicolon == std::string::npos ? value : value.substr(semicolon + 1), token.offset});
  }
}

void LinkFinder::EndObject() {
  if (is_related_topics_) {
    for (const RelatedTopic& topic : related_) {
      Add(LinkKind::kAnchor, topic.address, topic.offset);
    }
  }
  is_related_topics_ = false;
  related_.clear();
}

void LinkFinder::StyleLinks(std::string_view css, std::size_t offset) {
  for (const CssLink& link : FindCssLinks(css)) Add(LinkKind::kPart, link.address, offset);
}

// "small.png 1x, large.png 2x": an address ends at a blank, or with a comma where nothing is said
// of it.
void LinkFinder::CandidateLinks(std::string_view candidates, std::size_t offset) {
  constexpr std::string_view kBlanks = " \t\r\n\f";
  while (true) {
    const std::size_t start = candidates.find_first_not_of(" \t\r\n\f,");
    if (start == std::string_view::npos) return;
    candidates.remove_prefix(start);
    const std::size_t end = std::min(candidates.find_first_of(kBlanks), candidates.size());
    std::string_view address = candidates.substr(0, end);
    candidates.remove_prefix(end);
    if (!address.ends_with(',')) {
      candidates.remove_prefix(std::min(candidates.find(','), candidates.size()));
    }
    while (address.ends_with(',')) address.remove_suffix(1);
    Add(LinkKind::kImage, address, offset);
  }
}

void LinkFinder::Add(LinkKind kind, std::string_view address, std::size_t offset) {
  address = Trimmed(address);
  if (address.empty() || address[0] == '#') return;
  links_.push_back({kind, std::string(address), offset});
}

// An attribute's value in the page's code page, as which file names are looked for; a character
// that the code page lacks comes as UTF-8.
std::string LinkFinder::WithoutReferences(std::string_view value) const {
  std::string bytes;
  while (true) {
    const std::size_t ampersand = value.find('&');
    bytes.append(value.substr(0, ampersand));
    if (ampersand == std::string_view::npos) return bytes;
    value.remove_prefix(ampersand);
    std::size_t length = 0;
    const char32_t character = ReadEntity(value, EntityPlace::kAttribute, &length);
    if (length == 0) {
      bytes.push_back('&');
      length = 1;
    } else {
      std::string utf8;
      AppendUtf8(character, &utf8);
      std::size_t lost = 0;
      const std::string encoded = FromUtf8(utf8, code_page_, &lost);
      bytes += lost > 0 ? utf8 : encoded;
    }
    value.remove_prefix(length);
  }
}

}  // namespace scrivo

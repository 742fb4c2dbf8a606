#include "exporter/linked_anchors.h"

#include "html/tokenizer.h"
#include "project/project_tree.h"
#include "text/ascii_text.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

// No place has the separator in it.
std::string KeyOf(std::string_view place, std::string_view name) {
  std::string key(place);
  key += '#';
  key += name;
  return key;
}

std::string_view FragmentOf(std::string_view rest) {
  const std::size_t mark = rest.find('#');
  return mark == std::string_view::npos ? std::string_view() : rest.substr(mark + 1);
}

}  // namespace

void LinkedAnchors::ReadPage(std::string_view html, std::string_view place, const SiteNames& places,
                             const std::function<void(const std::string& place)>& on_link) {
  const std::string name = "/" + std::string(place);
  HtmlTokenizer tokens(html);
  HtmlToken token;
  while (tokens.Next(&token)) {
    if (token.kind != HtmlToken::Kind::kStartTag) continue;
    const bool is_link = token.Is("a");
    std::string_view content = token.content;
    HtmlAttribute attribute;
    while (NextAttribute(&content, &attribute)) {
      const bool is_anchor = EqualsIgnoringCase(attribute.name, "id") ||
                             (is_link && EqualsIgnoringCase(attribute.name, "name"));
      if (!is_anchor && !(is_link && EqualsIgnoringCase(attribute.name, "href"))) continue;
      const std::string value = DecodeEntities(attribute.value, EntityPlace::kAttribute);
      if (is_anchor) {
        anchors_.insert(KeyOf(place, value));
        continue;
      }
      const LinkTarget link = ResolveLink(places, value, name);
      if (link.kind == LinkTarget::Kind::kPage) {
        AddLink(link.place, link.rest);
        on_link(link.place);
      }
      if (link.kind == LinkTarget::Kind::kSamePage) AddLink(place, value);
    }
  }
}

void LinkedAnchors::AddLink(std::string_view place, std::string_view rest) {
  const std::string_view name = FragmentOf(rest);
  if (name.empty()) return;
  linked_.insert(KeyOf(place, name));
  linked_.insert(KeyOf(place, PercentDecoded(name)));
}

void LinkedAnchors::Finish() {
  std::erase_if(anchors_, [&](const std::string& key) { return !linked_.contains(key); });
  linked_.clear();
}

// Browsers take the name as it is written first.
std::string LinkedAnchors::Find(std::string_view place, std::string_view rest) const {
  for (const std::string& name :
       {std::string(FragmentOf(rest)), PercentDecoded(FragmentOf(rest))}) {
    if (Has(place, name)) return name;
  }
  return "";
}

bool LinkedAnchors::Has(std::string_view place, std::string_view name) const {
  return !name.empty() && anchors_.contains(KeyOf(place, name));
}

}  // namespace scrivo

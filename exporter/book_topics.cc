#include "exporter/book_topics.h"

#include <algorithm>
#include <vector>

#include "exporter/binary_lists.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

bool MentionsIgnoringCase(std::string_view text, std::string_view lowered) {
  const auto found = std::search(text.begin(), text.end(), lowered.begin(), lowered.end(),
                                 [](char a, char b) { return AsciiLower(a) == b; });
  return found != text.end();
}

}  // namespace

void BookTopics::AddPage(const RewrittenPage& page, const std::string& title,
                         const std::string& place) {
  titles_.emplace(place, title);
  const HelpLink link{title, place, true};
  for (const std::string& name : page.associations) {
    topics_.associations[AsciiLowered(name)].push_back(link);
  }
  for (const std::string& word : page.keywords) {
    topics_.keywords[AsciiLowered(word)].push_back(link);
  }
}

std::string BookTopics::TitleAt(const std::string& place) const {
  const auto found = titles_.find(place);
  return found == titles_.end() ? place : found->second;
}

void BookTopics::AddIndex(const HelpBook& book, const SiteNames& names) {
  // Makes the pages of an index entry those that `name` leads to, too.
  const auto add = [&](const SitemapItem& item, const std::string& name, HelpTopics::Links* links) {
    for (const SitemapTarget& target : item.targets) {
      const LinkTarget link = ResolveLink(names, target.local, book.index_name);
      if (link.kind != LinkTarget::Kind::kPage) continue;
      const std::string title = target.title.empty() ? TitleAt(link.place) : target.title;
      (*links)[name].push_back({title, link.place, true, link.rest});
    }
  };
  for (const Sitemap* index : {&book.index, &book.more_keywords}) {
    const std::vector<std::string> joined = JoinedNames(*index);
    for (std::size_t i = 0; i < joined.size(); ++i) {
      const SitemapItem& item = index->items[i];
      add(item, AsciiLowered(item.name), &topics_.keywords);
      if (item.level > 0) add(item, AsciiLowered(joined[i]), &topics_.keywords);
    }
  }
  for (const SitemapItem& item : book.associations.items) {
    add(item, AsciiLowered(item.name), &topics_.associations);
  }
}

bool AsksForTopics(std::string_view html) {
  return MentionsIgnoringCase(html, "classid") &&
         (MentionsIgnoringCase(html, "klink") || MentionsIgnoringCase(html, "alink"));
}

}  // namespace scrivo

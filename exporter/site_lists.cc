#include "exporter/site_lists.h"

#include <algorithm>
#include <map>

#include "exporter/alphabet.h"
#include "exporter/script_text.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// A key that sorts words as readers look for them: case and accents do not count.
std::string SortKey(std::string_view word) {
  std::string key;
  while (!word.empty()) Alphabet::The().AppendFolded(NextUtf8(&word), &key);
  return key;
}

struct KeywordNode {
  KeywordEntry entry;
  std::string key;
  std::vector<std::size_t> children;
};

void AppendLink(std::string_view title, std::string_view address, std::string* out) {
  if (address.empty()) {
    AppendHtmlText(title, out);
    return;
  }
  *out += "<a href=\"";
  if (!IsWebAddress(address)) *out += "pages/";
  AppendHtmlText(address, out);
  *out += "\">";
  AppendHtmlText(title, out);
  *out += "</a>";
}

// Nested lists from entries that have levels.
template <typename Entry, typename AppendEntry>
std::string NestedLists(const std::vector<Entry>& entries, AppendEntry append) {
  std::string html = "<ul>\n";
  int depth = 0;  // of the open list; its last item is open as well
  bool is_first = true;
  for (const Entry& entry : entries) {
    if (!is_first && entry.level > depth) {
      html += "\n<ul>\n";
      ++depth;
    } else if (!is_first) {
      html += "</li>\n";
      for (; depth > entry.level; --depth) html += "</ul></li>\n";
    }
    html += "<li>";
    append(entry, &html);
    is_first = false;
  }
  if (!is_first) html += "</li>\n";
  for (; depth > 0; --depth) html += "</ul></li>\n";
  return html + "</ul>\n";
}

}  // namespace

bool IsWebAddress(std::string_view address) {
  for (const std::string_view scheme : {"http:", "https:", "ftp:", "mailto:", "news:"}) {
    if (StartsWithIgnoringCase(address, scheme)) return true;
  }
  return false;
}

std::string SiteAddress(const SitemapTarget& target, const SiteNames& names,
                        std::string_view from) {
  for (const std::string_view address :
       {std::string_view(target.local), std::string_view(target.url)}) {
    if (address.empty()) continue;
    const LinkTarget link = ResolveLink(names, address, from);
    if (link.kind == LinkTarget::Kind::kPage) {
      std::string found;
      AppendAddress(link.place, &found);
      return found + link.rest;
    }
    if (link.kind == LinkTarget::Kind::kOutside && IsWebAddress(Trimmed(address))) {
      return std::string(Trimmed(address));
    }
  }
  return "";
}

std::vector<KeywordEntry> SortedKeywords(std::vector<KeywordEntry> keywords) {
  std::vector<KeywordNode> nodes(1);
  std::map<std::pair<std::size_t, std::string>, std::size_t> known;  // by parent and word
  std::vector<std::size_t> chain = {0};
  for (KeywordEntry& entry : keywords) {
    chain.resize(std::min(chain.size(), static_cast<std::size_t>(entry.level) + 1));
    const std::size_t parent = chain.back();
    const auto [found, is_new] = known.try_emplace({parent, entry.word}, nodes.size());
    const std::size_t number = found->second;
    if (is_new) {
      nodes[parent].children.push_back(number);
      KeywordNode node;
      node.entry.level = static_cast<int>(chain.size()) - 1;
      node.entry.word = entry.word;
      node.key = SortKey(entry.word);
      nodes.push_back(std::move(node));
    }
    KeywordEntry& joined = nodes[number].entry;
    for (auto& topic : entry.topics) {
      const bool is_known =
          std::any_of(joined.topics.begin(), joined.topics.end(),
                      [&](const auto& other) { return other.second == topic.second; });
      if (!is_known) joined.topics.push_back(std::move(topic));
    }
    if (joined.see.empty()) joined.see = entry.see;
    chain.push_back(number);
  }
  for (KeywordNode& node : nodes) {
    std::stable_sort(node.children.begin(), node.children.end(),
                     [&](std::size_t a, std::size_t b) { return nodes[a].key < nodes[b].key; });
  }
  std::vector<KeywordEntry> sorted;
  std::vector<std::size_t> waiting(nodes[0].children.rbegin(), nodes[0].children.rend());
  while (!waiting.empty()) {
    const std::size_t number = waiting.back();
    waiting.pop_back();
    sorted.push_back(std::move(nodes[number].entry));
    waiting.insert(waiting.end(), nodes[number].children.rbegin(), nodes[number].children.rend());
  }
  return sorted;
}

std::string ContentsScript(const std::vector<ContentsEntry>& contents, std::string_view home) {
  std::string script = "{\"home\":";
  AppendScriptString(home, &script);
  script += ",\"items\":[";
  for (const ContentsEntry& entry : contents) {
    script += '\n';
    script += std::to_string(entry.level);
    script += ',';
    AppendScriptString(entry.title, &script);
    script += ',';
    AppendScriptString(entry.address, &script);
    script += ',';
  }
  return script + "]}";
}

std::string KeywordsScript(const std::vector<KeywordEntry>& keywords) {
  std::string script = "[";
  for (const KeywordEntry& entry : keywords) {
    script += '\n';
    script += std::to_string(entry.level);
    script += ',';
    AppendScriptString(entry.word, &script);
    script += ',';
    if (entry.topics.empty() && !entry.see.empty()) {
      AppendScriptString(entry.see, &script);
    } else {
      script += '[';
      for (const auto& [title, address] : entry.topics) {
        AppendScriptString(title, &script);
        script += ',';
        AppendScriptString(address, &script);
        script += ',';
      }
      if (script.back() == ',') script.pop_back();
      script += ']';
    }
    script += ',';
  }
  return script + "]";
}

std::string ContentsList(const std::vector<ContentsEntry>& contents) {
  return NestedLists(contents, [](const ContentsEntry& entry, std::string* html) {
    AppendLink(entry.title, entry.address, html);
  });
}

std::string KeywordsList(const std::vector<KeywordEntry>& keywords) {
  return NestedLists(keywords, [](const KeywordEntry& entry, std::string* html) {
    if (entry.topics.size() == 1) {
      AppendLink(entry.word, entry.topics[0].second, html);
      return;
    }
    AppendHtmlText(entry.word, html);
    if (entry.topics.empty() && !entry.see.empty()) {
      *html += ", see ";
      AppendHtmlText(entry.see, html);
    }
    std::string_view separator = ": ";
    for (const auto& [title, address] : entry.topics) {
      *html += separator;
      separator = ", ";
      AppendLink(title, address, html);
    }
  });
}

}  // namespace scrivo

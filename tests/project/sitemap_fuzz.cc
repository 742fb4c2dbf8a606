// Reads any bytes as a contents or index file and builds the tables made from one.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "hhc/keyword_streams.h"
#include "hhc/keyword_tree.h"
#include "hhc/toc_index.h"
#include "project/sitemap.h"
#include "text/code_page.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  if (size == 0) return 0;
  constexpr int kCodePages[] = {1252, 1251, 932, kUtf8CodePage};
  const int code_page = kCodePages[data[0] % 4];
  const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
  const Sitemap sitemap = ReadSitemap(text, code_page);
  std::vector<TocNode> nodes;
  KeywordTree keywords;
  int level = -1;
  for (const SitemapItem& item : sitemap.items) {
    if (item.level < 0 || item.level > level + 1) std::abort();
    level = item.level;
    if (!IsUtf8(item.name)) std::abort();
    nodes.push_back({item.level, std::nullopt, 0, item.is_new});
    keywords.Add(item.level, item.name, {0}, item.see_also);
  }
  const std::size_t count = nodes.size();
  const TocIndex tree(std::move(nodes));
  if (tree.BreadthFirst().size() != count) std::abort();
  tree.Write();
  std::size_t too_long = 0;
  std::vector<TruncatedKeyword> truncated;
  WriteKeywords(keywords.Sorted(&too_long), 0x409, &truncated);
  return 0;
}

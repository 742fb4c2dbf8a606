// Contents and index in their binary form: #TOCIDX, a keyword tree, #TOPICS, #URLTBL, #URLSTR and
// #STRINGS, parted by "\n====\n". Whatever they hold, the lists are no larger than the streams
// can say, their levels have no gaps, and their texts are UTF-8.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "exporter/binary_lists.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

std::vector<std::uint8_t> TakePart(std::string_view* rest) {
  constexpr std::string_view kEnd = "\n====\n";
  const std::string_view part = rest->substr(0, rest->find(kEnd));
  rest->remove_prefix(std::min(rest->size(), part.size() + kEnd.size()));
  return {part.begin(), part.end()};
}

void Check(const Sitemap& sitemap, std::size_t most) {
  if (sitemap.items.size() > most) std::abort();
  int deepest = 0;
  for (const SitemapItem& item : sitemap.items) {
    if (item.level < 0 || item.level > deepest) std::abort();
    deepest = item.level + 1;
    if (item.name.empty() && item.targets.empty()) std::abort();
    if (!IsUtf8(item.name) || !IsUtf8(item.see_also)) std::abort();
    for (const SitemapTarget& target : item.targets) {
      if (!IsUtf8(target.title) || !IsUtf8(target.local) || !IsUtf8(target.url)) std::abort();
    }
  }
  if (JoinedNames(sitemap).size() != sitemap.items.size()) std::abort();
}

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  if (size > (64 << 10)) return 0;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::vector<std::uint8_t> contents = TakePart(&rest), tree = TakePart(&rest);
  TopicBytes topics;
  for (auto* part : {&topics.topics, &topics.url_table, &topics.url_strings, &topics.strings}) {
    *part = TakePart(&rest);
  }
  constexpr std::size_t kSmallestEntry = 20, kSmallestKeyword = 26;
  for (const int code_page : {1252, 932}) {
    Check(ReadBinaryContents(contents, topics, code_page), contents.size() / kSmallestEntry);
    Check(ReadBinaryIndex(tree, topics, code_page), tree.size() / kSmallestKeyword);
  }
  return 0;
}

// Scans any bytes as a page and indexes its words.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "html/css_links.h"
#include "html/html_scanner.h"
#include "search/postings.h"
#include "search/search_index.h"
#include "text/code_page.h"

using namespace scrivo;
using namespace scrivo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  constexpr int kCodePages[] = {1252, 1251, 932, 950};
  const int code_page = kCodePages[data[0] % 4];
  const std::string_view html(reinterpret_cast<const char*>(data + 1), size - 1);
  WordCollector collector;
  const PageScan page = ScanHtml(html, code_page, &collector);
  if (!IsUtf8(page.title)) std::abort();
  for (const PageLink& link : page.links) {
    if (link.address.empty() || link.offset >= html.size()) std::abort();
  }
  for (const BadTag& tag : page.bad_tags) {
    if (tag.offset + 1 + tag.size > html.size()) std::abort();
    if (!IsUtf8(ShownTag(html, tag, page.code_page))) std::abort();
  }
  FindCssLinks(html);
  Postings postings;
  postings.AddPage(3, collector.Finish());
  SpilledBytes index;
  WriteSearchIndex(&postings, 0x409, &index);
  return 0;
}

// Any bytes as a page, read by both who read pages: the compiler, which indexes its words too, and
// a web, which wants its head. They must agree, keep within their bounds and give well-formed text.
// The same bytes as the host's notes about a page must not hurt either, and a page keeps its own
// bytes when its bars are taken out.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "hhc/page_scan.h"
#include "html/charset.h"
#include "html/links.h"
#include "html/page_bars.h"
#include "html/title.h"
#include "search/postings.h"
#include "search/search_index.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "webs/host_notes.h"
#include "webs/page_head.h"

namespace scrivo {
namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

void CheckScan(std::string_view html, const PageScan& page) {
  Require(IsUtf8(page.title) && page.title.size() <= TitleFinder::kLongest);
  for (const PageLink& link : page.links) {
    Require(!link.address.empty() && link.offset < html.size());
  }
  for (const PageHeading& heading : page.headings) {
    Require(IsUtf8(heading.text) && !heading.text.empty());
    Require(heading.text.size() <= HeadingFinder::kLongest);
  }
  for (const BadTag& tag : page.bad_tags) {
    Require(tag.offset + 1 + tag.size <= html.size());
    Require(IsUtf8(ShownTag(html, tag, page.code_page)));
  }
}

void CheckHead(std::string_view bytes, const PageScan& page, int code_page) {
  const auto get_default = [&] { return code_page; };
  const PageHead head = FindPageHead(bytes, Headings::kYes, get_default);
  // The compiler keeps bytes without a meaning for the help file, a web shows what stands for them.
  const auto is_for_people = [](const std::string& text) { return WithoutKeptBytes(text) == text; };
  if (is_for_people(page.title)) Require(Trimmed(head.title).size() == page.title.size());
  std::vector<PageHeading> headings = page.headings;
  std::erase_if(headings, [](const PageHeading& heading) { return heading.level > 3; });
  Require(head.headings.size() == headings.size());
  for (std::size_t i = 0; i < headings.size(); ++i) {
    if (is_for_people(headings[i].text)) Require(head.headings[i] == headings[i].text);
  }
  for (const MetaTag& meta : head.metas) Require(IsUtf8(meta.name) && IsUtf8(meta.content));
  const PageHead without = FindPageHead(bytes, Headings::kNo, get_default);
  Require(without.title == head.title && without.metas.size() == head.metas.size());
}

// Nothing but whole pieces goes: what is left are bytes of the page in their order.
void CheckBars(std::string_view page) {
  const auto rest = WithoutBars(page);
  if (!rest) return;
  Require(rest->size() < page.size());
  for (const char c : *rest) {
    const std::size_t at = page.find(c);
    Require(at != std::string_view::npos);
    page.remove_prefix(at + 1);
  }
}

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  constexpr int kCodePages[] = {1252, 1251, 932, 950};
  const int code_page = kCodePages[size % 4];
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string html = Utf16AsUtf8(bytes).value_or(std::string(bytes));
  WordCollector collector;
  const PageScan page = ScanPage(html, code_page, &collector);
  CheckScan(html, page);
  CheckHead(bytes, page, code_page);
  FindCssLinks(html);
  CheckBars(bytes);
  Postings postings;
  postings.AddPage(3, collector.Finish());
  SpilledBytes index;
  WriteSearchIndex(&postings, 0x409, &index);
  ParseVtiNotes(bytes);
  return 0;
}

#include <cstdint>
#include <cstdlib>

#include "webs/page_head.h"
#include "webs/vti_cnf.h"

// Any bytes as a page: what is found must not depend on how the page was cut into pieces, and no
// text may pass its limit. The same bytes as the host's notes must not hurt either.

namespace {

scrivo::PageHead Scan(std::string_view page, std::size_t piece, scrivo::Headings headings) {
  scrivo::PageHeadScanner scanner(headings);
  while (!page.empty()) {
    const std::string_view bytes = page.substr(0, piece);
    page.remove_prefix(bytes.size());
    if (scanner.Feed(bytes)) break;
  }
  return scanner.Finish();
}

void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view page(reinterpret_cast<const char*>(data), size);
  const std::size_t piece = size == 0 ? 1 : 1 + data[size - 1] % 16;
  for (const auto headings : {scrivo::Headings::kNo, scrivo::Headings::kYes}) {
    const scrivo::PageHead whole = Scan(page, size + 1, headings);
    const scrivo::PageHead cut = Scan(page, piece, headings);
    Require(whole.title == cut.title && whole.title.size() <= 4096);
    Require(whole.headings == cut.headings);
    Require(whole.code_page == cut.code_page);
    Require(whole.metas.size() == cut.metas.size());
    for (std::size_t i = 0; i < whole.metas.size(); ++i) {
      Require(whole.metas[i].name == cut.metas[i].name);
      Require(whole.metas[i].content == cut.metas[i].content);
    }
    for (const std::string& heading : whole.headings) Require(heading.size() <= 4096);
  }
  scrivo::ParseVtiNotes(page);
  return 0;
}

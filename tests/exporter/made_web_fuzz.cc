// Any bytes as the contents of a help file that becomes a web, and as a page that gets keywords:
// what is written must be read back as it was meant.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "exporter/page_keywords.h"
#include "exporter/web_structure.h"
#include "text/code_page.h"
#include "webs/structure_file.h"
#include "webs/web_report.h"

namespace scrivo {
namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

void CheckStructure(std::string_view bytes) {
  HelpBook book;
  book.contents_name = "/docs/toc.hhc";
  book.contents = ReadSitemap(bytes, 1252);
  Entry page;
  page.name = "/docs/a.htm";
  const WebStructure made = MakeWebStructure(book, BookTargets({{&page, "docs/a.htm"}}));
  WebProblemList problems;
  const std::vector<StructureNode> nodes = ParseStructure(made.text, "structure.cnf", problems);
  Require(problems.problems.empty() || made.text.find('\0') != std::string::npos);
  Require(nodes.size() == book.contents.items.size() && nodes.size() == made.entries);
  for (const StructureNode& node : nodes) Require(node.parent < node.id && node.parent != 1);
}

void CheckKeywords(std::string_view page) {
  for (const std::set<std::string>& keywords :
       {std::set<std::string>{}, std::set<std::string>{"k", "\xD0\x94 & \"q\""}}) {
    const auto changed = WithKeywords(page, keywords, 1252);
    if (!changed) return;
    Require(WithKeywords(*changed, keywords, 1252) == changed);
    Require(TitleOfPage(*changed, 1252) == TitleOfPage(page, 1252));
  }
}

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  scrivo::CheckStructure(bytes);
  scrivo::CheckKeywords(bytes);
  return 0;
}

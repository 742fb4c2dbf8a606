#include <cstdint>
#include <cstdlib>

#include "tests/doubles/memory_files.h"
#include "webs/host_notes.h"
#include "webs/navigation_tree.h"
#include "webs/structure_file.h"

// Any bytes as a navigation structure: it must come out as a tree that shows each node at most
// once, and every node when there are no link bars. The same bytes as the notes about a whole web
// and about a page.

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

scrivo::WebListing SmallListing(scrivo::WebReport& report) {
  scrivo::MemoryFiles files;
  files.folders = {"/web", "/web/docs"};
  files.files = {{"/web/index.htm", ""}, {"/web/a.htm", ""}, {"/web/docs/b.htm", ""}};
  return scrivo::WebListing(files, "/web", scrivo::PathStyle::kPosix, 1252, false, report);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  scrivo::WebProblemList report;
  static const scrivo::WebListing listing = SmallListing(report);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string file = "structure.cnf";
  const auto nodes = scrivo::ParseStructure(text, file, report);
  bool has_link_bars = false;
  for (const auto& node : nodes) has_link_bars = has_link_bars || node.IsLinkBar();

  const auto tree = scrivo::BuildNavigationTree(nodes, listing, 1251, file, report);
  Require(tree.nodes.size() <= nodes.size() + 1);
  Require(has_link_bars || tree.nodes.size() == nodes.size() + 1);
  std::size_t next = 1;
  for (const auto& node : tree.nodes) {
    Require(node.first_child == next);
    next += node.child_count;
  }
  Require(next == tree.nodes.size());

  const scrivo::ServiceNotes notes = scrivo::ParseServiceNotes(text);
  Require(text.find(notes.charset) != std::string_view::npos);
  Require(text.find(notes.language) != std::string_view::npos);
  for (const std::string& name : notes.welcome_names) Require(name.size() <= text.size());

  const scrivo::VtiNotes page = scrivo::ParseVtiNotes(text);
  Require(page.title.size() + page.keywords.size() + page.charset.size() <= 3 * text.size());
  return 0;
}

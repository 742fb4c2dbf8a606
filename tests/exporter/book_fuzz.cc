// The streams of a help file that say what is in it, in the order of kNames and parted by
// "\n====\n". Whatever they hold, the file becomes text and a site.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "chm/chm_reader.h"
#include "chm/container_writer.h"
#include "exporter/export_site.h"
#include "exporter/export_text.h"
#include "tests/bytes/memory_store.h"
#include "tests/doubles/test_folder.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr const char* kNames[] = {"/#SYSTEM",
                                  "/#WINDOWS",
                                  "/#STRINGS",
                                  "/toc.hhc",
                                  "/words.hhk",
                                  "/page.htm",
                                  "/#TOCIDX",
                                  "/$WWKeywordLinks/BTree",
                                  "/$WWAssociativeLinks/BTree",
                                  "/#TOPICS",
                                  "/#URLTBL",
                                  "/#URLSTR"};
constexpr std::string_view kEnd = "\n====\n";

std::unique_ptr<ChmReader> HelpFileOf(std::string_view parts) {
  MemoryStore store;
  ContainerWriter writer(store, {});
  for (const char* name : kNames) {
    const std::string_view part = parts.substr(0, parts.find(kEnd));
    parts.remove_prefix(std::min(parts.size(), part.size() + kEnd.size()));
    writer.AddPlain(name, {part.begin(), part.end()});
  }
  writer.AddPlain("/picture.gif", {'G', 'I', 'F'});
  if (writer.Finish() != ContainerStatus::kOk) std::abort();
  Problems problems;
  auto reader = ChmReader::Open(std::make_unique<MemorySource>(store.bytes), &problems);
  if (!reader || !problems.empty()) std::abort();
  return reader;
}

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  if (size > (64 << 10)) return 0;
  const auto reader = HelpFileOf({reinterpret_cast<const char*>(data), size});
  std::string text;
  WriteText(*reader, "book.chm", [&](const std::string& piece) { text += piece; });
  if (!IsUtf8(text)) std::abort();
  static const TestFolder folder;
  const std::filesystem::path site = folder.path() / "site";
  std::filesystem::remove_all(site);
  SiteOutput output(site, false);
  ExportOptions options;
  options.file_name = "book.chm";
  options.on_progress = [](std::size_t done, std::size_t total) {
    if (done > total) std::abort();
  };
  if (ExportSite(*reader, options, output).pages != 1) std::abort();
  return 0;
}

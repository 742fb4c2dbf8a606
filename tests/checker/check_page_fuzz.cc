// Any bytes as a page whose links, title, charset and components are checked.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "checker/page_check.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

// A web of two files, whatever they hold.
class TwoFiles : public SourceFiles {
 public:
  std::vector<SourceEntry> List(const std::string& folder) const override {
    if (folder == "web") return {{"a.htm", false}, {"docs", true}};
    if (folder == "web/docs") return {{"B.htm", false}};
    return {};
  }
  std::unique_ptr<ByteSource> Open(const std::string&, std::error_code* error) const override {
    *error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }
};

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const TwoFiles files;
  ProjectTree web(files, "web", 1252, false);
  const PageFindings found =
      CheckPage(bytes, "docs/page.htm", size % 2 == 0 ? 1252 : 932, web, {"b.htm"});
  for (const Finding& finding : found.findings) {
    Require(!finding.text.empty() && finding.line <= size + 1);
    Require(IsUtf8(finding.text) && IsUtf8(finding.subject));
  }
  for (const std::string& frame : found.frames) Require(frame == "a.htm" || frame == "docs/B.htm");
  return 0;
}

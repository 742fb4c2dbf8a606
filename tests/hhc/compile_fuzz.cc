// A whole compile out of foreign bytes: a project, its contents, its index, a page and a style
// sheet, parted by "\n====\n". When a help file is made, it must be one without faults.

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "chm/chm_reader.h"
#include "hhc/compiler.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

constexpr const char* kNames[] = {"p.hhp", "toc.hhc", "words.hhk", "page.htm", "style.css"};
constexpr std::string_view kEnd = "\n====\n";

// One folder, "/p".
class Sources : public SourceFiles {
 public:
  explicit Sources(std::string_view parts) {
    for (const char* name : kNames) {
      const std::string_view part = parts.substr(0, parts.find(kEnd));
      parts.remove_prefix(std::min(parts.size(), part.size() + kEnd.size()));
      files_[name] = part;
    }
  }
  std::vector<SourceEntry> List(const std::string& folder) const override {
    std::vector<SourceEntry> entries;
    if (folder != "/p") return entries;
    for (const auto& [name, text] : files_) entries.push_back({name, false});
    return entries;
  }
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override {
    const auto found = path.starts_with("/p/") ? files_.find(path.substr(3)) : files_.end();
    if (found != files_.end()) {
      return std::make_unique<MemorySource>(
          std::vector<std::uint8_t>(found->second.begin(), found->second.end()));
    }
    *error = std::make_error_code(std::errc::no_such_file_or_directory);
    return nullptr;
  }

 private:
  std::map<std::string, std::string> files_;
};

class Listener : public CompileListener {
 public:
  void Starting(std::string_view) override {}
  void File(std::string_view) override {}
  void Message(const CompileMessage& message) override { message.Line(); }
};

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  if (size > (64 << 10)) return 0;
  static const TestFolder folder;
  const Sources sources({reinterpret_cast<const char*>(data), size});
  CompileRequest request;
  request.project_path = "p.hhp";
  request.working_folder = "/p";
  request.output = PortablePath(folder.path() / "help.chm");
  Listener listener;
  if (!CompileProject(request, sources, &listener).made) return 0;
  std::error_code error;
  Problems problems;
  auto source = OpenFileSource(folder.path() / "help.chm", &error);
  if (!source) std::abort();
  const auto reader = ChmReader::Open(std::move(source), &problems);
  if (!reader || !problems.empty()) std::abort();
  for (const Entry& entry : reader->Entries()) {
    if (!entry.name.ends_with('/') && !reader->ReadWhole(entry)) std::abort();
  }
  return 0;
}

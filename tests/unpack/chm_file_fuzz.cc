// A whole help file out of foreign bytes: opened, described, read and unpacked.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "chm/chm_reader.h"
#include "chm/problem.h"
#include "chm/system_info.h"
#include "unpack/unpack.h"

namespace scrivo {
namespace {

// Keeps nothing, and holds the paths to what is promised about them.
class CheckingFolder : public OutputFolder {
 public:
  explicit CheckingFolder(NameRules rules) : rules_(rules) {}

  NameRules Rules() const override { return rules_; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t>) override {
    if (path.empty() || path.find_first_of(std::string_view("\\:\0", 3)) != path.npos) std::abort();
    while (!path.empty()) {
      const std::string_view part = path.substr(0, path.find('/'));
      if (part.empty() || part.ends_with('.') || part.ends_with(' ') || part.size() > 960) {
        std::abort();
      }
      path.remove_prefix(part.size());
      if (!path.empty()) {
        path.remove_prefix(1);
        if (path.empty()) std::abort();
      }
    }
    return {};
  }
  WriteResult WritePart(std::string_view, std::uint64_t, std::span<const std::uint8_t>) override {
    return {};
  }
  WriteResult Start(std::string_view path) override { return Create(path, {}); }
  WriteResult Finish(std::string_view) override { return {}; }
  void GiveUp(std::string_view) override {}
  void RemoveEmptyFolders() override {}

 private:
  NameRules rules_;
};

class Counter : public UnpackListener {
 public:
  void OnFile(const PlannedFile&) override { ++written; }
  void OnProblem(const Problem& problem) override {
    Describe(problem);
    ++problems;
  }
  void OnProgress(std::uint64_t done, std::uint64_t total) override {
    if (done > total) std::abort();
  }

  std::size_t written = 0;
  std::size_t problems = 0;
};

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  Problems problems;
  const auto reader = ChmReader::Open(
      std::make_unique<MemorySource>(std::vector<std::uint8_t>(data, data + size)), &problems);
  for (const Problem& problem : problems) Describe(problem);
  if (reader == nullptr) return 0;

  // Entries may overlap, so that all of them together are out of proportion to the input; such
  // input is valid, but of no use here.
  std::uint64_t total = 0;
  for (const Entry& entry : reader->Entries()) {
    if (!reader->Check(entry)) total += entry.length;
  }
  if (total > (8 << 20)) return 0;

  ReadSystemInfo(*reader);
  for (const NameRules rules : {NameRules::kPosix, NameRules::kWindows}) {
    CheckingFolder folder(rules);
    Counter counter;
    const UnpackResult result = Unpack(*reader, folder, {true, 1}, counter);
    if (result.written != counter.written || result.problems != counter.problems) std::abort();
  }
  return 0;
}

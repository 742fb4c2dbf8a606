// Looks at compiled help files from outside.
//   help_file_report compare OURS THEIRS    the entries of both side by side
//   help_file_report check PROJECT FILE     whether FILE holds all that PROJECT asks for
// Exit status 0 when there is nothing to complain of, 1 when there is, 2 for wrong usage.

#include <cstdio>
#include <string>

#include "tests/hhc/project_check.h"
#include "tests/hhc/stream_comparison.h"

namespace scrivo {
namespace {

int CompareFiles(const std::string& first_path, const std::string& second_path) {
  const auto first = InternalStreams::Open(first_path), second = InternalStreams::Open(second_path);
  if (first == nullptr || second == nullptr) {
    std::fprintf(stderr, "cannot open %s\n", (first == nullptr ? first_path : second_path).c_str());
    return 1;
  }
  constexpr const char* kVerdicts[] = {"same", "same save for", "DIFFERENT", "only in the first",
                                       "only in the second"};
  bool equal = true;
  for (const EntryComparison& entry : CompareHelpFiles(*first, *second)) {
    std::printf("%-40s %9zu %9zu  %s %s\n", entry.name.c_str(), entry.first_size, entry.second_size,
                kVerdicts[static_cast<int>(entry.verdict)], entry.remark.c_str());
    equal = equal && entry.verdict <= EntryComparison::Verdict::kSameSaveForKnown;
  }
  return equal ? 0 : 1;
}

int Check(const std::string& project, const std::string& help) {
  const ProjectCheck check = CheckAgainstProject(project, help);
  for (const std::string& fault : check.faults) std::printf("FAULT %s\n", fault.c_str());
  std::printf("%zu files, %zu contents entries, %zu keywords, %zu words: %zu faults\n", check.files,
              check.contents_entries, check.keywords, check.words, check.faults.size());
  return check.faults.empty() ? 0 : 1;
}

}  // namespace
}  // namespace scrivo

int main(int argc, char** argv) {
  const std::string mode = argc == 4 ? argv[1] : "";
  if (mode == "compare") return scrivo::CompareFiles(argv[2], argv[3]);
  if (mode == "check") return scrivo::Check(argv[2], argv[3]);
  std::fprintf(stderr,
               "Usage: help_file_report compare OURS THEIRS\n"
               "       help_file_report check PROJECT FILE\n");
  return 2;
}

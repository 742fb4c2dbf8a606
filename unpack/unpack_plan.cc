#include "unpack/unpack_plan.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "text/fold_case.h"

namespace scrivo {
namespace {

// FNV-1a. Names are remembered by hash, as help files with very many are known; two names that meet
// by chance only cost one of them a number.
std::uint64_t Hash(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return hash;
}

// The paths given out so far.
class TakenPaths {
 public:
  // Notes the folders that `path` needs. All folders are noted before the first file.
  void AddFolders(std::string_view path) {
    const std::string folded = FoldCase(path);
    for (std::size_t slash = 0; (slash = folded.find('/', slash)) != std::string::npos; ++slash) {
      taken_.try_emplace(Hash(std::string_view(folded).substr(0, slash)), 2);
    }
  }

  // `path` itself when it is free, else the first free one with a number.
  std::string Take(std::string path) {
    const std::uint64_t hash = Hash(FoldCase(path));
    if (taken_.try_emplace(hash, 2).second) return path;
    for (;;) {
      // The number last tried is kept, so that many equal names do not cost their square.
      const unsigned number = taken_[hash]++;
      std::string numbered = NumberedPath(path, number);
      if (taken_.try_emplace(Hash(FoldCase(numbered)), 2).second) return numbered;
    }
  }

 private:
  std::unordered_map<std::uint64_t, unsigned> taken_;  // to the next number to try
};

bool IsWanted(const Entry& entry, bool internal) {
  switch (KindOf(entry.name)) {
    case EntryKind::kUser:
      return true;
    case EntryKind::kInternal:
      return internal && !entry.name.ends_with('/');
    case EntryKind::kFolder:
      break;
  }
  return false;
}

// What of the name has to be kept for the path to count as unchanged.
std::string_view BareName(std::string_view name) {
  if (name.starts_with("::")) return name.substr(2);
  return name.starts_with('/') ? name.substr(1) : name;
}

}  // namespace

std::vector<PlannedFile> PlanUnpacking(const ChmReader& reader, NameRules rules, bool internal,
                                       Problems* problems) {
  std::vector<PlannedFile> files;
  TakenPaths taken;
  for (const Entry& entry : reader.Entries()) {
    if (!IsWanted(entry, internal)) continue;
    if (const auto problem = reader.Check(entry)) {
      problems->push_back({*problem, entry.section, 0, std::string(entry.name)});
      continue;
    }
    SafePath safe = MakeSafePath(entry.name, rules);
    if (safe.path.empty()) {
      problems->push_back(
          {ProblemKind::kRefused, 0, 0, std::string(entry.name), std::move(safe.refusal)});
      continue;
    }
    taken.AddFolders(safe.path);
    files.push_back({&entry, std::move(safe.path)});
  }
  for (PlannedFile& file : files) {
    file.path = taken.Take(std::move(file.path));
    if (file.path != BareName(file.entry->name)) {
      problems->push_back({ProblemKind::kRenamed, 0, 0, std::string(file.entry->name), file.path});
    }
  }
  std::stable_sort(files.begin(), files.end(), [](const PlannedFile& a, const PlannedFile& b) {
    return std::tie(a.entry->section, a.entry->offset) <
           std::tie(b.entry->section, b.entry->offset);
  });
  return files;
}

}  // namespace scrivo

#pragma once

// The folder that a site goes into. Nothing is written outside it, and of what lies in it only the
// files of an earlier site are ever replaced or removed: a list of them is kept beside them.

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include "unpack/output_folder.h"

namespace scrivo {

// The name of that list.
inline constexpr char kSiteListName[] = "site-files.txt";

class SiteOutput {
 public:
  // Opens the folder, after making it when it is not there. One that is not empty is refused unless
  // `force`. Throws std::runtime_error with a sentence that names the folder.
  SiteOutput(const std::filesystem::path& path, bool force);

  // Keeps the list true even when the site was not finished.
  ~SiteOutput();

  SiteOutput(const SiteOutput&) = delete;
  SiteOutput& operator=(const SiteOutput&) = delete;

  // Writes a file of the site; `path` is relative, with "/". Throws std::runtime_error when it
  // cannot be written, or when a file is in the way that is of no earlier site.
  void Create(std::string_view path, std::string_view bytes);

  // Removes what is left of the earlier site and writes the list. Throws as Create does.
  void Finish();

  std::size_t Files() const { return made_.size(); }
  std::uint64_t Bytes() const { return bytes_; }

 private:
  void ReadList();
  void RemoveEarlier(const std::string& name);
  void WriteList();

  std::filesystem::path path_;
  std::unique_ptr<OutputFolder> folder_;
  std::unordered_set<std::string> earlier_;  // files of an earlier site that are still there
  std::unordered_set<std::string> made_;
  std::uint64_t bytes_ = 0;
  bool is_new_ = false;  // the folder was empty: nothing can be in the way
  bool finished_ = false;
};

}  // namespace scrivo

#pragma once

// Finds the files that projects and pages name, in the project's folder and around it.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "project/source_files.h"
#include "text/code_page.h"

namespace scrivo {

// A file that is there. Paths are UTF-8 with "/" separators.
struct FoundFile {
  std::string disk_path;     // to open it
  std::string archive_path;  // in the help file, without the leading "/", letter case as on disk
  std::string address;       // the same as the reference spelled it
  std::string tree_path;     // from the project's folder; may begin with "../"
};

// An address in a page or sitemap, taken apart.
struct Reference {
  bool external = false;      // another scheme: on the web, a mail, a script, another help file
  bool web = false;           // http, https or ftp
  std::string_view path;      // without query and fragment; empty: the page itself
  std::string_view fragment;  // with its "#", or empty
};
Reference TakeApart(std::string_view address);

// `path` with every separator replaced by "/".
std::string WithSlashes(std::string path);

// `path`, which has "/" separators, with those that the system's users write.
std::string SystemSlashes(std::string path);

// Whether `path` (with "/" separators) starts at a root or a drive.
bool IsFullPath(std::string_view path);

// "../" and "./" steps and empty parts worked out; a path may still begin with "../" steps.
std::string NormalPath(std::string_view path);

// The part of `path` before its last "/", empty when it has none.
std::string FolderOf(std::string_view path);

// `text` with %XX sequences replaced by their bytes.
std::string PercentDecoded(std::string_view text);

// `path` as the disk spells it: each part that is there in another letter case only is replaced by
// the name there (the first in byte order of several), the parts that are not there stay. Folders
// that the system finds as they are spelled stay as well: one that ignores case corrects only the
// last part.
std::string PathOnDisk(const SourceFiles& files, const std::string& path);

class ProjectTree {
 public:
  // `folder`: where the project file lies, "" for the current one. `flat`: archive paths are bare
  // names. `code_page`: the project's. `name_code_page`: that in which the system's programs write
  // names, which is tried last. `files` must outlive the tree.
  ProjectTree(const SourceFiles& files, std::string folder, int code_page, bool flat,
              int name_code_page = kUtf8CodePage);

  // The file that `name` means when it stands in a file of `from` (a folder of the project as in
  // archive paths, "" at the top). Names are matched in any letter case, first as they are, then
  // with "\\" for a separator, then with %XX replaced; bytes that are not UTF-8 are taken to be in
  // `code_page`. A leading "/" means the project's folder.
  // `*is_withheld`, unless null, tells whether nothing is found because the file is withheld.
  std::optional<FoundFile> Find(std::string_view name, std::string_view from, int code_page,
                                bool* is_withheld = nullptr);

  // The file that a line of the project names: as above; a full path counts too, and a file outside
  // the project's folder is stored at the top.
  std::optional<FoundFile> FindListed(std::string_view name);

  // The file of that very path in the project's folder, which may hold anything but "/" in its
  // names.
  std::optional<FoundFile> FindExact(const std::string& path);

  // The files that match a name with "*" or "?" in its last part, in order of their names; folders
  // and full paths count as in FindListed.
  std::vector<FoundFile> FindMatching(std::string_view pattern);

  const std::string& Folder() const { return folder_; }

 private:
  struct Listing {
    std::unordered_map<std::string, SourceEntry> by_name;  // by lower-case name
  };

  std::optional<FoundFile> FindFull(const std::string& path);
  enum class Kind { kFile, kFolder };
  std::optional<std::string> OnDisk(const std::string& path, Kind kind = Kind::kFile);
  std::optional<std::string> InProject(const std::string& path) const;
  const Listing& ListOnce(const std::string& folder);
  std::string DiskPath(const std::string& path) const;
  std::vector<std::string> Spellings(std::string_view name, int code_page) const;

  const SourceFiles& files_;
  std::string folder_;
  int code_page_;
  int name_code_page_;
  bool flat_;
  std::unordered_map<std::string, Listing> folders_;  // by path relative to the project's folder
  std::unordered_map<std::string, std::optional<std::string>> on_disk_;
  std::unordered_set<std::string> withheld_;  // paths asked for that are
};

}  // namespace scrivo

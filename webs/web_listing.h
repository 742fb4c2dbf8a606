#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/globals.h"
#include "system/files.h"
#include "webs/web_report.h"

namespace scrivo {

// The files and folders of a web on disk, without the host's own folders, as plain data: what was
// there when they were listed. Files of one folder stand together, and so do its subfolders, each
// in name order (in any case, bytes break ties). Folder 0 is the web itself.
class WebListing {
 public:
  using Index = std::uint32_t;
  static constexpr Index kNone = ~Index{0};

  // Lists the web in the folder `path`, which has no separator at its end. Names that are not UTF-8
  // are taken for text in `code_page`. A subfolder that cannot be listed, or a link that leads to
  // a folder already listed through it, is reported and left out. `leaves_out_hidden`: files that
  // are not for readers (webs/hidden_files.h) are only counted. Throws Error when the web's own
  // folder cannot be listed.
  WebListing(Files& files, const std::string& path, PathStyle style, int code_page,
             bool leaves_out_hidden, WebReport& report);

  // What was left out: the location of a file, or of a folder with the number of files in it.
  struct LeftOut {
    std::string location;
    std::size_t files;
  };
  const std::vector<LeftOut>& AllLeftOut() const { return left_out_; }
  // Whether a location is left out for being hidden.
  bool LeavesOut(std::string_view location) const;

  std::size_t FileCount() const { return files_.size(); }
  std::size_t FolderCount() const { return folders_.size(); }

  // The files and the subfolders of a folder: half-open ranges.
  struct Range {
    Index begin, end;
  };
  Range FilesOf(Index folder) const { return folders_[folder].files; }
  Range FoldersOf(Index folder) const { return folders_[folder].folders; }
  Index FolderHolding(Index file) const { return files_[file].folder; }

  const std::string& FileName(Index file) const { return files_[file].name.text; }
  const std::string& FolderName(Index folder) const { return folders_[folder].name.text; }
  // The file's name in small letters, as UTF-8.
  const std::string& FileKey(Index file) const { return files_[file].name.Key(); }
  // Whether the folder is a web: the host keeps its notes about one there.
  bool IsWeb(Index folder) const { return folders_[folder].is_web; }
  const std::string& FolderLocation(Index folder) const { return folders_[folder].location; }
  // Whether the host keeps its notes about the files of this folder beside them.
  bool HasNotes(Index folder) const { return folders_[folder].has_notes; }

  // Relative to the web, with "/" between names: "docs/a.htm".
  std::string FileLocation(Index file) const;
  // The path on disk.
  std::string FilePath(Index file) const;
  // The path on disk, without a separator at its end.
  std::string FolderPath(Index folder) const;

  // The file at a location in UTF-8, by its exact name, else by one that differs in case only;
  // kNone when there is none.
  Index Find(std::string_view location) const;

 private:
  // A name as it is on disk, and the key that orders and finds it.
  struct Name {
    std::string text;
    std::string folded;  // empty when the text is its own key
    const std::string& Key() const { return folded.empty() ? text : folded; }
  };
  struct File {
    Name name;
    Index folder;
  };
  struct Folder {
    Name name;
    std::string location;  // relative to the web; "" for the web itself
    Index parent = kNone;
    Range files{0, 0};
    Range folders{0, 0};
    bool has_notes = false;
    bool is_web = false;
  };
  class Lister;

  Name MakeName(const std::string& text) const;
  template <typename Entries>
  Index FindIn(const Entries& entries, Range range, std::string_view name) const;
  Index FindFolder(std::string_view location) const;

  const std::string path_;
  const PathStyle style_;
  const int code_page_;
  const bool leaves_out_hidden_;
  std::vector<File> files_;
  std::vector<Folder> folders_;
  std::vector<LeftOut> left_out_;
  // Folders that Find was asked about, by location: pages stand in the structure by folder.
  mutable std::unordered_map<std::string, Index> found_folders_;
};

}  // namespace scrivo

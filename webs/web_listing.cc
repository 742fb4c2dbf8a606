#include "webs/web_listing.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "system/error.h"
#include "text/fold_case.h"
#include "webs/hidden_files.h"
#include "webs/web_text.h"

namespace scrivo {
namespace {

// The folders in which the host keeps its own files, in small letters.
bool IsHostFolder(std::string_view key) {
  constexpr std::array<std::string_view, 5> kNames = {"_borders", "_derived", "_fpclass",
                                                      "_overlay", "_themes"};
  return key.starts_with("_vti_") || std::find(kNames.begin(), kNames.end(), key) != kNames.end();
}

// The derived-image page of a project that was kept in the web: Scr1A2.tmp.htm, or Scrivo.tmp.htm
// and Scrivo2.tmp.htm. It is not a page of the author's.
bool IsKeptProjectPage(std::string_view key) {
  constexpr std::string_view kStart = "scr", kOwnStart = "scrivo", kEnd = ".tmp.htm";
  if (key.size() <= kStart.size() + kEnd.size() || !key.starts_with(kStart) ||
      !key.ends_with(kEnd)) {
    return false;
  }
  key.remove_suffix(kEnd.size());
  if (key.starts_with(kOwnStart)) {
    return key.find_first_not_of("0123456789", kOwnStart.size()) == std::string_view::npos;
  }
  return key.find_first_not_of("0123456789abcdef", kStart.size()) == std::string_view::npos;
}

}  // namespace

// Lists one folder after another, each folder's subfolders behind all that are known: no depth of
// a web overflows the stack.
class WebListing::Lister {
 public:
  Lister(WebListing* listing, Files& files, WebReport& report)
      : listing_(*listing), files_(files), report_(report) {}

  void Run() {
    listing_.folders_.emplace_back();
    real_paths_.push_back(files_.RealPath(listing_.FolderPath(0)));
    List(0, files_.List(listing_.FolderPath(0)));
    for (Index folder = 1; folder < listing_.folders_.size(); ++folder) {
      const std::string path = listing_.FolderPath(folder);
      try {
        List(folder, files_.List(path));
      } catch (const Error& error) {
        ReportFailure(path, "folder skipped", error, report_);
      }
    }
  }

 private:
  void List(Index folder, const std::vector<FolderEntry>& entries) {
    std::vector<Name> names, subfolders;
    for (const FolderEntry& entry : entries) {
      if (IsUnfinishedName(entry.name)) continue;
      if (entry.name.find_first_of("\r\n") != std::string::npos) {
        report_.Problem(
            {listing_.FolderPath(folder) + Separator(listing_.style_) + entry.name, 0,
             "skipped: the name contains a line break, and a project file has one name per line"});
        continue;
      }
      Name name = listing_.MakeName(entry.name);
      const bool is_hosts = entry.is_folder && IsHostFolder(name.Key());
      if (!is_hosts && listing_.leaves_out_hidden_ && IsHiddenName(name.text)) {
        LeaveOut(folder, entry);
      } else if (!entry.is_folder) {
        if (folder != 0 || !IsKeptProjectPage(name.Key())) names.push_back(std::move(name));
      } else if (!is_hosts) {
        subfolders.push_back(std::move(name));
      } else if (name.Key() == "_vti_cnf") {
        listing_.folders_[folder].has_notes = true;
      } else if (name.Key() == "_vti_pvt") {
        listing_.folders_[folder].is_web = true;
      }
    }
    Sort(&names);
    Sort(&subfolders);
    std::vector<File>& files = listing_.files_;
    const Index first = static_cast<Index>(files.size());
    for (Name& name : names) files.push_back({std::move(name), folder});
    listing_.folders_[folder].files = {first, static_cast<Index>(files.size())};
    AddSubfolders(folder, &subfolders);
  }

  void LeaveOut(Index folder, const FolderEntry& entry) {
    const std::string& above = listing_.folders_[folder].location;
    const std::string path = listing_.FolderPath(folder) + Separator(listing_.style_) + entry.name;
    listing_.left_out_.push_back({above.empty() ? entry.name : above + "/" + entry.name,
                                  entry.is_folder ? CountFiles(path) : 1});
  }

  // The files in a folder and below it, however they are reached; what cannot be listed counts for
  // nothing.
  std::size_t CountFiles(const std::string& top) {
    std::size_t count = 0;
    std::vector<std::string> waiting{top};
    std::unordered_set<std::string> entered;
    while (!waiting.empty()) {
      const std::string path = std::move(waiting.back());
      waiting.pop_back();
      if (!entered.insert(files_.RealPath(path)).second) continue;
      try {
        for (const FolderEntry& entry : files_.List(path)) {
          if (entry.is_folder) {
            waiting.push_back(path + Separator(listing_.style_) + entry.name);
          } else {
            ++count;
          }
        }
      } catch (const Error& error) {
        if (error.number == kUserInterrupt) throw;
      }
    }
    return count;
  }

  static void Sort(std::vector<Name>* names) {
    std::sort(names->begin(), names->end(), [](const Name& a, const Name& b) {
      const int order = a.Key().compare(b.Key());
      return order != 0 ? order < 0 : a.text < b.text;
    });
  }

  void AddSubfolders(Index parent, std::vector<Name>* names) {
    std::vector<Folder>& folders = listing_.folders_;
    const Index first = static_cast<Index>(folders.size());
    for (Name& name : *names) {
      Folder folder;
      const std::string& above = folders[parent].location;
      folder.location = above.empty() ? name.text : above + "/" + name.text;
      folder.name = std::move(name);
      folder.parent = parent;
      folders.push_back(std::move(folder));
      if (!Enter(static_cast<Index>(folders.size() - 1))) folders.pop_back();
    }
    folders[parent].folders = {first, static_cast<Index>(folders.size())};
  }

  // Remembers where the folder really is. False for a link that would lead round in circles: to a
  // folder above it, or to one already entered through another link.
  bool Enter(Index folder) {
    const Index parent = listing_.folders_[folder].parent;
    const std::string path = listing_.FolderPath(folder);
    std::string real = files_.RealPath(path);
    const std::string expected =
        real_paths_[parent] + Separator(listing_.style_) + listing_.folders_[folder].name.text;
    if (real != path && real != expected &&
        (IsAbove(parent, real) || !entered_by_link_.insert(real).second)) {
      report_.Problem(
          {path, 0, "link skipped: it leads to " + real + ", whose pages are already in the web"});
      return false;
    }
    real_paths_.push_back(std::move(real));
    return true;
  }

  bool IsAbove(Index folder, const std::string& real) const {
    for (; folder != kNone; folder = listing_.folders_[folder].parent) {
      if (real_paths_[folder] == real) return true;
    }
    return false;
  }

  WebListing& listing_;
  Files& files_;
  WebReport& report_;
  std::vector<std::string> real_paths_;  // by folder
  std::unordered_set<std::string> entered_by_link_;
};

WebListing::WebListing(Files& files, const std::string& path, PathStyle style, int code_page,
                       bool leaves_out_hidden, WebReport& report)
    : path_(path), style_(style), code_page_(code_page), leaves_out_hidden_(leaves_out_hidden) {
  Lister(this, files, report).Run();
}

bool WebListing::LeavesOut(std::string_view location) const {
  return leaves_out_hidden_ && IsHiddenLocation(location);
}

WebListing::Name WebListing::MakeName(const std::string& text) const {
  std::string key = FoldCase(GuessedUtf8(text, code_page_));
  if (key == text) key.clear();
  return {text, std::move(key)};
}

std::string WebListing::FileLocation(Index file) const {
  const std::string& folder = folders_[FolderHolding(file)].location;
  return folder.empty() ? FileName(file) : folder + "/" + FileName(file);
}

std::string WebListing::FilePath(Index file) const {
  return FolderPath(FolderHolding(file)) + Separator(style_) + FileName(file);
}

std::string WebListing::FolderPath(Index folder) const {
  const std::string& location = folders_[folder].location;
  if (location.empty()) return path_;
  std::string path = path_ + Separator(style_);
  const std::size_t start = path.size();
  path += location;
  std::replace(path.begin() + static_cast<std::ptrdiff_t>(start), path.end(), '/',
               Separator(style_));
  return path;
}

template <typename Entries>
WebListing::Index WebListing::FindIn(const Entries& entries, Range range,
                                     std::string_view name) const {
  const std::string utf8 = GuessedUtf8(name, code_page_);
  const std::string key = FoldCase(utf8);
  const auto end = entries.begin() + range.end;
  const auto first = std::lower_bound(
      entries.begin() + range.begin, end, key,
      [](const auto& entry, const std::string& k) { return entry.name.Key() < k; });
  for (auto entry = first; entry != end && entry->name.Key() == key; ++entry) {
    if (entry->name.text == name || GuessedUtf8(entry->name.text, code_page_) == utf8) {
      return static_cast<Index>(entry - entries.begin());
    }
  }
  return first != end && first->name.Key() == key ? static_cast<Index>(first - entries.begin())
                                                  : kNone;
}

WebListing::Index WebListing::FindFolder(std::string_view location) const {
  const auto known = found_folders_.find(std::string(location));
  if (known != found_folders_.end()) return known->second;
  Index folder = 0;
  for (std::size_t at = 0; folder != kNone && at <= location.size();) {
    const std::size_t end = std::min(location.find('/', at), location.size());
    folder = FindIn(folders_, folders_[folder].folders, location.substr(at, end - at));
    at = end + 1;
  }
  found_folders_.emplace(location, folder);
  return folder;
}

WebListing::Index WebListing::Find(std::string_view location) const {
  const std::size_t slash = location.rfind('/');
  if (slash == std::string_view::npos) return FindIn(files_, folders_[0].files, location);
  const Index folder = FindFolder(location.substr(0, slash));
  if (folder == kNone) return kNone;
  return FindIn(files_, folders_[folder].files, location.substr(slash + 1));
}

}  // namespace scrivo

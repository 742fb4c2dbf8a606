#include "project/project_tree.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/fold_case.h"

namespace scrivo {
namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = AsciiLower(c);
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

bool Matches(std::string_view pattern, std::string_view name) {
  std::size_t p = 0, n = 0, star = std::string_view::npos, resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

// The files of a folder whose names match the last part of `pattern`, in order.
std::vector<std::string> MatchingNames(const std::vector<SourceEntry>& entries,
                                       const std::string& pattern) {
  const std::string last = FoldCase(pattern.substr(pattern.rfind('/') + 1));
  std::vector<std::string> names;
  for (const SourceEntry& entry : entries) {
    if (!entry.is_folder && Matches(last, FoldCase(entry.name))) names.push_back(entry.name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::string SystemSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '/',
               static_cast<char>(std::filesystem::path::preferred_separator));
  return path;
}

bool IsFullPath(std::string_view path) {
  return path.starts_with('/') || (path.size() >= 2 && IsAsciiLetter(path[0]) && path[1] == ':');
}

Reference TakeApart(std::string_view address) {
  Reference reference;
  const std::size_t colon = address.find_first_of(":/\\?#");
  // One letter before the colon is a drive, and a name may begin with no letter.
  if (colon != std::string_view::npos && colon > 1 && address[colon] == ':' &&
      IsAsciiLetter(address[0])) {
    const std::string_view scheme = address.substr(0, colon);
    reference.external = true;
    reference.web = EqualsIgnoringCase(scheme, "http") || EqualsIgnoringCase(scheme, "https") ||
                    EqualsIgnoringCase(scheme, "ftp");
    return reference;
  }
  if (address.starts_with("//")) {
    reference.external = reference.web = true;
    return reference;
  }
  const std::size_t hash = address.find('#');
  if (hash != std::string_view::npos) reference.fragment = address.substr(hash);
  reference.path = address.substr(0, hash);
  reference.path = reference.path.substr(0, reference.path.find('?'));
  return reference;
}

std::string NormalPath(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const std::size_t slash = std::min(path.find('/'), path.size());
    const std::string_view part = path.substr(0, slash);
    path.remove_prefix(std::min(slash + 1, path.size()));
    if (part.empty() || part == ".") continue;
    if (part == ".." && !parts.empty() && parts.back() != "..") {
      parts.pop_back();
    } else {
      parts.push_back(part);
    }
  }
  std::string normal;
  for (const std::string_view part : parts) {
    if (!normal.empty()) normal += '/';
    normal += part;
  }
  return normal;
}

std::string FolderOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return std::string(slash == std::string_view::npos ? std::string_view() : path.substr(0, slash));
}

std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 &&
        HexDigit(text[i + 2]) >= 0) {
      decoded.push_back(static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2])));
      i += 2;
    } else {
      decoded.push_back(text[i]);
    }
  }
  return decoded;
}

std::string PathOnDisk(const SourceFiles& files, const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const bool at_root = slash == 0;
  const std::string name = path.substr(slash == std::string::npos ? 0 : slash + 1);
  std::string folder = slash == std::string::npos ? "" : path.substr(0, slash);
  const auto joined = [&](const std::string& last) {
    return slash == std::string::npos ? last : folder + "/" + last;
  };
  if (name.empty() || name == "." || name == "..") {
    if (!folder.empty()) folder = PathOnDisk(files, folder);
    return joined(name);
  }
  const auto list = [&] {
    if (folder.empty()) return files.List(at_root ? "/" : ".");
    return files.List(folder.back() == ':' ? folder + "/" : folder);
  };
  std::vector<SourceEntry> entries = list();
  if (entries.empty() && !folder.empty()) {
    folder = PathOnDisk(files, folder);
    entries = list();
  }
  const std::string folded = FoldCase(name);
  const std::string* best = nullptr;
  for (const SourceEntry& entry : entries) {
    if (entry.name == name) return joined(name);
    if (FoldCase(entry.name) == folded && (best == nullptr || entry.name < *best)) {
      best = &entry.name;
    }
  }
  return joined(best == nullptr ? name : *best);
}

ProjectTree::ProjectTree(const SourceFiles& files, std::string folder, int code_page, bool flat,
                         int name_code_page)
    : files_(files),
      folder_(std::move(folder)),
      code_page_(code_page),
      name_code_page_(name_code_page),
      flat_(flat) {
  while (folder_.size() > 1 && folder_.back() == '/') folder_.pop_back();
}

// The texts that the bytes of a name may mean, the likeliest first.
std::vector<std::string> ProjectTree::Spellings(std::string_view name, int code_page) const {
  std::vector<std::string> spellings;
  const auto add_either = [&](std::string text) {
    // On POSIX a name may hold a backslash.
    const bool has_backslash = text.find('\\') != std::string::npos;
    std::string other = has_backslash ? WithSlashes(text) : std::string();
    spellings.push_back(std::move(text));
    if (has_backslash) spellings.push_back(std::move(other));
  };
  const auto add = [&](std::string_view bytes) {
    if (IsUtf8(bytes)) {
      add_either(std::string(bytes));
      // Double-byte text may look like UTF-8.
      std::string other = ToUtf8(bytes, code_page);
      if (other != bytes) add_either(std::move(other));
    } else {
      add_either(ToUtf8(bytes, code_page));
      add_either(std::string(bytes));
    }
    if (name_code_page_ != code_page && name_code_page_ != kUtf8CodePage) {
      spellings.push_back(ToUtf8(bytes, name_code_page_));
    }
  };
  add(name);
  if (name.find('%') != std::string_view::npos) add(PercentDecoded(name));
  return spellings;
}

std::optional<FoundFile> ProjectTree::Find(std::string_view name, std::string_view from,
                                           int code_page, bool* is_withheld) {
  if (is_withheld != nullptr) *is_withheld = false;
  for (const std::string& spelling : Spellings(name, code_page)) {
    std::string path = spelling;
    if (path.empty() || path.find('\0') != std::string_view::npos) continue;
    if (path[0] != '/' && !from.empty()) path = std::string(from) + "/" + path;
    const std::string normal = NormalPath(path);
    if (auto found = FindExact(normal)) return found;
    if (is_withheld != nullptr && withheld_.contains(normal)) *is_withheld = true;
  }
  return std::nullopt;
}

std::optional<FoundFile> ProjectTree::FindListed(std::string_view name) {
  for (const std::string& path : Spellings(name, code_page_)) {
    if (path.empty() || path.find('\0') != std::string_view::npos) continue;
    if (IsFullPath(path)) {
      if (auto found = FindFull(path)) return found;
    }
    if (auto found = FindExact(NormalPath(path))) return found;
  }
  return std::nullopt;
}

// What of a full path comes behind the project's folder; nothing when it lies elsewhere.
std::optional<std::string> ProjectTree::InProject(const std::string& path) const {
  const std::string root = folder_.empty() ? "" : folder_ + (folder_ == "/" ? "" : "/");
  if (root.empty() || !FoldCase(path).starts_with(FoldCase(root))) return std::nullopt;
  return path.substr(root.size());
}

std::optional<FoundFile> ProjectTree::FindFull(const std::string& path) {
  if (const auto relative = InProject(path)) return FindExact(NormalPath(*relative));
  std::error_code error;
  const std::string actual = PathOnDisk(files_, path);
  if (files_.Open(actual, &error) == nullptr) return std::nullopt;
  const std::string name = actual.substr(actual.rfind('/') + 1);
  return FoundFile{actual, name, path.substr(path.rfind('/') + 1), name};
}

std::optional<FoundFile> ProjectTree::FindExact(const std::string& path) {
  if (path.empty()) return std::nullopt;
  const std::optional<std::string> actual = OnDisk(path);
  if (!actual) return std::nullopt;
  FoundFile found{DiskPath(*actual), *actual, path, *actual};
  if (flat_ || actual->starts_with("../")) {
    found.archive_path = actual->substr(actual->rfind('/') + 1);
    found.address = path.substr(path.rfind('/') + 1);
  }
  return found;
}

// The path of a file or folder with the letter case that it has on disk; nothing when it is not
// there.
std::optional<std::string> ProjectTree::OnDisk(const std::string& path, Kind kind) {
  // No path ends in "/", which so tells folders apart.
  const std::string key = kind == Kind::kFolder ? path + "/" : path;
  const auto [known, added] = on_disk_.try_emplace(key);
  if (!added) return known->second;
  std::string actual;
  std::string_view rest = path;
  while (true) {
    const std::size_t slash = rest.find('/');
    const std::string_view part = rest.substr(0, slash);
    const bool last = slash == std::string_view::npos;
    if (part == "..") {
      if (last && kind == Kind::kFile) return std::nullopt;
      actual += last ? ".." : "../";
    } else {
      std::string folder = actual;
      if (!folder.empty()) folder.pop_back();
      const Listing& listing = ListOnce(folder);
      const auto found = listing.by_name.find(FoldCase(part));
      if (found != listing.by_name.end() && found->second.is_withheld) {
        withheld_.insert(path);
        return std::nullopt;
      }
      const bool is_folder = !last || kind == Kind::kFolder;
      if (found == listing.by_name.end() || found->second.is_folder != is_folder) {
        return std::nullopt;
      }
      actual += found->second.name;
      if (!last) actual += '/';
    }
    if (last) break;
    rest.remove_prefix(slash + 1);
  }
  // Not through `known`: listing a folder does not change the map, but the reader need not know
  // that.
  on_disk_[key] = actual;
  return actual;
}

const ProjectTree::Listing& ProjectTree::ListOnce(const std::string& folder) {
  const auto [known, added] = folders_.try_emplace(folder);
  if (!added) return known->second;
  std::vector<SourceEntry> entries = files_.List(DiskPath(folder));
  // Of names that differ in case only, the first in byte order counts, on every machine.
  std::sort(entries.begin(), entries.end(),
            [](const SourceEntry& a, const SourceEntry& b) { return a.name < b.name; });
  for (SourceEntry& entry : entries) {
    std::string key = FoldCase(entry.name);
    known->second.by_name.try_emplace(std::move(key), std::move(entry));
  }
  return known->second;
}

std::string ProjectTree::DiskPath(const std::string& path) const {
  if (folder_.empty()) return path.empty() ? "." : path;
  if (path.empty()) return folder_;
  return folder_ == "/" ? "/" + path : folder_ + "/" + path;
}

std::vector<FoundFile> ProjectTree::FindMatching(std::string_view pattern) {
  const std::string path =
      WithSlashes(ToUtf8(pattern, IsUtf8(pattern) ? kUtf8CodePage : code_page_));
  std::vector<FoundFile> found;
  if (IsFullPath(path) && !InProject(path)) {
    const std::string folder = PathOnDisk(files_, path.substr(0, path.rfind('/')));
    for (const std::string& name : MatchingNames(files_.List(folder + "/"), path)) {
      if (auto file = FindFull(folder + "/" + name)) found.push_back(std::move(*file));
    }
    if (!found.empty()) return found;
  }
  const std::string relative = NormalPath(InProject(path).value_or(path));
  std::string folder = FolderOf(relative);
  if (!folder.empty()) {
    const std::optional<std::string> actual = OnDisk(folder, Kind::kFolder);
    if (!actual) return found;
    folder = *actual + "/";
  }
  for (const std::string& name : MatchingNames(files_.List(DiskPath(FolderOf(folder))), relative)) {
    if (auto file = FindExact(folder + name)) found.push_back(std::move(*file));
  }
  return found;
}

}  // namespace scrivo

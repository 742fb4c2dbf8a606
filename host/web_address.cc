#include "host/web_address.h"

#include <algorithm>
#include <vector>

#include "text/ascii_text.h"

namespace scrivo::host {
namespace {

bool StartsWithDrive(const std::string& path) {
  return path.size() >= 2 && IsAsciiLetter(path[0]) && path[1] == ':';
}

// How much of an absolute address says where its root is: "file:///C:", "http://server".
std::size_t RootLength(const std::string& address) {
  if (StartsWithDrive(address)) return 2;
  const std::size_t scheme = address.find("://");
  if (scheme == std::string::npos) return 0;
  const std::size_t root = address.find('/', scheme + 3);
  if (root != scheme + 3) return std::min(root, address.size());  // a server stands there
  const std::string path = address.substr(root + 1);
  return StartsWithDrive(path) ? root + 3 : root;
}

std::vector<std::string> Names(const std::string& path) {
  std::vector<std::string> names;
  std::size_t start = 0;
  while (start <= path.size()) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    if (end > start) names.push_back(path.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string path;
  for (const std::string& name : names) {
    if (!path.empty()) path += '/';
    path += name;
  }
  return path;
}

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

// The names of the folder that a base stands for.
std::vector<std::string> FolderNames(const std::string& base, bool is_folder) {
  std::vector<std::string> names = Names(base.substr(RootLength(base)));
  if (!is_folder && !base.ends_with('/') && !names.empty()) names.pop_back();
  return names;
}

}  // namespace

bool IsAbsoluteAddress(const std::string& address) {
  if (StartsWithDrive(address) || address.starts_with("\\\\")) return true;
  const std::size_t colon = address.find(':');
  return colon != std::string::npos && colon > 0 && address.find('/') > colon &&
         std::all_of(address.begin(), address.begin() + static_cast<std::ptrdiff_t>(colon),
                     IsAsciiLetter);
}

std::string MakeAbsolute(const std::string& base, bool base_is_folder, const std::string& address) {
  if (IsAbsoluteAddress(address)) return address;
  const std::string start = AddressOfPath(base);
  std::vector<std::string> names = FolderNames(start, base_is_folder);
  if (address.starts_with('/')) names.clear();
  for (const std::string& name : Names(WithSlashes(address))) {
    if (name == "..") {
      if (!names.empty()) names.pop_back();
    } else if (name != ".") {
      names.push_back(name);
    }
  }
  return start.substr(0, RootLength(start)) + "/" + Joined(names);
}

std::string MakeRelative(const std::string& base, bool base_is_folder, const std::string& address) {
  if (!IsAbsoluteAddress(address)) return address;
  const std::string from = AddressOfPath(base), to = AddressOfPath(address);
  if (!EqualsIgnoringCase(from.substr(0, RootLength(from)), to.substr(0, RootLength(to))))
    return address;
  const std::vector<std::string> folder = FolderNames(from, base_is_folder);
  std::vector<std::string> target = FolderNames(to, true);
  std::size_t shared = 0;
  while (shared < folder.size() && shared < target.size() &&
         EqualsIgnoringCase(folder[shared], target[shared])) {
    ++shared;
  }
  target.erase(target.begin(), target.begin() + static_cast<std::ptrdiff_t>(shared));
  target.insert(target.begin(), folder.size() - shared, "..");
  return Joined(target);
}

std::string AddressOfPath(const std::string& path) {
  if (StartsWithDrive(path)) return "file:///" + WithSlashes(path);
  if (path.starts_with("\\\\")) return "file:" + WithSlashes(path);
  if (path.starts_with('/')) return "file://" + path;
  return path;
}

std::string LastName(const std::string& address) {
  return address.substr(address.rfind('/') + 1);  // npos + 1 is 0: the whole address
}

}  // namespace scrivo::host

#pragma once

#include <string>

namespace scrivo::host {

// Whether an address stands for itself: it has a scheme, or is a path from the root of a disk.
bool IsAbsoluteAddress(const std::string& address);

// `address` seen from `base`, which is a folder, or a page whose folder counts. An absolute one
// stays as it is.
std::string MakeAbsolute(const std::string& base, bool base_is_folder, const std::string& address);

// The way from `base` (as above) to `address`: "docs/a.htm", "../b.htm"; "" for the folder itself.
// A relative address, and one on another machine or disk, stays as it is. Letter case of the way
// that both share does not count.
std::string MakeRelative(const std::string& base, bool base_is_folder, const std::string& address);

// The address of a path on disk: C:\Webs\my site is file:///C:/Webs/my site. What is an address
// already stays as it is.
std::string AddressOfPath(const std::string& path);

// The part behind the last "/".
std::string LastName(const std::string& address);

}  // namespace scrivo::host

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace scrivo::host {

// The webs opened last, kept with the user's settings.
class RecentWebs {
 public:
  static constexpr std::size_t kMost = 8;

  // Paths, the last one opened first.
  static std::vector<std::string> Read();
  // Puts a path in front. What cannot be stored is not remembered, and that is all.
  static void Remember(const std::string& path);
  // Takes a path out, one that does not exist any more.
  static void Forget(const std::string& path);
};

// A path cut in its middle to at most `length` characters, so that a menu stays narrow: the drive
// and the last names stay.
std::string ShortenedPath(const std::string& path, std::size_t length);

}  // namespace scrivo::host

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace scrivo::host {

// An add-in that is registered with the host: a key below "Addins" in the registry.
struct AddinEntry {
  std::string prog_id;      // the key's name
  std::string name;         // for people: "FriendlyName", else the key's name
  std::string description;  // "Description", else the name
  std::int32_t load_behavior = 0;

  // Whether the host loads it when it starts.
  bool LoadsAtStart() const { return (load_behavior & 2) != 0 && (load_behavior & 1) != 0; }
};

// The registered add-ins: those of the user, then those of the machine that the user has none of
// the same name for. Nothing is ever written back: this host leaves an add-in that failed to load
// as it was registered.
std::vector<AddinEntry> ReadAddinEntries();

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

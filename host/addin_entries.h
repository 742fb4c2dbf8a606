#pragma once

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

}  // namespace scrivo::host

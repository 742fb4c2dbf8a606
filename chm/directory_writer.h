#pragma once

// The directory of a help file: the names of its entries and where their bytes lie.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace scrivo {

struct DirectoryEntry {
  std::string name;           // UTF-8; folders end in "/"
  std::uint64_t section = 0;  // kSectionUncompressed or kSectionCompressed
  std::uint64_t offset = 0;   // in that section
  std::uint64_t length = 0;
};

// Bytes of the longest name. Two of them fit into an index chunk, or the levels would have no end.
inline constexpr std::size_t kMaxEntryName = 2000;

// The directory, from its ITSP header to the last chunk: listing chunks in the order of the names,
// then as many levels of index chunks as it takes to get to one. `entries` are in the order of
// CompareNames, are distinct in it, and have names of 1 to kMaxEntryName bytes.
std::vector<std::uint8_t> WriteDirectory(const std::vector<DirectoryEntry>& entries);

}  // namespace scrivo

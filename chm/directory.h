#pragma once

// The directory of a help file: the list of its entries.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "bytes/byte_source.h"
#include "chm/container_header.h"
#include "chm/problem.h"

namespace scrivo {

// One name in a help file.
struct Entry {
  std::string_view name;  // UTF-8 as stored, into the Directory
  std::uint64_t section;  // kSectionUncompressed or kSectionCompressed, or a number unknown to us
  std::uint64_t offset;   // in that section
  std::uint64_t length;
};

// What an entry is for; told by its name.
enum class EntryKind {
  kUser,      // a file of the author's, contents and index files included
  kFolder,    // ends in "/"
  kInternal,  // a stream of the help system: "/#...", "/$..." or "::..."
};
EntryKind KindOf(std::string_view name);

// Compares two names as the viewer does: byte by byte, A to Z taken as a to z. Negative, 0 or
// positive.
int CompareNames(std::string_view a, std::string_view b);

// The entries of all listing chunks. The chunks are read one after the other rather than along
// their links: a damaged or circular link then does no harm, and neither does a wrong first chunk.
// Takes at most some 30 times the memory that the directory takes in the file.
class Directory {
 public:
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;
  Directory(Directory&&) = default;
  Directory& operator=(Directory&&) = default;

  // Reads the directory that `header` points to. What is wrong is added to `*problems`; nothing is
  // returned when there is no directory at all.
  static std::optional<Directory> Read(const ByteSource& source, const ContainerHeader& header,
                                       Problems* problems);

  // In the order of the chunks: of names, as compilers write them.
  const std::vector<Entry>& Entries() const { return entries_; }

  // The entry of that name, compared as CompareNames does; null when there is none. Of several the
  // one that comes first.
  const Entry* Find(std::string_view name) const;

 private:
  Directory() = default;

  struct Listing {
    std::vector<std::uint8_t> bytes;
    std::uint64_t number;        // of the chunk
    std::size_t reference_step;  // entries from one quick reference to the next
  };

  void AddListing(Listing listing, Problems* problems);
  void IndexNames();

  std::vector<std::vector<std::uint8_t>> chunks_;  // hold the names
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> by_name_;  // places in entries_, in the order of the names
};

// Takes a number in the directory's format, an ENCINT, off the front of `*bytes`. Leading groups of
// zero are allowed, as some writers pad their numbers. Nothing when the bytes end within the number
// or it needs more than 64 bits; what was taken off then is undefined.
std::optional<std::uint64_t> TakeEncint(std::span<const std::uint8_t>* bytes);

}  // namespace scrivo

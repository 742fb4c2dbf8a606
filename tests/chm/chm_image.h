#pragma once

// Builds small help files in memory for the tests of the reader, with a compression of its own that
// compresses nothing: every reset interval is one uncompressed LZX block. So every byte of a file
// is where the test can find and break it.

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace scrivo {

struct ImageFile {
  std::string name;
  std::string content;
  int section = 1;
};

struct ImageOptions {
  std::uint32_t version = 3;
  std::size_t chunk_size = 0x1000;
  std::size_t interval = 0x10000;
  bool extra_reset_entry = false;  // as one compiler writes it
  int encint_padding = 0;          // leading zero groups of every number in the directory
};

class ChmImage {
 public:
  explicit ChmImage(std::vector<ImageFile> files, const ImageOptions& options = {});

  std::vector<std::uint8_t> bytes;

  // Where parts of the file lie.
  std::size_t directory = 0;           // the ITSP header
  std::size_t first_chunk = 0;         // chunk 0; the others follow
  std::size_t chunks = 0;              // their number
  std::size_t content = 0;             // content section 0
  std::vector<std::size_t> intervals;  // the blocks of section 1, in the file
  // Where the content of an entry of section 0 starts.
  std::size_t At(const std::string& name) const { return content + plain_offsets_.at(name); }

  // Overwrites a field.
  void Put16(std::size_t at, std::uint16_t value);
  void Put32(std::size_t at, std::uint32_t value);
  void Put64(std::size_t at, std::uint64_t value);
  // Where `text` is first found at or after `from`; fails the test when it is not.
  std::size_t FindText(const std::string& text, std::size_t from = 0) const;

 private:
  struct DirectoryRow {
    std::string name;
    std::uint64_t section;
    std::uint64_t offset;
    std::uint64_t length;
  };

  void AddPlain(const std::string& name, const std::string& content);
  void AddStorage(const ImageOptions& options);
  std::string EntryBytes(const DirectoryRow& row, int padding) const;
  std::vector<std::string> BuildChunks(const ImageOptions& options) const;

  std::vector<DirectoryRow> rows_;
  std::string plain_;       // content section 0
  std::string compressed_;  // what section 1 decodes to
  std::map<std::string, std::size_t> plain_offsets_;
  std::vector<std::size_t> interval_offsets_;  // in the LZX stream
};

// Text of `size` bytes that differs from place to place.
std::string SampleText(std::size_t size, unsigned seed = 0);

}  // namespace scrivo

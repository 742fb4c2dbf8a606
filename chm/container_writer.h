#pragma once

// Writes the container of a help file: header, directory, and the two content sections.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "bytes/byte_source.h"
#include "chm/directory_writer.h"
#include "lzx/constants.h"
#include "lzx/parallel_encoder.h"

namespace scrivo {

struct ContainerOptions {
  std::uint32_t language = 0x409;  // LCID in the header: the compiling machine's, for information
  std::uint32_t timestamp = 0;     // low half of the FILETIME of the compile
  int threads = 1;                 // that compress, 1 or more
  // Bytes that are compressed together: kLzxUsualInterval times a power of two, at most
  // kLzxMaxInterval. The original compiler knows the usual one only; larger ones make smaller
  // files, since a match cannot reach into the interval before.
  std::size_t interval = kLzxUsualInterval;
  // Whether to give the file up: asked before each piece of what is added or moved, on the caller's
  // thread. Empty: never.
  std::function<bool()> stop_wanted = {};
};

enum class ContainerStatus {
  kOk,
  kWriteFailed,    // the store failed and knows why
  kBadName,        // empty or longer than kMaxEntryName: bad_name()
  kDuplicateName,  // there twice, perhaps in another case: bad_name()
  kStopped,        // stop_wanted() has said so
};

// Give it the entries in the order in which their bytes are to lie in their section, then Finish.
// Names are UTF-8 and start with "/" or "::". The entries for folders and those that describe the
// storage come of themselves. Compressed bytes go to the store as they are ready; only names and
// what AddPlain got stay in memory. The store must outlive the writer, starts empty, and holds no
// usable file before Finish has succeeded. The bytes depend on the calls and options alone, not
// on the number of threads.
class ContainerWriter {
 public:
  ContainerWriter(ByteStore& store, const ContainerOptions& options);

  // Starts an entry of the compressed section; the bytes follow with Append.
  void StartEntry(std::string name);

  // Adds bytes to the entry that was started last. May wait for the compression to catch up.
  void Append(std::span<const std::uint8_t> bytes);

  // Both in one.
  void AddCompressed(std::string name, std::span<const std::uint8_t> bytes);

  // Adds an entry of the uncompressed section.
  void AddPlain(std::string name, std::vector<std::uint8_t> bytes);

  // Completes the file. Call it once, as the last thing.
  ContainerStatus Finish();

  // The first failure so far. Nothing can be mended after one, so the caller may stop.
  ContainerStatus Status() const { return status_; }
  const std::string& BadName() const { return bad_name_; }

  // Bytes of the whole file, after Finish.
  std::uint64_t FileSize() const { return file_size_; }

 private:
  struct PlainEntry {
    std::string name;
    std::vector<std::uint8_t> bytes;
  };

  void Fail(ContainerStatus status, const std::string& name = {});
  void CheckName(const std::string& name);
  bool Goes();
  void TakeInterval(const LzxInterval& interval);
  void CollectStorageEntries();
  void PlacePlainEntries();
  void AddFolders();
  void SortEntries();
  std::vector<std::uint8_t> ResetTable() const;
  void WriteAround();
  bool MoveContent(std::uint64_t by);

  ByteStore& store_;
  ContainerOptions options_;
  ContainerStatus status_ = ContainerStatus::kOk;
  std::string bad_name_;

  std::vector<DirectoryEntry> entries_;
  std::size_t open_entry_ = 0;      // in entries_, the one that Append adds to
  std::vector<PlainEntry> plain_;   // section 0 before the compressed content
  std::vector<PlainEntry> behind_;  // section 0 after it

  std::uint64_t uncompressed_size_ = 0;  // of the compressed section
  std::uint64_t content_size_ = 0;       // the same, compressed
  std::vector<std::uint64_t> frames_;    // where in the content each frame starts
  std::uint64_t file_size_ = 0;

  ParallelEncoder pipeline_;
};

}  // namespace scrivo

#pragma once

// A file that replaces another one only when it is complete.

#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

#include "bytes/byte_store.h"

namespace scrivo {

// Grows under the target's name with ".tmp" added, in the same folder, and takes the target's place
// in one step. Until then a file of the target's name stays as it is, whatever happens to this
// process. A ".tmp" file left by a process that was ended is overwritten.
class AtomicFile : public ByteStore {
 public:
  // Starts a file that will be `target`. Null when it cannot be made, with the reason in `*error`.
  static std::unique_ptr<AtomicFile> Create(const std::filesystem::path& target,
                                            std::error_code* error);

  // Removes what was written, unless Commit has succeeded.
  ~AtomicFile() override;

  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override;
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) override;

  // Puts the file in the target's place. False when that or an earlier call failed; the target is
  // then as it was. Call it once, as the last thing.
  bool Commit();

  // Why a call failed; the first failure counts.
  const std::error_code& error() const { return error_; }

 private:
  explicit AtomicFile(const std::filesystem::path& target);

  bool Check(bool good);

  std::filesystem::path target_;
  std::filesystem::path temporary_;
  std::fstream stream_;
  std::error_code error_;
};

}  // namespace scrivo

#pragma once

// A file for what does not fit into memory, gone when its owner is.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "bytes/byte_store.h"

namespace scrivo {

// Made by the first WriteAt. Where the system lets go of a file's name while it is open (not on
// Windows) the name is given up at once, so that nothing is left of a process that was ended; a
// file that was left all the same is overwritten by the next.
class TemporaryFile : public ByteStore {
 public:
  explicit TemporaryFile(std::filesystem::path path) : path_(std::move(path)) {}
  ~TemporaryFile() override;

  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override;
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) override;

  // Why a call failed; the first failure counts.
  const std::error_code& error() const { return error_; }

 private:
  bool Check(bool good);

  std::filesystem::path path_;
  std::fstream stream_;
  bool has_name_ = false;
  std::error_code error_;
};

}  // namespace scrivo

#pragma once

// A file for what does not fit into memory, gone when its owner is.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "bytes/output_file.h"

namespace scrivo {

// An output that is never committed, made beside `path` by the first WriteAt.
class TemporaryFile : public ByteStore {
 public:
  explicit TemporaryFile(std::filesystem::path path) : path_(std::move(path)) {}

  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    if (!file_ && !reason_) file_ = OutputFile::Create(path_, &reason_);
    return file_ && file_->WriteAt(offset, bytes);
  }
  // At least one byte must have been written.
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) override {
    return file_ && file_->ReadAt(offset, out);
  }

  // Why a call failed; the first failure counts.
  const std::error_code& Reason() const { return file_ ? file_->Reason() : reason_; }

 private:
  std::filesystem::path path_;
  std::unique_ptr<OutputFile> file_;
  std::error_code reason_;  // why there is none
};

}  // namespace scrivo

#pragma once

// Where the compiler finds the files of a project.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "bytes/byte_source.h"

namespace scrivo {

struct SourceEntry {
  std::string name;
  bool is_folder = false;
  bool is_withheld = false;  // there, but neither it nor what is in it is to be taken
};

// Paths are UTF-8 with "/" separators (on POSIX: the bytes of the name, whatever they are). Open
// and List may be called from several threads at once.
class SourceFiles {
 public:
  SourceFiles() = default;
  SourceFiles(const SourceFiles&) = delete;
  SourceFiles& operator=(const SourceFiles&) = delete;
  virtual ~SourceFiles() = default;

  // What a folder holds, in any order; empty when it cannot be read. Throws std::bad_alloc.
  virtual std::vector<SourceEntry> List(const std::string& folder) const = 0;

  // Opens a file. Null when that fails, with the reason in `*error`.
  virtual std::unique_ptr<ByteSource> Open(const std::string& path,
                                           std::error_code* error) const = 0;
};

// The files of the machine.
class DiskFiles : public SourceFiles {
 public:
  std::vector<SourceEntry> List(const std::string& folder) const override;
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;
};

// Such a path for the system, and back.
std::filesystem::path SystemPath(std::string_view path);
std::string PortablePath(const std::filesystem::path& path);

// The whole of a file as text. False when it could not be read.
bool ReadText(const ByteSource& source, std::string* text);

}  // namespace scrivo

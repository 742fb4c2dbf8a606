#pragma once

// The folder that a help file is unpacked into. Whatever lies in it already, nothing is written
// outside: symbolic links, junctions and the like below the folder are not followed, and a file
// that is replaced is a new one, so that other names of the old one keep their content. A file gets
// its name when it is complete; what had that name before stays until then.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

#include "unpack/safe_path.h"

namespace scrivo {

enum class WriteOutcome {
  kDone,
  kLinkInTheWay,    // a link lies where the file or one of its folders should be
  kFileInTheWay,    // something that is not a folder lies where a folder should be
  kFolderInTheWay,  // something that is not a regular file lies where the file should be
  kFailed,          // the system refused; `error` says why
  kDiskFailed,      // the same, and it would refuse every other file too: the disk is full, ...
};

struct WriteResult {
  WriteOutcome outcome = WriteOutcome::kDone;
  std::error_code error{};
};

// Paths are those of SafePath. All calls may come from several threads at once, for different
// paths.
class OutputFolder {
 public:
  OutputFolder() = default;
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;
  virtual ~OutputFolder() = default;

  // Which names the folder can hold.
  virtual NameRules Rules() const = 0;

  // Makes a file with that content, and the folders that it needs; replaces a file of that name.
  virtual WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) = 0;

  // Starts a file that is written in parts, likewise: until Finish() it has another name.
  virtual WriteResult Start(std::string_view path) = 0;
  // Writes into a file that was started, from `offset` on.
  virtual WriteResult WritePart(std::string_view path, std::uint64_t offset,
                                std::span<const std::uint8_t> content) = 0;
  // Gives a file that was started its name. When that fails, the file is gone.
  virtual WriteResult Finish(std::string_view path) = 0;
  // Removes a file that was started.
  virtual void GiveUp(std::string_view path) = 0;

  // Removes the folders that were made, the folder itself among them, as far as they are empty.
  // Nothing else may be called any more.
  virtual void RemoveEmptyFolders() = 0;
};

// Opens the folder `path`, after making it (and the folders above) when it is not there. The path
// itself may lead through links. Null when that fails, with the reason in `*error`; then none of
// the folders is left.
std::unique_ptr<OutputFolder> OpenOutputFolder(const std::filesystem::path& path,
                                               std::error_code* error);

// Makes the folder `path` and those above it that are not there; `*made` gets those that were made,
// from the top down. When one fails, the others are removed again.
std::error_code MakeFolders(const std::filesystem::path& path,
                            std::vector<std::filesystem::path>* made);

// Removes those of the folders, given from the top down, that are empty.
void RemoveIfEmpty(const std::vector<std::filesystem::path>& folders);

}  // namespace scrivo

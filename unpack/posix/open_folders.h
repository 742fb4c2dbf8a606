#pragma once

// Folders below the output folder, opened part by part and never through a link. Those used last
// stay open: the files of a help file mostly come folder by folder, and walking to each file anew
// would cost more than making it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "bytes/posix/descriptor.h"
#include "unpack/output_folder.h"

namespace scrivo {

// Its folder stays open as long as somebody holds it. May be called from several threads at once.
class OpenFolders {
 public:
  using Folder = std::shared_ptr<const Descriptor>;

  explicit OpenFolders(Descriptor root);

  // Gives the folder `path` ("" is the output folder itself), and with `make` makes it and those
  // above it as far as they are missing.
  WriteResult Open(std::string_view path, bool make, Folder* folder);

  // The folders that were made, from the top down.
  std::vector<std::string> Made() const;

 private:
  struct Kept {
    std::string path;
    Folder folder;
    std::uint64_t last_use = 0;
  };

  Folder Find(std::string_view path);
  WriteResult OpenPart(int parent, std::string_view path, const std::string& name, bool make,
                       Descriptor* folder);
  Folder Keep(std::string_view path, Descriptor folder);

  const Folder root_;
  mutable std::mutex mutex_;  // guards what follows
  std::array<Kept, 16> kept_;
  std::uint64_t uses_ = 0;
  std::vector<std::string> made_;
};

// What a call that has just failed comes to; errno is still set.
WriteResult FailedWrite();

}  // namespace scrivo

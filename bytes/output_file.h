#pragma once

// The one way in which a program writes a file that somebody asked for.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "bytes/byte_source.h"

namespace scrivo {

// A new file that takes its target's place in one step, when it is complete: at every instant the
// target's name holds the earlier file or the new one, whole, whatever happens to this process and
// however many others write to the same target. (The last one to commit wins.)
//
// On Linux the file has no name until then, where the file system can do that. Elsewhere it grows
// beside the target as "<target>.scrivo-new" (or "….scrivo-new-2" and so on while that is taken),
// held by a lock: a file of such a name that nobody holds was left by a process that was ended, and
// the next writer to the target removes it. No other name in the folder is ever touched.
class OutputFile : public ByteStore {
 public:
  // Starts a file that will be `target`. Where `target` is a symbolic link, it stays one and the
  // file that it names is replaced. Null with the reason in `*error` when no file can be made in
  // the folder, or when `target` may not be replaced: errc::is_a_directory for a folder,
  // errc::invalid_argument for a device, pipe or socket, errc::permission_denied for a file that is
  // write-protected.
  static std::unique_ptr<OutputFile> Create(const std::filesystem::path& target,
                                            std::error_code* error);

  // Puts the file in the target's place, with the permissions and, where the system allows it, the
  // owner of the file that it replaces. False when that or an earlier call failed; the target is
  // then as it was. Call it once, as the last thing; without it nothing of the file remains.
  virtual bool Commit() = 0;

  // Why a call failed; the first failure counts.
  const std::error_code& Reason() const { return reason_; }

 protected:
  // Keeps the first failure. Returns false, for the caller to pass on.
  bool Fail(std::error_code reason);

 private:
  std::error_code reason_;
};

// How many files beside one target may be named while they grow.
constexpr int kMostNamesBesideTarget = 16;

// The `number`-th name (from 1) that a growing file, or what else ends in `ending`, may have beside
// `target`: in the same folder, and no longer than the system takes.
std::filesystem::path NameBesideTarget(const std::filesystem::path& target, int number,
                                       std::string ending = ".scrivo-new");

// The folders that lead to a new file. Those that are missing are made, and removed again unless
// they are kept or have come to hold something.
class ParentFolders {
 public:
  // `file`: the path of the file. Folders are made at once.
  explicit ParentFolders(const std::filesystem::path& file);
  ~ParentFolders();
  ParentFolders(const ParentFolders&) = delete;
  ParentFolders& operator=(const ParentFolders&) = delete;

  // Why a folder could not be made; no error when all are there.
  const std::error_code& Error() const { return error_; }

  void Keep() { made_.clear(); }

 private:
  std::vector<std::filesystem::path> made_;  // from the outermost inwards
  std::error_code error_;
};

}  // namespace scrivo

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "system/files.h"

namespace scrivo {

// The files of a POSIX system. A file without any write permission is read-only. Once an
// interruption was caught, nothing is opened for reading, listed or written anew; appending,
// removing and renaming go on.
class PosixFiles : public Files {
 public:
  PosixFiles();

  bool FileExists(const std::string& path) override;
  bool FolderExists(const std::string& path) override;
  std::uint64_t Size(const std::string& path) override;
  std::unique_ptr<FileReader> OpenForReading(const std::string& path) override;
  void Write(const std::string& path, const std::string& bytes) override;
  void WriteWhole(const std::string& path, const std::string& bytes) override;
  void Append(const std::string& path, const std::string& bytes) override;
  void Remove(const std::string& path, bool forced) override;
  void MakeFolder(const std::string& path) override;
  std::vector<FolderEntry> List(const std::string& folder) override;
  std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) override;
  std::string ShortForm(const std::string& path) override;
  std::string RealPath(const std::string& path) override;

 private:
  std::uint32_t next_number_;  // of unique files; begins anywhere, so that programs seldom meet
};

}  // namespace scrivo

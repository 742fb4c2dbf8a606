#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "system/error.h"
#include "system/files.h"

namespace scrivo {

// A disk in memory with a record of what was done to it. Paths are plain keys; "/" and "\" both
// separate.
class MemoryFiles : public Files {
 public:
  std::map<std::string, std::string> files;
  std::set<std::string> folders;
  std::set<std::string> read_only;
  std::set<std::string> locked;           // cannot be removed by anybody
  std::vector<std::string> log;           // "write a", "remove b", "remove! c" (forced), …
  std::map<std::string, Error> failures;  // "write a" → the error that this operation gives

  bool FileExists(const std::string& path) override { return files.count(path) != 0; }
  bool FolderExists(const std::string& path) override { return folders.count(path) != 0; }
  std::uint64_t Size(const std::string& path) override { return Content(path).size(); }
  std::unique_ptr<FileReader> OpenForReading(const std::string& path) override;
  void Write(const std::string& path, const std::string& bytes) override;
  void WriteWhole(const std::string& path, const std::string& bytes) override {
    Write(path, bytes);
  }
  void Append(const std::string& path, const std::string& bytes) override;
  void Remove(const std::string& path, bool forced) override;
  void MakeFolder(const std::string& path) override;
  std::vector<FolderEntry> List(const std::string& folder) override;
  std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) override;
  std::string ShortForm(const std::string& path) override;

 private:
  // Records the operation and throws the failure planned for it.
  void Do(const std::string& operation);
  const std::string& Content(const std::string& path);

  unsigned next_unique_ = 0x1A2;
};

}  // namespace scrivo

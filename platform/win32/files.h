#pragma once

#include <memory>
#include <string>
#include <vector>

#include "system/files.h"

namespace scrivo {

// Files through the wide functions of Windows: any name, whatever the code page.
class Win32Files : public Files {
 public:
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
};

}  // namespace scrivo

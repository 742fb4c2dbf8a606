#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/paths.h"
#include "system/error.h"
#include "system/files.h"

namespace scrivo {

// The system's disk, where chosen operations do something else first, such as failing.
class FailingDisk : public Files {
 public:
  explicit FailingDisk(std::shared_ptr<Files> disk) : disk_(std::move(disk)) {}

  // Before a file is written or a folder made.
  std::function<void(const std::string& path)> on_write = [](const std::string&) {};
  std::function<void(const std::string& path)> on_read = [](const std::string&) {};
  std::function<void(const std::string& folder)> on_list = [](const std::string&) {};
  std::string closed_folder;  // where no file can be made

  bool FileExists(const std::string& path) override { return disk_->FileExists(path); }
  bool FolderExists(const std::string& path) override { return disk_->FolderExists(path); }
  std::uint64_t Size(const std::string& path) override { return disk_->Size(path); }
  std::unique_ptr<FileReader> OpenForReading(const std::string& path) override {
    on_read(path);
    return disk_->OpenForReading(path);
  }
  void Write(const std::string& path, const std::string& bytes) override {
    on_write(path);
    disk_->Write(path, bytes);
  }
  void WriteWhole(const std::string& path, const std::string& bytes) override {
    on_write(path);
    disk_->WriteWhole(path, bytes);
  }
  void Append(const std::string& path, const std::string& bytes) override {
    on_write(path);
    disk_->Append(path, bytes);
  }
  void Remove(const std::string& path, bool forced) override { disk_->Remove(path, forced); }
  void MakeFolder(const std::string& path) override {
    on_write(path);
    if (GetFolder(path) == closed_folder) throw Error(kPermissionDenied, "", path);
    disk_->MakeFolder(path);
  }
  std::vector<FolderEntry> List(const std::string& folder) override {
    on_list(folder);
    return disk_->List(folder);
  }
  std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) override {
    return folder == closed_folder ? "" : disk_->MakeUniqueFile(folder, prefix);
  }
  std::string ShortForm(const std::string& path) override { return disk_->ShortForm(path); }

 private:
  std::shared_ptr<Files> disk_;
};

}  // namespace scrivo

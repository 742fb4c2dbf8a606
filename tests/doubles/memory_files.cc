#include "tests/doubles/memory_files.h"

#include <algorithm>
#include <cstdio>

namespace scrivo {
namespace {

char SeparatorOf(const std::string& folder) {
  return folder.find('\\') != std::string::npos ? '\\' : '/';
}

class MemoryReader : public FileReader {
 public:
  explicit MemoryReader(std::string bytes) : bytes_(std::move(bytes)) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t got = bytes_.copy(buffer, size, at_);
    at_ += got;
    return got;
  }

 private:
  std::string bytes_;
  std::size_t at_ = 0;
};

}  // namespace

void MemoryFiles::Do(const std::string& operation) {
  log.push_back(operation);
  const auto failure = failures.find(operation);
  if (failure != failures.end()) throw failure->second;
}

const std::string& MemoryFiles::Content(const std::string& path) {
  const auto file = files.find(path);
  if (file == files.end()) throw Error(kFileNotFound, "MemoryFiles", "File not found: " + path);
  return file->second;
}

std::unique_ptr<FileReader> MemoryFiles::OpenForReading(const std::string& path) {
  Do("open " + path);
  return std::make_unique<MemoryReader>(Content(path));
}

void MemoryFiles::Write(const std::string& path, const std::string& bytes) {
  Do("write " + path);
  files[path] = bytes;
}

void MemoryFiles::Append(const std::string& path, const std::string& bytes) {
  Do("append " + path);
  files[path] += bytes;
}

void MemoryFiles::Remove(const std::string& path, bool forced) {
  Do((forced ? "remove! " : "remove ") + path);
  Content(path);
  if (locked.count(path) || (read_only.count(path) && !forced)) {
    throw Error(kPermissionDenied, "MemoryFiles", "Permission denied: " + path);
  }
  files.erase(path);
}

void MemoryFiles::MakeFolder(const std::string& path) {
  Do("make " + path);
  if (!folders.insert(path).second) {
    throw Error(kFileAlreadyExists, "MemoryFiles", "File already exists: " + path);
  }
}

std::vector<FolderEntry> MemoryFiles::List(const std::string& folder) {
  Do("list " + folder);
  if (!FolderExists(folder)) {
    throw Error(kPathNotFound, "MemoryFiles", "Path not found: " + folder);
  }
  const std::string start = folder + SeparatorOf(folder);
  std::vector<FolderEntry> entries;
  const auto add = [&](const std::string& path, bool is_folder) {
    if (path.size() > start.size() && path.compare(0, start.size(), start) == 0 &&
        path.find(start.back(), start.size()) == std::string::npos) {
      entries.push_back({path.substr(start.size()), is_folder});
    }
  };
  for (const auto& [path, content] : files) add(path, false);
  for (const std::string& path : folders) add(path, true);
  return entries;
}

std::string MemoryFiles::MakeUniqueFile(const std::string& folder, const std::string& prefix) {
  if (!FolderExists(folder)) return "";
  char number[16];
  std::snprintf(number, sizeof number, "%X", next_unique_++);
  const std::string path = folder + SeparatorOf(folder) + prefix.substr(0, 3) + number + ".tmp";
  Do("unique " + path);
  files[path] = "";
  return path;
}

std::string MemoryFiles::ShortForm(const std::string& path) {
  if (!FileExists(path) && !FolderExists(path)) return "";
  std::string form = path;
  std::replace(form.begin(), form.end(), ' ', '_');
  return form;
}

}  // namespace scrivo

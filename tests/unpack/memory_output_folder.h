#pragma once

// An output folder in memory, which can be told to fail.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "unpack/output_folder.h"

namespace scrivo {

class MemoryOutputFolder : public OutputFolder {
 public:
  explicit MemoryOutputFolder(NameRules rules = NameRules::kPosix) : rules_(rules) {}

  std::map<std::string, std::string> files;
  std::map<std::string, int> times_created;
  std::map<std::string, WriteOutcome> refuse;  // what Create() answers for these paths
  std::set<std::string> break_parts;           // paths for which WritePart() fails
  std::map<std::string, std::string> growing;  // files that were started and are not finished
  bool has_removed_folders = false;

  NameRules Rules() const override { return rules_; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    const std::lock_guard lock(mutex_);
    const WriteResult result = Begin(path);
    if (result.outcome != WriteOutcome::kDone) return result;
    files[std::string(path)].assign(content.begin(), content.end());
    return {};
  }

  WriteResult Start(std::string_view path) override {
    const std::lock_guard lock(mutex_);
    const WriteResult result = Begin(path);
    if (result.outcome == WriteOutcome::kDone) growing[std::string(path)].clear();
    return result;
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    const std::lock_guard lock(mutex_);
    const std::string name(path);
    if (break_parts.contains(name)) {
      return {WriteOutcome::kFailed, std::make_error_code(std::errc::io_error)};
    }
    std::string& file = growing.at(name);
    const auto at = static_cast<std::size_t>(offset);
    file.resize(std::max(file.size(), at + content.size()));
    std::copy(content.begin(), content.end(), file.begin() + static_cast<std::ptrdiff_t>(at));
    return {};
  }

  WriteResult Finish(std::string_view path) override {
    const std::lock_guard lock(mutex_);
    const std::string name(path);
    files[name] = growing.at(name);
    growing.erase(name);
    return {};
  }

  void GiveUp(std::string_view path) override {
    const std::lock_guard lock(mutex_);
    growing.erase(std::string(path));
  }

  void RemoveEmptyFolders() override { has_removed_folders = true; }

 private:
  WriteResult Begin(std::string_view path) {
    const std::string name(path);
    ++times_created[name];
    const auto found = refuse.find(name);
    if (found == refuse.end()) return {};
    return {found->second, std::make_error_code(std::errc::no_space_on_device)};
  }

  NameRules rules_;
  std::mutex mutex_;
};

}  // namespace scrivo

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

  NameRules Rules() const override { return rules_; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    const std::lock_guard lock(mutex_);
    const std::string name(path);
    ++times_created[name];
    if (const auto found = refuse.find(name); found != refuse.end()) {
      return {found->second, std::make_error_code(std::errc::no_space_on_device)};
    }
    files[name].assign(content.begin(), content.end());
    return {};
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    const std::lock_guard lock(mutex_);
    const std::string name(path);
    if (break_parts.contains(name)) {
      return {WriteOutcome::kFailed, std::make_error_code(std::errc::io_error)};
    }
    std::string& file = files.at(name);
    const auto at = static_cast<std::size_t>(offset);
    file.resize(std::max(file.size(), at + content.size()));
    std::copy(content.begin(), content.end(), file.begin() + static_cast<std::ptrdiff_t>(at));
    return {};
  }

  void Remove(std::string_view path) override {
    const std::lock_guard lock(mutex_);
    files.erase(std::string(path));
  }

 private:
  NameRules rules_;
  std::mutex mutex_;
};

}  // namespace scrivo

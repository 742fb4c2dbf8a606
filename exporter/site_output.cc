#include "exporter/site_output.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "bytes/folder_items.h"

namespace scrivo {
namespace {

constexpr std::string_view kListHead =
    "Files of a site made by Scrivo; a new export replaces these only.\n";

std::string Shown(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path Below(const std::filesystem::path& folder, std::string_view path) {
  return folder / std::filesystem::path(std::u8string(path.begin(), path.end()));
}

}  // namespace

SiteOutput::SiteOutput(const std::filesystem::path& path, bool force) : path_(path) {
  std::error_code error;
  is_new_ = !std::filesystem::exists(path, error) ||
            (std::filesystem::is_directory(path, error) && ItemsOfFolder(path, &error).empty());
  if (!is_new_ && std::filesystem::exists(path, error) &&
      !std::filesystem::is_directory(path, error)) {
    throw std::runtime_error(Shown(path) + ": the site needs a folder, but this is a file");
  }
  if (!is_new_ && !force) {
    throw std::runtime_error(Shown(path) +
                             ": the folder is not empty; --force replaces the files of an earlier "
                             "export in it, and no others");
  }
  folder_ = OpenOutputFolder(path, &error);
  if (folder_ == nullptr) {
    throw std::runtime_error(Shown(path) + ": the folder cannot be made: " + error.message());
  }
  if (!is_new_) ReadList();
}

SiteOutput::~SiteOutput() {
  if (finished_) return;
  try {
    WriteList();
  } catch (const std::exception&) {
    // What stopped the export is told already.
  }
}

// Of the list only such paths count as this program would write: it may have been made by others.
void SiteOutput::ReadList() {
  std::ifstream stream(path_ / kSiteListName, std::ios::binary);
  std::string line;
  if (!std::getline(stream, line) || line + "\n" != kListHead) return;
  earlier_.insert(kSiteListName);
  while (std::getline(stream, line)) {
    if (MakeSafePath(line, folder_->Rules()).path == line) earlier_.insert(line);
  }
}

void SiteOutput::Create(std::string_view path, std::string_view bytes) {
  const std::string name(path);
  std::error_code error;
  if (!is_new_ && !made_.contains(name) && !earlier_.contains(name) &&
      std::filesystem::exists(std::filesystem::symlink_status(Below(path_, path), error))) {
    throw std::runtime_error(Shown(Below(path_, path)) +
                             ": the file does not come from an earlier export and is not replaced");
  }
  const WriteResult result =
      folder_->Create(path, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  if (result.outcome != WriteOutcome::kDone) {
    const std::string reason =
        result.error ? result.error.message() : "a link, a folder or a file is in the way";
    throw std::runtime_error(Shown(Below(path_, path)) + ": cannot be written: " + reason);
  }
  earlier_.erase(name);
  made_.insert(name);
  bytes_ += bytes.size();
}

// Removes a file of an earlier site, unless a link leads to it: then it may lie elsewhere.
void SiteOutput::RemoveEarlier(const std::string& name) {
  std::error_code error;
  for (std::size_t end = name.find('/'); end != std::string::npos; end = name.find('/', end + 1)) {
    const std::filesystem::path folder = Below(path_, std::string_view(name).substr(0, end));
    if (!std::filesystem::is_directory(std::filesystem::symlink_status(folder, error))) return;
  }
  std::filesystem::remove(Below(path_, name), error);
}

void SiteOutput::WriteList() {
  std::vector<std::string> names(made_.begin(), made_.end());
  names.insert(names.end(), earlier_.begin(), earlier_.end());
  std::sort(names.begin(), names.end());
  std::string list(kListHead);
  for (const std::string& name : names) {
    if (name != kSiteListName) list += name + "\n";
  }
  Create(kSiteListName, list);
}

void SiteOutput::Finish() {
  for (auto name = earlier_.begin(); name != earlier_.end();) {
    if (*name == kSiteListName) {
      ++name;
      continue;
    }
    RemoveEarlier(*name);
    name = earlier_.erase(name);
  }
  WriteList();
  finished_ = true;
}

}  // namespace scrivo

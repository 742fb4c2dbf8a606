#include "project/source_files.h"

#include <new>
#include <span>
#include <type_traits>

#include "bytes/folder_items.h"
#include "text/wtf8.h"

namespace scrivo {

namespace {

// Whether the system's paths are bytes; else they are UTF-16.
constexpr bool kPathsAreBytes = std::is_same_v<std::filesystem::path::value_type, char>;

}  // namespace

std::filesystem::path SystemPath(std::string_view path) {
  if constexpr (kPathsAreBytes) return std::filesystem::path(path);
  const std::u16string wide = ToWindowsText(path);
  return std::filesystem::path(std::wstring(wide.begin(), wide.end()));
}

std::string PortablePath(const std::filesystem::path& path) {
  if constexpr (kPathsAreBytes) return path.generic_string();
  const std::wstring wide = path.generic_wstring();
  return FromWindowsText(std::u16string(wide.begin(), wide.end()));
}

std::vector<SourceEntry> DiskFiles::List(const std::string& folder) const {
  std::vector<SourceEntry> entries;
  std::error_code error;
  for (const FolderItem& item : ItemsOfFolder(SystemPath(folder), &error)) {
    entries.push_back({PortablePath(item.name), item.is_folder, false});
  }
  // Files that no memory can be had for are not missing.
  if (error == std::errc::not_enough_memory) throw std::bad_alloc();
  return entries;
}

std::unique_ptr<ByteSource> DiskFiles::Open(const std::string& path, std::error_code* error) const {
  return OpenFileSource(SystemPath(path), error);
}

bool ReadText(const ByteSource& source, std::string* text) {
  text->resize(static_cast<std::size_t>(source.Size()));
  return source.ReadAt(0, std::span(reinterpret_cast<std::uint8_t*>(text->data()), text->size()));
}

}  // namespace scrivo

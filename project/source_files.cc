#include "project/source_files.h"

#include <span>
#include <type_traits>

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
  std::filesystem::directory_iterator at(SystemPath(folder), error), end;
  while (!error && at != end) {
    std::error_code kind_error;
    entries.push_back({PortablePath(at->path().filename()), at->is_directory(kind_error)});
    at.increment(error);
  }
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

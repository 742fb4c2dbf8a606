#include "bytes/folder_items.h"

#include <string_view>

#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

// Closes a search with its end.
class Search {
 public:
  Search(const std::filesystem::path& pattern, WIN32_FIND_DATAW* found)
      : handle_(FindFirstFileW(pattern.c_str(), found)) {}
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;
  ~Search() {
    if (IsOpen()) FindClose(handle_);
  }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool Next(WIN32_FIND_DATAW* found) { return FindNextFileW(handle_, found) != 0; }

 private:
  HANDLE handle_;
};

}  // namespace

std::vector<FolderItem> ItemsOfFolder(const std::filesystem::path& folder, std::error_code* error) {
  std::vector<FolderItem> items;
  error->clear();
  WIN32_FIND_DATAW found;
  Search search((folder.empty() ? std::filesystem::path(L".") : folder) / L"*", &found);
  if (!search.IsOpen()) {
    *error = LastError();
    return items;
  }
  do {
    const std::wstring_view name = found.cFileName;
    const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (name != L"." && name != L"..") items.push_back({name, is_folder});
  } while (search.Next(&found));
  if (GetLastError() != ERROR_NO_MORE_FILES) {
    *error = LastError();
  }
  return items;
}

}  // namespace scrivo

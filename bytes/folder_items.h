#pragma once

// What lies in a folder, told without the standard library's iterators: those end the program when
// memory runs out while they go on.

#include <filesystem>
#include <system_error>
#include <vector>

namespace scrivo {

struct FolderItem {
  std::filesystem::path name;  // its own, without the folder
  bool is_folder = false;      // or a link to one
};

// The items of a folder, in any order and without "." and "..". What was found until something
// failed, with the reason in `*error`.
std::vector<FolderItem> ItemsOfFolder(const std::filesystem::path& folder, std::error_code* error);

// Removes a folder and all that is in it, as far as that is possible; links themselves and not what
// they lead to. Never throws.
void RemoveFolder(const std::filesystem::path& folder);

}  // namespace scrivo

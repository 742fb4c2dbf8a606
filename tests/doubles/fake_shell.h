#pragma once

#include <string>
#include <vector>

#include "system/shell_services.h"

namespace scrivo {

// A shell that remembers what it was asked and answers with one result.
class FakeShell : public ShellServices {
 public:
  static constexpr WindowHandle kDesktopWindow = 0x10010;
  static constexpr std::uintptr_t kItemList = 0x5000;

  std::int32_t result = 33;
  std::vector<ShellRequest> requests;
  std::vector<ExtendedShellRequest> extended_requests;
  std::int32_t location_result = 0;
  std::vector<std::int32_t> asked_folders;
  std::vector<WindowHandle> folder_owners;  // for whom each was asked
  std::vector<std::uintptr_t> freed;

  WindowHandle DesktopWindow() override { return kDesktopWindow; }
  std::int32_t Execute(const ShellRequest& request) override {
    requests.push_back(request);
    return result;
  }
  std::int32_t ExecuteExtended(const ExtendedShellRequest& request) override {
    extended_requests.push_back(request);
    return result;
  }
  std::int32_t SpecialFolderLocation(WindowHandle owner, std::int32_t folder_id,
                                     std::uintptr_t* item_list) override {
    folder_owners.push_back(owner);
    asked_folders.push_back(folder_id);
    *item_list = location_result == 0 ? kItemList : 0;
    return location_result;
  }
  void FreeItemList(std::uintptr_t item_list) override { freed.push_back(item_list); }
};

}  // namespace scrivo

#pragma once

#include "system/shell_services.h"

namespace scrivo {

// The shell of Windows.
class Win32Shell : public ShellServices {
 public:
  WindowHandle DesktopWindow() override;
  std::int32_t Execute(const ShellRequest& request) override;
  std::int32_t ExecuteExtended(const ExtendedShellRequest& request) override;
  std::int32_t SpecialFolderLocation(WindowHandle owner, std::int32_t folder_id,
                                     std::uintptr_t* item_list) override;
  void FreeItemList(std::uintptr_t item_list) override;
};

}  // namespace scrivo

#pragma once

#include <cstdint>
#include <string>

#include "system/shell_services.h"

namespace scrivo {

// The desktop's own ways of opening things. The verbs "open" and "explore" hand an address, file
// or folder to the user's program for it; "open" starts a program (a file that may be run and is
// one by its first bytes) with its parameters, cut as SplitCommandLine tells. Results are
// Windows': 2 or 3 for what is missing, 31 for what nothing can open, such as any other verb.
// The documents folder is the only special folder; its item list is a path for
// PosixDesktop::PathFromItemList.
class PosixShell : public ShellServices {
 public:
  WindowHandle DesktopWindow() override { return 0; }
  std::int32_t Execute(const ShellRequest& request) override;
  std::int32_t ExecuteExtended(const ExtendedShellRequest& request) override;
  std::int32_t SpecialFolderLocation(WindowHandle owner, std::int32_t folder_id,
                                     std::uintptr_t* item_list) override;
  void FreeItemList(std::uintptr_t item_list) override;
};

}  // namespace scrivo

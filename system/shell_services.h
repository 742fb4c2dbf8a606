#pragma once

#include <cstdint>
#include <string>

#include "system/desktop.h"

namespace scrivo {

// One request to the shell to open, explore or print something (ShellExecuteA).
struct ShellRequest {
  WindowHandle owner = 0;
  std::string verb;
  std::string file;
  std::string parameters;
  std::string folder;
  std::int32_t show_command = 1;
  // Any name, whatever the system's code page, in place of the ANSI call.
  bool wide = false;
};

// The extended request (SHELLEXECUTEINFO).
struct ExtendedShellRequest {
  std::uint32_t structure_size = 0;
  std::uint32_t mask = 0;
  ShellRequest request;
};

// The system's shell. Results are its own codes: above 32 is success.
class ShellServices {
 public:
  virtual ~ShellServices() = default;

  virtual WindowHandle DesktopWindow() = 0;
  virtual std::int32_t Execute(const ShellRequest& request) = 0;
  // Returns the instance value of the record after the call.
  virtual std::int32_t ExecuteExtended(const ExtendedShellRequest& request) = 0;

  // The item list of a special folder (5: the user's documents): 0 on success, else the system's
  // code.
  virtual std::int32_t SpecialFolderLocation(WindowHandle owner, std::int32_t folder_id,
                                             std::uintptr_t* item_list) = 0;
  virtual void FreeItemList(std::uintptr_t item_list) = 0;
};

}  // namespace scrivo

#include "platform/win32/services.h"
#include "platform/win32/shell_api.h"
#include "platform/win32/wide.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

static_assert(sizeof(void*) == 8 || sizeof(SHELLEXECUTEINFOA) == 60);

// The shell's results are small numbers in the shape of a module handle.
std::int32_t CodeOf(HINSTANCE instance) {
  return static_cast<std::int32_t>(reinterpret_cast<INT_PTR>(instance));
}

}  // namespace

WindowHandle Win32Shell::DesktopWindow() {
  return reinterpret_cast<WindowHandle>(GetDesktopWindow());
}

std::int32_t Win32Shell::Execute(const ShellRequest& request) {
  if (request.wide) {
    return CodeOf(ShellExecuteW(WindowOf(request.owner), Wide(request.verb).c_str(),
                                Wide(request.file).c_str(), Wide(request.parameters).c_str(),
                                Wide(request.folder).c_str(), request.show_command));
  }
  return CodeOf(ShellExecuteA(WindowOf(request.owner), ToAnsi(request.verb).c_str(),
                              ToAnsi(request.file).c_str(), ToAnsi(request.parameters).c_str(),
                              ToAnsi(request.folder).c_str(), request.show_command));
}

std::int32_t Win32Shell::ExecuteExtended(const ExtendedShellRequest& request) {
  const std::string verb = ToAnsi(request.request.verb), file = ToAnsi(request.request.file);
  const std::string parameters = ToAnsi(request.request.parameters);
  const std::string folder = ToAnsi(request.request.folder);
  SHELLEXECUTEINFOA record{};
  record.cbSize = sizeof record;
  record.fMask = request.mask;
  record.hwnd = WindowOf(request.request.owner);
  record.lpVerb = verb.c_str();
  record.lpFile = file.c_str();
  record.lpParameters = parameters.c_str();
  record.lpDirectory = folder.c_str();
  record.nShow = request.request.show_command;
  ShellExecuteExA(&record);
  if (record.hProcess) CloseHandle(record.hProcess);
  return CodeOf(record.hInstApp);
}

std::int32_t Win32Shell::SpecialFolderLocation(WindowHandle owner, std::int32_t folder_id,
                                               std::uintptr_t* item_list) {
  LPITEMIDLIST location = nullptr;
  const HRESULT result = SHGetSpecialFolderLocation(WindowOf(owner), folder_id, &location);
  *item_list = reinterpret_cast<std::uintptr_t>(location);
  return result;
}

void Win32Shell::FreeItemList(std::uintptr_t item_list) {
  CoTaskMemFree(reinterpret_cast<void*>(item_list));
}

}  // namespace scrivo

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "system/desktop.h"
#include "system/files.h"
#include "system/processes.h"
#include "system/registry_store.h"
#include "system/shell_services.h"
#include "system/system_services.h"

namespace scrivo {

// The user's desktop: message boxes, the common dialogs, the folder browser and the help viewer.
class Win32Desktop : public Desktop {
 public:
  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override;
  void Beep() override;
  void ProcessMessages() override;
  WindowHandle FindTopLevelWindow(const std::string& class_name,
                                  const std::string& caption) override;
  void SendToWindow(WindowHandle window, std::uint32_t message) override;
  std::int32_t OpenFileDialog(FileDialogRecord* record) override;
  std::int32_t SaveFileDialog(FileDialogRecord* record) override;
  std::uint32_t ExtendedDialogError() override;
  std::uintptr_t BrowseForFolder(const BrowseRecord& record) override;
  bool PathFromItemList(std::uintptr_t item_list, char* buffer) override;
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override;
};

// Child processes and anonymous pipes of Windows.
class Win32Processes : public Processes {
 public:
  bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) override;
  bool Start(const StartRequest& request, StartedProcess* started) override;
  bool Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) override;
  bool ReadWouldWait(SystemHandle pipe) override;
  std::uint32_t ExitCode(SystemHandle process) override;
  void WaitForEnd(SystemHandle process) override;
  void End(SystemHandle process) override;
  void Close(SystemHandle handle) override;
  std::uint32_t LastError() override { return last_error_; }

 private:
  // Keeps the system's code of a failed call, which later calls of others overwrite.
  bool Done(bool success);

  std::uint32_t last_error_ = 0;
};

// Files through the wide functions of Windows: any name, whatever the code page.
class Win32Files : public Files {
 public:
  bool FileExists(const std::string& path) override;
  bool FolderExists(const std::string& path) override;
  std::uint64_t Size(const std::string& path) override;
  std::unique_ptr<FileReader> OpenForReading(const std::string& path) override;
  void Write(const std::string& path, const std::string& bytes) override;
  void WriteWhole(const std::string& path, const std::string& bytes) override;
  void Append(const std::string& path, const std::string& bytes) override;
  void Remove(const std::string& path, bool forced) override;
  void MakeFolder(const std::string& path) override;
  std::vector<FolderEntry> List(const std::string& folder) override;
  std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) override;
  std::string ShortForm(const std::string& path) override;
  std::string RealPath(const std::string& path) override;
};

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

// What Windows says about itself, and the module that contains this code: the library, when it is
// linked into one, whatever program loaded it.
class Win32System : public SystemServices {
 public:
  std::string DateText() override;
  std::string TimeText() override;
  bool PlatformId(std::uint32_t record_size, std::uint32_t* platform_id) override;
  void WriteErrorEvent(const std::string& source, const std::string& text) override;
  std::string ModuleName() override;
  std::string ModuleFolder() override;
  void HoldMutex(const std::string& name) override;
  int AnsiCodePage() override;
  void SetAnsiCodePage(int code_page) override { code_page_ = code_page; }
  std::string ToAnsi(std::string_view text) override;
  std::string FromAnsi(std::string_view ansi) override;

 private:
  int code_page_ = 0;  // chosen; 0: the system's own
};

// The machine's registry through the ANSI functions.
class Win32Registry : public RegistryStore {
 public:
  RegistryStatus OpenKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                         RegistryHandle* key) override;
  RegistryStatus CreateKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                           RegistryHandle* key) override;
  RegistryStatus DeleteKey(RegistryHandle parent, const std::string& path) override;
  RegistryStatus DeleteValue(RegistryHandle key, const std::string& name) override;
  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override;
  RegistryStatus SetValue(RegistryHandle key, const std::string& name, std::uint32_t type,
                          const std::uint8_t* data, std::uint32_t size) override;
  RegistryStatus EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                         std::uint32_t length) override;
  RegistryStatus EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                           std::uint32_t* length) override;
  RegistryStatus LongestValueName(RegistryHandle key, std::uint32_t* length) override;
  RegistryStatus CloseKey(RegistryHandle key) override;
  std::uint32_t ExpandEnvironment(const std::string& source, char* buffer,
                                  std::uint32_t size) override;
};

}  // namespace scrivo

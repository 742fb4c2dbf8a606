#pragma once

#include <string>

#include "system/error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {

// Counts the calls of the system that can fail, and makes one of them fail: by its result where
// that can tell a failure, by an Error otherwise.
struct Fault {
  int at = -1;          // which call fails, from 0; none when negative
  int calls = 0;        // how many were made
  bool throws = false;  // it fails by an Error in any case
  std::string name;     // the call that was made to fail

  bool is_paused = false;

  // The calls that a double makes of itself count for nothing.
  struct Pause {
    explicit Pause(Fault* fault) : fault(*fault) { fault->is_paused = true; }
    ~Pause() { fault.is_paused = false; }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    Fault& fault;
  };

  // True when this call is to fail by its result.
  bool Hits(const char* call) {
    if (is_paused || calls++ != at) return false;
    name = call;
    if (throws) throw Made();
    return true;
  }
  void Throw(const char* call) {
    if (Hits(call)) throw Made();
  }
  static Error Made() { return Error(kDeviceIoError, "Windows", "Made to fail"); }
};

class FaultyFiles : public MemoryFiles {
 public:
  explicit FaultyFiles(Fault* fault) : fault_(*fault) {}
  bool FileExists(const std::string& path) override {
    return !fault_.Hits("FileExists") && MemoryFiles::FileExists(path);
  }
  bool FolderExists(const std::string& path) override {
    return !fault_.Hits("FolderExists") && MemoryFiles::FolderExists(path);
  }
  void Write(const std::string& path, const std::string& bytes) override {
    fault_.Throw("Write");
    MemoryFiles::Write(path, bytes);
  }
  void Append(const std::string& path, const std::string& bytes) override {
    fault_.Throw("Append");
    MemoryFiles::Append(path, bytes);
  }
  void Remove(const std::string& path, bool forced) override {
    fault_.Throw("Remove");
    MemoryFiles::Remove(path, forced);
  }
  std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) override {
    if (fault_.Hits("MakeUniqueFile")) return "";
    const Fault::Pause pause(&fault_);
    return MemoryFiles::MakeUniqueFile(folder, prefix);
  }
  std::string ShortForm(const std::string& path) override {
    if (fault_.Hits("ShortForm")) return "";
    const Fault::Pause pause(&fault_);
    return MemoryFiles::ShortForm(path);
  }

 private:
  Fault& fault_;
};

class FaultyDesktop : public FakeDesktop {
 public:
  explicit FaultyDesktop(Fault* fault) : fault_(*fault) {}
  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override {
    fault_.Throw("ShowMessage");
    return FakeDesktop::ShowMessage(text, style, caption);
  }
  void ProcessMessages() override {
    fault_.Throw("ProcessMessages");
    FakeDesktop::ProcessMessages();
  }
  std::int32_t OpenFileDialog(FileDialogRecord* record) override {
    return fault_.Hits("OpenFileDialog") ? -1 : FakeDesktop::OpenFileDialog(record);
  }
  std::int32_t SaveFileDialog(FileDialogRecord* record) override {
    return fault_.Hits("SaveFileDialog") ? -1 : FakeDesktop::SaveFileDialog(record);
  }
  std::uint32_t ExtendedDialogError() override {
    fault_.Throw("ExtendedDialogError");
    return FakeDesktop::ExtendedDialogError();
  }
  std::uintptr_t BrowseForFolder(const BrowseRecord& record) override {
    fault_.Throw("BrowseForFolder");
    return FakeDesktop::BrowseForFolder(record);
  }
  bool PathFromItemList(std::uintptr_t item_list, char* buffer) override {
    if (!fault_.Hits("PathFromItemList")) {
      return FakeDesktop::PathFromItemList(item_list, buffer);
    }
    buffer[0] = '\0';
    return false;
  }
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override {
    fault_.Throw("HtmlHelp");
    return FakeDesktop::HtmlHelp(owner, file, command, data);
  }

 private:
  Fault& fault_;
};

class FaultyProcesses : public FakeProcesses {
 public:
  explicit FaultyProcesses(Fault* fault) : fault_(*fault) {}
  bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) override {
    return !fault_.Hits("OpenPipe") && FakeProcesses::OpenPipe(read_end, write_end);
  }
  bool Start(const StartRequest& request, StartedProcess* started) override {
    return !fault_.Hits("Start") && FakeProcesses::Start(request, started);
  }
  bool Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) override {
    return !fault_.Hits("Read") && FakeProcesses::Read(pipe, buffer, size, got);
  }
  std::uint32_t ExitCode(SystemHandle process) override {
    fault_.Throw("ExitCode");
    return FakeProcesses::ExitCode(process);
  }
  void WaitForEnd(SystemHandle process) override {
    fault_.Throw("WaitForEnd");
    FakeProcesses::WaitForEnd(process);
  }
  void Close(SystemHandle handle) override {
    fault_.Throw("Close");
    FakeProcesses::Close(handle);
  }

 private:
  Fault& fault_;
};

class FaultyShell : public FakeShell {
 public:
  explicit FaultyShell(Fault* fault) : fault_(*fault) {}
  WindowHandle DesktopWindow() override {
    fault_.Throw("DesktopWindow");
    return FakeShell::DesktopWindow();
  }
  std::int32_t Execute(const ShellRequest& request) override {
    return fault_.Hits("Execute") ? 8 : FakeShell::Execute(request);
  }
  std::int32_t ExecuteExtended(const ExtendedShellRequest& request) override {
    return fault_.Hits("ExecuteExtended") ? 2 : FakeShell::ExecuteExtended(request);
  }
  std::int32_t SpecialFolderLocation(WindowHandle owner, std::int32_t folder_id,
                                     std::uintptr_t* item_list) override {
    if (fault_.Hits("SpecialFolderLocation")) return -1;
    return FakeShell::SpecialFolderLocation(owner, folder_id, item_list);
  }
  void FreeItemList(std::uintptr_t item_list) override {
    fault_.Throw("FreeItemList");
    FakeShell::FreeItemList(item_list);
  }

 private:
  Fault& fault_;
};

class FaultySystem : public FakeSystem {
 public:
  explicit FaultySystem(Fault* fault) : fault_(*fault) {}
  std::string DateText() override {
    fault_.Throw("DateText");
    return FakeSystem::DateText();
  }
  std::string TimeText() override {
    fault_.Throw("TimeText");
    return FakeSystem::TimeText();
  }
  bool PlatformId(std::uint32_t record_size, std::uint32_t* id) override {
    return !fault_.Hits("PlatformId") && FakeSystem::PlatformId(record_size, id);
  }
  void WriteErrorEvent(const std::string& source, const std::string& text) override {
    fault_.Throw("WriteErrorEvent");
    FakeSystem::WriteErrorEvent(source, text);
  }
  std::string ModuleFolder() override {
    fault_.Throw("ModuleFolder");
    return FakeSystem::ModuleFolder();
  }

 private:
  Fault& fault_;
};

class FaultyRegistry : public MemoryRegistry {
 public:
  explicit FaultyRegistry(Fault* fault) : fault_(*fault) {}
  RegistryStatus OpenKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                         RegistryHandle* key) override {
    if (fault_.Hits("OpenKey")) return kRegistryAccessDenied;
    return MemoryRegistry::OpenKey(parent, path, rights, key);
  }
  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override {
    if (fault_.Hits("QueryValue")) return kRegistryAccessDenied;
    return MemoryRegistry::QueryValue(key, name, type, data, size);
  }
  RegistryStatus EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                         std::uint32_t length) override {
    if (fault_.Hits("EnumKey")) return kRegistryAccessDenied;
    return MemoryRegistry::EnumKey(key, index, buffer, length);
  }

 private:
  Fault& fault_;
};

}  // namespace scrivo

#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bytes/posix/descriptor.h"
#include "system/desktop.h"
#include "system/files.h"
#include "system/processes.h"
#include "system/shell_services.h"
#include "system/system_services.h"
#include "text/code_page.h"

namespace scrivo {

// A desktop for programs without windows. Messages become lines on standard error, and questions
// get the answer that loses nothing, which the line tells: No, or Abort. Help files are opened in
// the user's own program for them. What needs windows (finding one, sending to one, the file
// dialogs and the folder browser) throws Error kObjectDoesNotSupportThis.
class PosixDesktop : public Desktop {
 public:
  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override;
  void Beep() override;
  void ProcessMessages() override {}
  WindowHandle FindTopLevelWindow(const std::string& class_name,
                                  const std::string& caption) override;
  void SendToWindow(WindowHandle window, std::uint32_t message) override;
  std::int32_t OpenFileDialog(FileDialogRecord* record) override;
  std::int32_t SaveFileDialog(FileDialogRecord* record) override;
  std::uint32_t ExtendedDialogError() override;
  std::uintptr_t BrowseForFolder(const BrowseRecord& record) override;
  // `item_list` comes from PosixShell::SpecialFolderLocation.
  bool PathFromItemList(std::uintptr_t item_list, char* buffer) override;
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override;
};

// Child processes of a POSIX system. A command line is cut into words as SplitCommandLine tells;
// window and priority flags mean nothing here. Each child heads its own process group, so that
// Ctrl-C in the terminal reaches this program alone: once that was caught, Read fails and ends the
// groups of all children that were not closed. A child that a signal ended has the exit code 128
// and the signal's number. LastError gives the Windows codes that callers know.
class PosixProcesses : public Processes {
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
  struct Child {
    pid_t process = -1;
    bool ended = false;
    std::uint32_t exit_code = kStillActive;
  };

  // What was read from a pipe and not handed out yet.
  struct ReadAhead {
    std::string bytes;
    std::size_t next = 0;
  };

  // Waits for bytes in the pipe and takes them; false at its end, on a failure and when
  // interrupted.
  bool Refill(int descriptor, ReadAhead* ahead);
  bool Fail(std::uint32_t windows_code);
  bool FailWith(int error);
  int DescriptorOf(SystemHandle pipe) const;
  // Notes the child's end when the system has reported it; true once it has ended.
  static bool Reap(Child* child);
  // Waits up to a time in milliseconds for the child's end.
  static bool ReapWithin(Child* child, int milliseconds);
  // Kills the group of a child that has been asked to end and did not.
  static void KillUnlessEnded(Child* child);
  void EndChildren();

  SystemHandle next_handle_ = 1;
  std::map<SystemHandle, Descriptor> pipes_;
  std::map<SystemHandle, ReadAhead> ahead_;
  std::map<SystemHandle, Child> children_;
  std::vector<Child> left_alone_;  // closed while they lived; reaped when they have ended
  std::uint32_t last_error_ = 0;
};

// The files of a POSIX system. A file without any write permission is read-only. Once an
// interruption was caught, nothing is opened for reading, listed or written anew; appending,
// removing and renaming go on.
class PosixFiles : public Files {
 public:
  PosixFiles();

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

 private:
  std::uint32_t next_number_;  // of unique files; begins anywhere, so that programs seldom meet
};

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

// What a POSIX system tells. It has no Windows platform, so PlatformId never answers; error events
// go to the system log. Its ANSI code page is 1252 until another is set. HoldMutex raises Error
// (kObjectDoesNotSupportThis).
class PosixSystem : public SystemServices {
 public:
  std::string DateText() override;
  std::string TimeText() override;
  bool PlatformId(std::uint32_t record_size, std::uint32_t* platform_id) override;
  void WriteErrorEvent(const std::string& source, const std::string& text) override;
  std::string ModuleName() override;
  std::string ModuleFolder() override;
  void HoldMutex(const std::string& name) override;
  int AnsiCodePage() override { return code_page_; }
  void SetAnsiCodePage(int code_page) override { code_page_ = code_page; }
  int PipeCodePage() override { return kUtf8CodePage; }

 private:
  int code_page_ = 1252;
};

// The user's home folder: HOME, else what /etc/passwd tells; "/" when neither does.
std::string HomeFolder();

// Where programs keep what the user chose: XDG_CONFIG_HOME when it is an absolute path, else
// ".config" in the home folder.
std::string ConfigurationFolder();

}  // namespace scrivo

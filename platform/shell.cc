#include "platform/shell.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "system/services.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

// The greatest result that the shell uses for a failure.
constexpr std::int32_t kLastFailureCode = 32;

constexpr std::uint32_t kExtendedRecordSize = 60;  // SHELLEXECUTEINFO of 32-bit programs
// Invoke the verb list of the item's context menu, keep the process handle, show no error.
constexpr std::uint32_t kPropertiesMask = 0x44C;

struct ShellFailure {
  std::int32_t code;
  std::int32_t number;
  const char* text;
  bool reported_for_addresses;  // also by CreateNewMailMessage and OpenUrl
};

constexpr ShellFailure kFailures[] = {
    {2, CShell::kFileNotFound, "File not found", false},
    {3, CShell::kPathNotFound, "Path not found", false},
    {5, CShell::kFileNotFound, "File not found", false},
    {8, CShell::kOutOfMemory, "Out of memory", true},
    {11, CShell::kInvalidExecutable, "Invalid EXE file or error in EXE image", false},
    {26, CShell::kSharingViolation, "A sharing violation occurred", true},
    {27, CShell::kInvalidAssociation, "Incomplete or invalid file association", false},
    {28, CShell::kDdeTimeout, "DDE timeout", true},
    {29, CShell::kDdeTransactionFailed, "DDE transaction failed", true},
    {30, CShell::kDdeBusy, "DDE busy", true},
    {31, CShell::kNoAssociation, "No association for file extension", false},
    {32, CShell::kDllNotFound, "DLL not found", false},
};

[[noreturn]] void Raise(std::int32_t number, const char* text) {
  RaiseComponentError("CShell", number, text);
}

// Runs a member's work. Errors of a member's own are raised outside of it.
template <typename Work>
auto OrShellFailure(Work work) {
  return OrComponentFailure("CShell", CShell::kComponentFailure, work);
}

void RaiseFailure(std::int32_t code) {
  for (const ShellFailure& failure : kFailures) {
    if (failure.code == code) Raise(failure.number, failure.text);
  }
}

void RaiseAddressFailure(std::int32_t code) {
  for (const ShellFailure& failure : kFailures) {
    if (failure.code == code && failure.reported_for_addresses) {
      Raise(failure.number, failure.text);
    }
  }
}

std::int32_t Execute(const std::string& verb, const std::string& file,
                     const std::string& parameters = "", const std::string& folder = "") {
  return OrShellFailure([&] {
    ShellServices& shell = *TheServices().shell;
    ShellRequest request;
    request.owner = shell.DesktopWindow();
    request.verb = verb;
    request.file = file;
    request.parameters = parameters;
    request.folder = folder;
    return shell.Execute(request);
  });
}

void RequireFile(const std::string& path) {
  if (!OrShellFailure([&] { return TheServices().files->FileExists(path); })) {
    Raise(CShell::kFileNotFound, "File not found");
  }
}

// The folder part of a path, "" when it has none. A drive's or the system's root keeps its
// separator, without which it would name another folder.
std::string StartFolder(const std::string& path) {
  const std::size_t separator = path.rfind(Separator(Globals().path_style));
  if (separator == std::string::npos) return "";
  const bool is_root = separator == 0 || path[separator - 1] == ':';
  return path.substr(0, is_root ? separator + 1 : separator);
}

void RunToItsEnd(const std::string& program, const std::string& parameters) {
  Processes& processes = *TheServices().processes;
  StartRequest request;
  request.command_line = program + " " + parameters;
  request.creation_flags = kNormalPriorityClass;
  StartedProcess child;
  if (!OrShellFailure([&] { return processes.Start(request, &child); })) {
    Raise(CShell::kCannotCreateProcess, "Cannot create process");
  }
  OrShellFailure([&] {
    processes.Close(child.thread);
    processes.WaitForEnd(child.process);
    processes.Close(child.process);
  });
}

// A key below HKEY_LOCAL_MACHINE open for reading, or none.
class MachineKey {
 public:
  explicit MachineKey(const std::string& path) {
    is_open_ = store_.OpenKey(kHkeyLocalMachine, ToAnsi(path),
                              kRightQueryValue | kRightEnumerateSubKeys, &key_) == kRegistrySuccess;
  }
  ~MachineKey() {
    if (is_open_) store_.CloseKey(key_);
  }
  MachineKey(const MachineKey&) = delete;
  MachineKey& operator=(const MachineKey&) = delete;

  // The default value as C reads it: it ends at a NUL. "" for a key without one.
  std::string DefaultValue() {
    std::uint32_t type = kRegNone;
    std::uint32_t size = 0;
    if (!is_open_ || store_.QueryValue(key_, "", &type, nullptr, &size) != kRegistrySuccess) {
      return "";
    }
    std::string text(size, '\0');
    if (store_.QueryValue(key_, "", &type, reinterpret_cast<std::uint8_t*>(text.data()), &size) !=
        kRegistrySuccess) {
      return "";
    }
    return FromAnsi(text.substr(0, text.find('\0')));
  }

  // The name of a sub-key, "" when there are no more.
  std::string SubKey(std::uint32_t index) {
    char name[2048] = "";
    if (!is_open_ || store_.EnumKey(key_, index, name, sizeof name) != kRegistrySuccess) return "";
    return FromAnsi(name);
  }

 private:
  RegistryStore& store_ = *TheServices().registry;
  RegistryHandle key_ = 0;
  bool is_open_ = false;
};

// True for "open" in any case, also with the mark of its accelerator key: "&Open".
bool IsOpenVerb(const std::string& name) {
  std::string plain;
  std::copy_if(name.begin(), name.end(), std::back_inserter(plain),
               [](char c) { return c != '&'; });
  std::transform(plain.begin(), plain.end(), plain.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return plain == "open";
}

std::string VerbOf(const std::string& path) {
  const std::string classes = "SOFTWARE\\Classes\\";
  const std::size_t point = path.rfind('.');
  if (point == std::string::npos) return "open";
  const std::string type = MachineKey(classes + path.substr(point)).DefaultValue();
  if (type.empty()) return "open";

  MachineKey verbs(classes + type + "\\Shell");
  const std::string own = verbs.DefaultValue();
  if (!own.empty()) return own;
  std::string first;
  for (std::uint32_t index = 0;; ++index) {
    const std::string name = verbs.SubKey(index);
    if (name.empty()) return first.empty() ? "open" : first;
    if (IsOpenVerb(name)) return name;
    if (first.empty()) first = name;
  }
}

}  // namespace

void CShell::CreateNewMailMessage(const std::string& To, const std::string& CC,
                                  const std::string& Subject, const std::string& Body) {
  std::string address = "mailto:" + To;
  if (!Subject.empty()) address += "?subject=" + Subject;
  if (!CC.empty()) address += "&cc=" + CC;
  if (!Body.empty()) address += "&body=" + Body;
  RaiseAddressFailure(Execute("open", address));
}

void CShell::ExploreFolder(const std::string& Path) { RaiseFailure(Execute("explore", Path)); }

void CShell::LaunchProgram(const std::string& Program, const std::string& Parameters, bool Wait) {
  RequireFile(Program);
  if (Wait) {
    RunToItsEnd(Program, Parameters);
  } else {
    RaiseFailure(Execute("open", Program, Parameters, StartFolder(Program)));
  }
}

void CShell::OpenDocument(const std::string& Path) {
  RequireFile(Path);
  const std::string verb = OrShellFailure([&] { return VerbOf(Path); });
  RaiseFailure(Execute(verb, Path, "", StartFolder(Path)));
}

void CShell::OpenFolder(const std::string& Path) { RaiseFailure(Execute("open", Path)); }

void CShell::OpenUrl(const std::string& Url) { RaiseAddressFailure(Execute("open", Url)); }

void CShell::ShowProperties(const std::string& Path, WindowHandle Owner) {
  const auto exists = [&] {
    Files& files = *TheServices().files;
    return files.FileExists(Path) || files.FolderExists(Path);
  };
  if (!OrShellFailure(exists)) Raise(kFileNotFound, "File not found");
  const std::int32_t instance = OrShellFailure([&] {
    ShellServices& shell = *TheServices().shell;
    ExtendedShellRequest request;
    request.structure_size = kExtendedRecordSize;
    request.mask = kPropertiesMask;
    request.request.owner = Owner != 0 ? Owner : shell.DesktopWindow();
    request.request.verb = "properties";
    request.request.file = Path;
    return shell.ExecuteExtended(request);
  });
  if (instance <= kLastFailureCode) Raise(kCannotShowProperties, "Cannot show properties");
}

void ShowHelp() {
  WindowHandle owner = 0;
  IgnoringErrors([&] {
    if (Globals().help_owner) owner = Globals().help_owner();
  });
  IgnoringErrors([&] {
    TheServices().desktop->HtmlHelp(owner,
                                    JoinPath(TheServices().system->ModuleFolder(), "Scrivo.CHM"),
                                    kHelpDisplayTopic, "index.html");
  });
}

std::string GetSpecialFolder(WindowHandle window, std::int32_t folder_id) {
  std::string path;
  IgnoringErrors([&] {
    std::uintptr_t item_list = 0;
    if (TheServices().shell->SpecialFolderLocation(window, folder_id, &item_list) != 0) return;
    IgnoringErrors([&] {
      std::string buffer(260, '\0');
      if (TheServices().desktop->PathFromItemList(item_list, buffer.data())) {
        path = FromAnsi(buffer.substr(0, buffer.find('\0')));
      }
    });
    TheServices().shell->FreeItemList(item_list);
  });
  return path;
}

}  // namespace scrivo

#pragma once

#include <cstdint>
#include <string>

#include "system/desktop.h"

namespace scrivo {

// The system's shell: opening addresses, documents, folders and programs, and writing mail. It
// keeps no state and reaches the system through TheServices(). Every request is owned by the
// desktop window and asks for a normal window.
//
// Members raise Error with source "<module>.CShell". Which of the shell's failures a member
// reports differs on purpose: CreateNewMailMessage and OpenUrl report only kOutOfMemory,
// kSharingViolation, kDdeTimeout, kDdeTransactionFailed and kDdeBusy. A shell that answers 0, out
// of memory or resources, is never reported. Anything unexpected is kComponentFailure.
class CShell {
 public:
  static constexpr std::int32_t kFileNotFound = -2147203463;          // base + 18041
  static constexpr std::int32_t kPathNotFound = -2147203462;          // base + 18042
  static constexpr std::int32_t kOutOfMemory = -2147203460;           // base + 18044
  static constexpr std::int32_t kDllNotFound = -2147203459;           // base + 18045
  static constexpr std::int32_t kSharingViolation = -2147203458;      // base + 18046
  static constexpr std::int32_t kInvalidAssociation = -2147203457;    // base + 18047
  static constexpr std::int32_t kDdeTimeout = -2147203456;            // base + 18048
  static constexpr std::int32_t kDdeTransactionFailed = -2147203455;  // base + 18049
  static constexpr std::int32_t kDdeBusy = -2147203454;               // base + 18050
  static constexpr std::int32_t kNoAssociation = -2147203453;         // base + 18051
  static constexpr std::int32_t kInvalidExecutable = -2147203452;     // base + 18052
  static constexpr std::int32_t kCannotCreateProcess = -2147203451;   // base + 18053
  static constexpr std::int32_t kCannotShowProperties = -2147203450;  // base + 18054
  static constexpr std::int32_t kComponentFailure = -2147203449;      // base + 18055

  // Opens a new message in the mail program. Nothing is encoded here, and without a subject the
  // other parts follow the address without a "?", both on purpose.
  void CreateNewMailMessage(const std::string& To, const std::string& CC,
                            const std::string& Subject, const std::string& Body);
  // Opens a folder with the tree of folders beside it.
  void ExploreFolder(const std::string& Path);
  // Starts a program. `Program` must name an existing file. With `Wait` the call returns when the
  // program has ended; no messages are processed meanwhile.
  void LaunchProgram(const std::string& Program, const std::string& Parameters = "",
                     bool Wait = false);
  // Opens a document with the verb that its type is registered with: the one that the type names
  // as its own, else "open", else the first one listed. `Path` must name an existing file.
  void OpenDocument(const std::string& Path);
  void OpenFolder(const std::string& Path);
  void OpenUrl(const std::string& Url);
  // Shows the properties sheet of an existing file or folder. `Owner` 0 is the desktop window.
  void ShowProperties(const std::string& Path, WindowHandle Owner);
};

// Opens the first page of the add-in's own help file, "Scrivo.CHM" beside the running library. Its
// owner is the window that Globals().help_owner tells. What the viewer answers is not looked at;
// never raises.
void ShowHelp();

constexpr std::int32_t kDocumentsFolder = 5;  // CSIDL_PERSONAL

// The path of one of the shell's special folders, without a separator at its end; "" when there is
// none. `window` is the owner of what the shell may ask. Never raises.
std::string GetSpecialFolder(WindowHandle window, std::int32_t folder_id);

}  // namespace scrivo

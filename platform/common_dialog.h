#pragma once

#include <cstdint>
#include <string>

#include "system/desktop.h"

namespace scrivo {

// Dialog flags that mCommonDialog sets and reads (the common dialogs' own values).
enum FileDialogFlag : std::uint32_t {
  kFileDialogReadOnly = 0x1,
  kFileDialogOverwritePrompt = 0x2,
  kFileDialogHideReadOnly = 0x4,
  kFileDialogEnableHook = 0x20,
  kFileDialogEnableTemplate = 0x40,
  kFileDialogAllowMultiSelect = 0x200,
  kFileDialogPathMustExist = 0x800,
  kFileDialogFileMustExist = 0x1000,
  kFileDialogExplorer = 0x80000,
};

// A file dialog without an owner window.
constexpr WindowHandle kNoOwner = static_cast<WindowHandle>(-1);

// What VBGetOpenFileName is given and gives back. Name the members that matter:
//
//   FileDialogParameters dialog{.FileName = "*.EXE", .Filter = "Applications (*.EXE)|*.EXE"};
//   if (VBGetOpenFileName(&dialog)) Use(dialog.FileName);
struct FileDialogParameters {
  std::string FileName{};   // in: shown at first; out: the chosen path
  std::string FileTitle{};  // in: at first; out: the chosen file's name without its folder
  bool FileMustExist = true;
  // Allows several files: FileName is then the folder and the names, separated by NUL, or the full
  // path when one file was chosen; FileTitle is empty.
  bool MultiSelect = false;
  bool ReadOnly = false;  // in: ticked at first; out: set when the user ticked it, else kept
  bool HideReadOnly = false;
  // In: descriptions and patterns by turns, separated by "|" (and by ":", on purpose: a colon in a
  // description splits it too); out: the chosen description and pattern, separated by NUL.
  std::string Filter = "All (*.*)|*.*";
  std::int32_t FilterIndex = 1;  // counts from 1
  std::string InitDir{};
  std::string DlgTitle{};
  std::string DefaultExt{};
  WindowHandle Owner = kNoOwner;
  std::uint32_t Flags = 0;  // in: added FileDialogFlag values; out: the dialog's
  bool Save = false;        // the save dialog instead of the open dialog
};

// The module mCommonDialog: the system's file dialogs and folder browser behind plain text. Each
// function is a procedure of the error-handling frame; a failing dialog is not an error.

// Shows the open or the save dialog. True when the user confirmed. Otherwise FileName, FileTitle
// and Filter become empty, Flags 0 and FilterIndex -1. FileName and FileTitle may have up to
// 260 bytes (8192 with MultiSelect) in the ANSI code page; longer ones are an invalid procedure
// call.
bool VBGetOpenFileName(FileDialogParameters* dialog);

// What the last file dialog returned: 1 confirmed, 0 cancelled, anything else failed. Meaningful
// right after VBGetOpenFileName only.
std::int32_t LastDialogResult();
// Why the last file dialog failed (the common dialogs' extended error), 0 when it did not.
std::uint32_t LastExtendedDialogError();

// The text up to its first NUL.
std::string StrZToStr(const std::string& text);

// The `Index`-th entry (from 1) of a NUL-separated filter list: a description, a NUL and a
// pattern. Empty when there is none.
std::string FilterLookup(const std::string& Filters, std::int32_t Index);

// The folder that the user chose in the system's folder browser, "" on cancel.
std::string BrowseFolder(WindowHandle Owner, const std::string& Title);

}  // namespace scrivo

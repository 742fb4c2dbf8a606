#pragma once

#include <functional>
#include <memory>
#include <string>

#include "system/desktop.h"

namespace scrivo {

// Whose rules a path routine follows. Page locations always use "/", in either style.
enum class PathStyle { kWindows, kPosix };

// The style of the system this program was built for.
PathStyle SystemPathStyle();

// "\" or "/".
constexpr char Separator(PathStyle style) { return style == PathStyle::kWindows ? '\\' : '/'; }

class HostApplication;
class Connect;
class FormViews;

// The process-wide references of the running system. The entry point sets them; the error handler
// is ErrorHandler() and the operating system TheServices().
struct GlobalState {
  // The application that hosts the add-in, null while none is connected.
  std::shared_ptr<scrivo::HostApplication> HostApplication;
  // The running connection object, null while none is connected. Not owned.
  Connect* ConnectInstance = nullptr;
  // The local folder of the open web, where every generated file is made. Set when the compile
  // dialog opens.
  std::string working_folder;
  // Full path of the help compiler once it was found or chosen; kept until the program ends.
  std::string compiler_path;
  // File name of the help compiler in its folder: "hhc.exe", or "hhc" in the POSIX style.
  std::string compiler_file_name;
  // The program that takes a compiled file apart, found through the search path: "hh.exe", or
  // "hh".
  std::string decompiler_file_name;
  // Whose path rules hold; tests set the other system's.
  PathStyle path_style;
  // Makes the windows of the forms.
  std::shared_ptr<FormViews> views;
  // Gives the window that owns the help viewer: the compile dialog's, which is created without
  // being shown when it does not exist yet. Empty: the viewer has no owner.
  std::function<WindowHandle()> help_owner;

  explicit GlobalState(PathStyle style = SystemPathStyle())
      : compiler_file_name(style == PathStyle::kWindows ? "hhc.exe" : "hhc"),
        decompiler_file_name(style == PathStyle::kWindows ? "hh.exe" : "hh"),
        path_style(style) {}
};

inline GlobalState& Globals() {
  static GlobalState state;
  return state;
}

}  // namespace scrivo

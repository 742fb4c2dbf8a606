#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "platform/posix/services.h"
#include "platform/posix/spawn.h"
#include "system/error.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kButtons = 0xF;  // the part of a message box's style that tells its buttons

void WriteLine(const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); }

[[noreturn]] void ThrowMissing(const std::string& what) {
  throw Error(kObjectDoesNotSupportThis, "",
              "This system has no windows, so this is not possible: " + what);
}

}  // namespace

MessageAnswer PosixDesktop::ShowMessage(const std::string& text, std::uint32_t style,
                                        const std::string& caption) {
  std::string line = caption + ": ";
  for (const char character : text) {
    if (character != '\r') line += character;
  }
  switch (style & kButtons) {
    case kYesNo:
      WriteLine(line + " (answered: No)");
      return MessageAnswer::kNo;
    case kAbortRetryIgnore:
      WriteLine(line + " (answered: Abort)");
      return MessageAnswer::kAbort;
    default:
      WriteLine(line);
      return MessageAnswer::kOk;
  }
}

void PosixDesktop::Beep() {
  if (isatty(STDERR_FILENO)) std::fputc('\a', stderr);
}

WindowHandle PosixDesktop::FindTopLevelWindow(const std::string&, const std::string&) {
  ThrowMissing("searching for windows");
}

void PosixDesktop::SendToWindow(WindowHandle, std::uint32_t) {
  ThrowMissing("sending messages to windows");
}

std::int32_t PosixDesktop::OpenFileDialog(FileDialogRecord*) {
  ThrowMissing("the dialog for opening a file");
}

std::int32_t PosixDesktop::SaveFileDialog(FileDialogRecord*) {
  ThrowMissing("the dialog for saving a file");
}

std::uint32_t PosixDesktop::ExtendedDialogError() { ThrowMissing("a file dialog's error code"); }

std::uintptr_t PosixDesktop::BrowseForFolder(const BrowseRecord&) {
  ThrowMissing("the folder browser");
}

bool PosixDesktop::PathFromItemList(std::uintptr_t item_list, char* buffer) {
  constexpr std::size_t kRoom = 260;
  const auto* const path = reinterpret_cast<const std::string*>(item_list);
  if (!path || path->size() >= kRoom) return false;
  std::memcpy(buffer, path->c_str(), path->size() + 1);
  return true;
}

WindowHandle PosixDesktop::HtmlHelp(WindowHandle, const std::string& file, std::uint32_t,
                                    const std::string&) {
  const int error = OpenWithDesktop(file);
  if (error != 0) WriteLine("Cannot open " + file + " (xdg-open: " + std::strerror(error) + ")");
  return 0;
}

}  // namespace scrivo

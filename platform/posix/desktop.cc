#include "platform/posix/desktop.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "platform/posix/opener.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kButtons = 0xF;  // the part of a message box's style that tells its buttons

void WriteLine(const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); }

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

WindowHandle PosixDesktop::FindTopLevelWindow(const std::string&, const std::string&) { return 0; }

void PosixDesktop::SendToWindow(WindowHandle, std::uint32_t) {}

std::int32_t PosixDesktop::OpenFileDialog(FileDialogRecord*) { return -1; }

std::int32_t PosixDesktop::SaveFileDialog(FileDialogRecord*) { return -1; }

std::uint32_t PosixDesktop::ExtendedDialogError() {
  return 0xFFFF;  // CDERR_DIALOGFAILURE: the dialog could not be created
}

std::uintptr_t PosixDesktop::BrowseForFolder(const BrowseRecord&) { return 0; }

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

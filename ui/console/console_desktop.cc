#include "ui/console/console_desktop.h"

#include "system/services.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kButtons = 0xF;
constexpr std::uint32_t kIcons = 0xF0;
// Results of the shell up to this one are failures.
constexpr std::int32_t kLastShellFailure = 32;

// True when one of the lines below the first tells of an error.
bool ListsAnError(const std::string& text) { return text.find("\nError") != std::string::npos; }

bool IsError(const std::string& text, std::uint32_t icon) {
  return icon == 0 || icon == kCritical || ListsAnError(text);
}

MessageAnswer HarmlessAnswer(std::uint32_t buttons) {
  if (buttons == kYesNo) return MessageAnswer::kNo;
  if (buttons == kAbortRetryIgnore) return MessageAnswer::kAbort;
  return MessageAnswer::kOk;
}

}  // namespace

MessageAnswer ConsoleDesktop::ShowMessage(const std::string& text, std::uint32_t style,
                                          const std::string&) {
  const MessageAnswer answer = HarmlessAnswer(style & kButtons);
  std::string told = text;
  if (answer == MessageAnswer::kNo) told += "\nAnswered: No, since nobody can be asked here.";
  if (answer == MessageAnswer::kAbort) told += "\nAnswered: Abort, since nobody can be asked here.";
  if (const auto hint = hints.find(text); hint != hints.end()) told += "\n" + hint->second;
  if (IsError(text, style & kIcons)) {
    console_.Fail(told);
  } else {
    console_.Warn(told);
  }
  return answer;
}

std::int32_t ConsoleDesktop::OpenFileDialog(FileDialogRecord* record) {
  SayThatNothingWasChosen(record->dialog_title);
  return 0;
}

std::int32_t ConsoleDesktop::SaveFileDialog(FileDialogRecord* record) {
  SayThatNothingWasChosen(record->dialog_title);
  return 0;
}

std::uintptr_t ConsoleDesktop::BrowseForFolder(const BrowseRecord& record) {
  SayThatNothingWasChosen(record.title);
  return 0;
}

void ConsoleDesktop::SayThatNothingWasChosen(const std::string& title) {
  console_.Fail(title + ": nothing was chosen, since nobody can be asked here");
}

WindowHandle ConsoleDesktop::HtmlHelp(WindowHandle, const std::string& file, std::uint32_t,
                                      const std::string&) {
  ShellRequest request;
  request.verb = "open";
  request.file = file;
  if (TheServices().shell->Execute(request) <= kLastShellFailure) {
    console_.Warn(file + ": no program could be started to open it");
  }
  return 0;
}

}  // namespace scrivo

#pragma once

#include <map>
#include <string>

#include "system/desktop.h"
#include "ui/console/console.h"

namespace scrivo {

// A desktop where nobody sits: message boxes become lines on the error stream, and a question is
// answered with what loses nothing (No, Abort, Cancel), which the line says. A file to be shown is
// handed to the shell.
class ConsoleDesktop : public Desktop {
 public:
  // The console must outlive the desktop.
  explicit ConsoleDesktop(Console& console) : console_(console) {}

  // Lines added to messages: the message's text → what its reader can do.
  std::map<std::string, std::string> hints;

  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override;
  void Beep() override {}
  void ProcessMessages() override {}
  WindowHandle FindTopLevelWindow(const std::string&, const std::string&) override { return 0; }
  void SendToWindow(WindowHandle, std::uint32_t) override {}
  std::int32_t OpenFileDialog(FileDialogRecord* record) override;
  std::int32_t SaveFileDialog(FileDialogRecord* record) override;
  std::uint32_t ExtendedDialogError() override { return 0; }
  std::uintptr_t BrowseForFolder(const BrowseRecord& record) override;
  bool PathFromItemList(std::uintptr_t, char*) override { return false; }
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override;

 private:
  void SayThatNothingWasChosen(const std::string& title);

  Console& console_;
};

}  // namespace scrivo

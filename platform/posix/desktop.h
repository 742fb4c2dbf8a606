#pragma once

#include <cstdint>
#include <string>

#include "system/desktop.h"

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

}  // namespace scrivo

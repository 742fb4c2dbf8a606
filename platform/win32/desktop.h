#pragma once

#include <string>

#include "system/desktop.h"

namespace scrivo {

// The user's desktop: message boxes, the common dialogs, the folder browser and the help viewer.
class Win32Desktop : public Desktop {
 public:
  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override;
  void Beep() override;
  void ProcessMessages() override;
  WindowHandle FindTopLevelWindow(const std::string& class_name,
                                  const std::string& caption) override;
  void SendToWindow(WindowHandle window, std::uint32_t message) override;
  std::int32_t OpenFileDialog(FileDialogRecord* record) override;
  std::int32_t SaveFileDialog(FileDialogRecord* record) override;
  std::uint32_t ExtendedDialogError() override;
  std::uintptr_t BrowseForFolder(const BrowseRecord& record) override;
  bool PathFromItemList(std::uintptr_t item_list, char* buffer) override;
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override;
};

}  // namespace scrivo

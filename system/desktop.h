#pragma once

#include <cstdint>
#include <string>

namespace scrivo {

// A window of the desktop; 0 is none.
using WindowHandle = std::uintptr_t;

// Buttons and icon of a message box, added together (Windows' values).
enum MessageStyle : std::uint32_t {
  kOkOnly = 0,
  kAbortRetryIgnore = 2,
  kYesNo = 4,
  kCritical = 16,
  kQuestion = 32,
  kExclamation = 48,
  kInformation = 64,
};

// The button that closed a message box (Windows' values).
enum class MessageAnswer : int {
  kNone = 0,
  kOk = 1,
  kCancel = 2,
  kAbort = 3,
  kRetry = 4,
  kIgnore = 5,
  kYes = 6,
  kNo = 7
};

constexpr std::uint32_t kCloseMessage = 16;  // WM_CLOSE

constexpr std::uint32_t kHelpDisplayTopic = 0;  // HH_DISPLAY_TOPIC
constexpr std::uint32_t kHelpDisplayToc = 1;    // HH_DISPLAY_TOC

// What the file dialogs are given and give back: the system's own record (OPENFILENAME) in
// portable form. Its texts are bytes in the ANSI code page, and so are its sizes. The buffers keep
// their size; text in them ends at its first NUL.
struct FileDialogRecord {
  std::uint32_t structure_size = 0;
  WindowHandle owner = 0;
  std::string filter;  // NUL-separated pairs, closed by two NULs
  std::int32_t filter_index = 0;
  std::string file_buffer;
  std::uint32_t file_buffer_size = 0;
  std::string title_buffer;
  std::uint32_t title_buffer_size = 0;
  std::string initial_folder;
  std::string dialog_title;
  std::uint32_t flags = 0;
  std::string default_extension;
};

// What the folder browser is given (BROWSEINFO).
struct BrowseRecord {
  WindowHandle owner = 0;
  std::string title;
  std::uint32_t flags = 0;
};

// What the user sees and answers outside the system's own windows. On Windows all of it goes
// through ANSI calls, which the body makes the texts ready for.
class Desktop {
 public:
  virtual ~Desktop() = default;

  // A modal message box; `style` is a sum of MessageStyle values.
  virtual MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                                    const std::string& caption) = 0;
  virtual void Beep() = 0;
  // One pass of the message loop.
  virtual void ProcessMessages() = 0;

  // The top-level window with this class and caption, or 0.
  virtual WindowHandle FindTopLevelWindow(const std::string& class_name,
                                          const std::string& caption) = 0;
  virtual void SendToWindow(WindowHandle window, std::uint32_t message) = 0;

  // The file dialogs: 1 when the user confirmed, 0 on cancel, anything else when the dialog
  // failed.
  virtual std::int32_t OpenFileDialog(FileDialogRecord* record) = 0;
  virtual std::int32_t SaveFileDialog(FileDialogRecord* record) = 0;
  // Why the last file dialog failed (the common dialogs' extended error code).
  virtual std::uint32_t ExtendedDialogError() = 0;
  // The folder browser: an item list for PathFromItemList, 0 on cancel.
  virtual std::uintptr_t BrowseForFolder(const BrowseRecord& record) = 0;
  // Writes the path of an item list, in the ANSI code page, and a NUL into `buffer` (at least 260
  // bytes); false when it has none.
  virtual bool PathFromItemList(std::uintptr_t item_list, char* buffer) = 0;

  // The HTML Help viewer (HtmlHelpA): returns the viewer's window, 0 when there is no viewer.
  virtual WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                                const std::string& data) = 0;
};

}  // namespace scrivo

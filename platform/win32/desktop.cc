#include <cstddef>

#include "platform/win32/services.h"
#include "platform/win32/shell_api.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

// The record ends where later versions of Windows have added members.
static_assert(sizeof(void*) == 8 || offsetof(OPENFILENAMEA, pvReserved) == 76);

using FileDialog = BOOL(WINAPI*)(OPENFILENAMEA*);

WindowHandle WindowHandleOf(HWND window) { return reinterpret_cast<WindowHandle>(window); }

const char* TextOrNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

// What the dialogs return when they failed; the system itself does not tell that from a cancel.
constexpr std::int32_t kDialogFailed = -1;

std::int32_t RunFileDialog(FileDialog show, FileDialogRecord* record) {
  record->file_buffer.resize(record->file_buffer_size);
  record->title_buffer.resize(record->title_buffer_size);
  OPENFILENAMEA dialog{};
  // The size of the record that ends with the template's name.
  dialog.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
  dialog.hwndOwner = WindowOf(record->owner);
  dialog.lpstrFilter = record->filter.c_str();
  dialog.nFilterIndex = static_cast<DWORD>(record->filter_index);
  dialog.lpstrFile = record->file_buffer.data();
  dialog.nMaxFile = record->file_buffer_size;
  dialog.lpstrFileTitle = record->title_buffer.data();
  dialog.nMaxFileTitle = record->title_buffer_size;
  dialog.lpstrInitialDir = TextOrNull(record->initial_folder);
  dialog.lpstrTitle = TextOrNull(record->dialog_title);
  dialog.Flags = record->flags;
  dialog.lpstrDefExt = TextOrNull(record->default_extension);
  const std::int32_t result = show(&dialog);
  record->flags = dialog.Flags;
  record->filter_index = static_cast<std::int32_t>(dialog.nFilterIndex);
  return result == 0 && CommDlgExtendedError() != 0 ? kDialogFailed : result;
}

using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

// Where the viewer's control is registered; empty when it is not.
std::string RegisteredHelpControl() {
  char path[MAX_PATH] = "";
  DWORD size = sizeof path;
  // Replaces references to the environment and closes the text.
  const LONG status = RegGetValueA(HKEY_CLASSES_ROOT,
                                   "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32",
                                   "", RRF_RT_REG_SZ, nullptr, path, &size);
  return status == ERROR_SUCCESS ? path : "";
}

// The viewer's entry in a library, or null. A library that has it stays loaded: its windows run in
// it.
HtmlHelpFunction HtmlHelpOf(const std::string& library_path) {
  const HMODULE library = library_path.empty() ? nullptr : LoadLibraryA(library_path.c_str());
  if (!library) return nullptr;
  const auto entry = reinterpret_cast<HtmlHelpFunction>(
      reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpA")));
  if (!entry) FreeLibrary(library);
  return entry;
}

// The viewer's entry, or null when it is not installed. A registration may be out of date, so the
// system's own search comes second; and what is missing now may be installed later.
HtmlHelpFunction FindHtmlHelp() {
  static HtmlHelpFunction found = nullptr;
  if (!found) found = HtmlHelpOf(RegisteredHelpControl());
  if (!found) found = HtmlHelpOf("hhctrl.ocx");
  return found;
}

// The folder browser in its new style works only on a thread with OLE. It stays initialized until
// the thread ends; a thread that somebody else has made ready otherwise is left as it is.
void NeedOle() {
  thread_local const HRESULT initialized = OleInitialize(nullptr);
  static_cast<void>(initialized);
}

}  // namespace

MessageAnswer Win32Desktop::ShowMessage(const std::string& text, std::uint32_t style,
                                        const std::string& caption) {
  const HWND owner = GetActiveWindow();
  // Without an owner the box must still keep the thread's other windows from being used.
  const UINT modality = owner ? MB_APPLMODAL : MB_TASKMODAL;
  return static_cast<MessageAnswer>(
      MessageBoxA(owner, ToAnsi(text).c_str(), ToAnsi(caption).c_str(), style | modality));
}

void Win32Desktop::Beep() { MessageBeep(MB_OK); }

void Win32Desktop::ProcessMessages() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));  // for the loop that runs the program
      return;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

WindowHandle Win32Desktop::FindTopLevelWindow(const std::string& class_name,
                                              const std::string& caption) {
  return WindowHandleOf(
      FindWindowExA(nullptr, nullptr, ToAnsi(class_name).c_str(), ToAnsi(caption).c_str()));
}

void Win32Desktop::SendToWindow(WindowHandle window, std::uint32_t message) {
  SendMessageA(WindowOf(window), message, 0, 0);
}

std::int32_t Win32Desktop::OpenFileDialog(FileDialogRecord* record) {
  return RunFileDialog(&GetOpenFileNameA, record);
}

std::int32_t Win32Desktop::SaveFileDialog(FileDialogRecord* record) {
  return RunFileDialog(&GetSaveFileNameA, record);
}

std::uint32_t Win32Desktop::ExtendedDialogError() { return CommDlgExtendedError(); }

std::uintptr_t Win32Desktop::BrowseForFolder(const BrowseRecord& record) {
  NeedOle();
  char display_name[MAX_PATH] = "";
  BROWSEINFOA browse{};
  browse.hwndOwner = WindowOf(record.owner);
  browse.pszDisplayName = display_name;
  const std::string title = ToAnsi(record.title);
  browse.lpszTitle = title.c_str();
  browse.ulFlags = record.flags;
  return reinterpret_cast<std::uintptr_t>(SHBrowseForFolderA(&browse));
}

bool Win32Desktop::PathFromItemList(std::uintptr_t item_list, char* buffer) {
  return SHGetPathFromIDListA(reinterpret_cast<LPCITEMIDLIST>(item_list), buffer) != FALSE;
}

WindowHandle Win32Desktop::HtmlHelp(WindowHandle owner, const std::string& file,
                                    std::uint32_t command, const std::string& data) {
  const HtmlHelpFunction html_help = FindHtmlHelp();
  if (!html_help) return 0;
  const std::string topic = ToAnsi(data);
  return WindowHandleOf(html_help(WindowOf(owner), ToAnsi(file).c_str(), command,
                                  reinterpret_cast<DWORD_PTR>(TextOrNull(topic))));
}

}  // namespace scrivo

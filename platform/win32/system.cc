#include "platform/globals.h"
#include "platform/win32/services.h"
#include "platform/win32/system_error.h"
#include "platform/win32/wide.h"
#include "platform/win32/windows.h"

namespace scrivo {
namespace {

// The event log takes texts of up to 31,839 characters and refuses longer ones whole.
constexpr std::size_t kLongestEventText = 31839;

std::string ModulePath() {
  HMODULE module = nullptr;
  GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCSTR>(&ModulePath), &module);
  wchar_t path[MAX_PATH + 1] = L"";
  GetModuleFileNameW(module, path, MAX_PATH);
  return Narrow(path);
}

}  // namespace

std::string Win32System::DateText() {
  wchar_t text[128] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, text, 128);
  return Narrow(text);
}

std::string Win32System::TimeText() {
  wchar_t text[128] = L"";
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, text, 128);
  return Narrow(text);
}

bool Win32System::PlatformId(std::uint32_t record_size, std::uint32_t* platform_id) {
  OSVERSIONINFOEXA record{};
  record.dwOSVersionInfoSize = record_size;
  if (!GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&record))) return false;
  *platform_id = record.dwPlatformId;
  return true;
}

void Win32System::WriteErrorEvent(const std::string& source, const std::string& text) {
  const HANDLE log = RegisterEventSourceA(nullptr, ToAnsi(source).c_str());
  if (!log) RaiseSystemError(GetLastError(), "the event log");
  const std::string shortened = ToAnsi(text).substr(0, kLongestEventText);
  const char* strings[] = {shortened.c_str()};
  const bool written =
      ReportEventA(log, EVENTLOG_ERROR_TYPE, 0, 0, nullptr, 1, 0, strings, nullptr) != FALSE;
  const DWORD code = GetLastError();
  DeregisterEventSource(log);
  if (!written) RaiseSystemError(code, "the event log");
}

std::string Win32System::ModuleName() {
  const std::string path = ModulePath();
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  return name.substr(0, name.rfind('.'));
}

std::string Win32System::ModuleFolder() {
  const std::string path = ModulePath();
  const std::size_t separator = path.find_last_of("\\/");
  return separator == std::string::npos ? "" : path.substr(0, separator);
}

void Win32System::HoldMutex(const std::string& name) {
  // The handle is left to the end of the process, which is how long the mutex is to be held.
  if (!CreateMutexA(nullptr, FALSE, ToAnsi(name).c_str())) RaiseSystemError(GetLastError(), name);
}

std::string Win32System::ToAnsi(std::string_view text) {
  return code_page_ != 0 ? SystemServices::ToAnsi(text) : SystemAnsi(Wide(text));
}

std::string Win32System::FromAnsi(std::string_view ansi) {
  return code_page_ != 0 ? SystemServices::FromAnsi(ansi) : Narrow(WideOfSystemAnsi(ansi));
}

int Win32System::AnsiCodePage() {
  return code_page_ != 0 ? code_page_ : static_cast<int>(GetACP());
}

PathStyle SystemPathStyle() { return PathStyle::kWindows; }

}  // namespace scrivo

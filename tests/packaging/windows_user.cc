// What a user of an installed Scrivo does on Windows, for tests/packaging/setup:
//
//   run [plain] COMMAND…      runs a command, and prints its exit status; plain: without the
//                             rights of an administrator
//   pages [plain] COMMAND…    the same with a setup, whose pages are gone through; what its
//                             messages say is printed, and agreed to
//   decline [plain] COMMAND…  the same, but cancels at the first message
//   logon                     runs what was left to be run once at the next logon of the user
//   com                       creates the add-in through COM by its programmatic identifier
//   create LIBRARY            creates it through the library's own DllGetClassObject
//   hold LIBRARY FILE         loads the library as an application does, until FILE is there
//   host HOST FILE            starts Scrivo Host; FILE says that it is shown
//   compile HOST WEB          compiles a web in Scrivo Host, as it does for other programs
//   page [BUTTON]             waits until a page of a setup, with this button, can be left
//   next                      leaves it, and waits for the next one
//
// The exit status is 0 when that was done; what was in the way is printed.

#include <ole2.h>
#include <windows.h>

#include <cstdio>
#include <functional>
#include <string>

namespace {

constexpr DWORD kLimit = 240000;  // milliseconds until a program counts as stuck
const CLSID kConnect = {
    0xA349BFC6, 0x03EA, 0x4860, {0xBD, 0xC5, 0x42, 0x1D, 0xBE, 0xDA, 0xBC, 0x7D}};

int Fail(const std::string& what, HRESULT code) {
  std::printf("%s: 0x%08lX\n", what.c_str(), static_cast<unsigned long>(code));
  return 1;
}

// Calls `is_done` until it says so; false when the limit has passed.
bool WaitFor(const std::function<bool()>& is_done) {
  const ULONGLONG start = GetTickCount64();
  while (!is_done()) {
    if (GetTickCount64() - start > kLimit) return false;
    Sleep(20);
  }
  return true;
}

int CreateThroughCom() {
  CLSID id;
  HRESULT result = CLSIDFromProgID(L"Kestrel.Connect", &id);
  if (FAILED(result)) return Fail("the name is not registered", result);
  IDispatch* connect = nullptr;
  result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                            reinterpret_cast<void**>(&connect));
  if (FAILED(result)) return Fail("the class cannot be created", result);
  connect->Release();
  return 0;
}

int CreateFrom(const char* library) {
  HMODULE module = LoadLibraryA(library);
  if (!module)
    return Fail(std::string(library) + " cannot be loaded", HRESULT_FROM_WIN32(GetLastError()));
  using Function = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
  const auto get = reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  IClassFactory* factory = nullptr;
  HRESULT result = get(kConnect, IID_IClassFactory, reinterpret_cast<void**>(&factory));
  if (FAILED(result)) return Fail("the class is not served", result);
  IDispatch* connect = nullptr;
  result = factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&connect));
  if (FAILED(result)) return Fail("the class cannot be created", result);
  connect->Release();
  factory->Release();
  return 0;
}

bool Exists(const char* file) { return GetFileAttributesA(file) != INVALID_FILE_ATTRIBUTES; }

void Touch(const std::string& file) { std::fclose(std::fopen(file.c_str(), "w")); }

// FILE.held says that the library is loaded.
int Hold(const char* library, const char* file) {
  if (!LoadLibraryA(library)) return Fail(std::string(library) + " cannot be loaded", E_FAIL);
  Touch(std::string(file) + ".held");
  return WaitFor([&] { return Exists(file); }) ? 0 : 1;
}

// `token` is what the new process may do; null for all that this one may.
HANDLE Start(std::string command_line, HANDLE token = nullptr) {
  STARTUPINFOA start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (!CreateProcessAsUserA(token, nullptr, command_line.data(), nullptr, nullptr, FALSE, 0,
                            nullptr, nullptr, &start, &process)) {
    return nullptr;
  }
  CloseHandle(process.hThread);
  return process.hProcess;
}

// What a user may do who is no administrator; null when there is no such token.
HANDLE PlainToken() {
  HANDLE own = nullptr;
  HANDLE plain = nullptr;
  BYTE administrators[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof administrators;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &own) ||
      !CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators, &size)) {
    return nullptr;
  }
  SID_AND_ATTRIBUTES denied{administrators, 0};
  const BOOL made =
      CreateRestrictedToken(own, DISABLE_MAX_PRIVILEGE, 1, &denied, 0, nullptr, 0, nullptr, &plain);
  CloseHandle(own);
  return made ? plain : nullptr;
}

// The program in quotes, the rest as it is given: a setup wants one of its options without.
std::string CommandLine(char** begin, char** end) {
  std::string line;
  for (char** word = begin; word != end; ++word)
    line += word == begin ? "\"" + std::string(*word) + "\"" : " " + std::string(*word);
  return line;
}

int PrintStatusOf(HANDLE process) {
  if (!process) return Fail("the command does not start", HRESULT_FROM_WIN32(GetLastError()));
  if (WaitForSingleObject(process, kLimit) != WAIT_OBJECT_0)
    return Fail("the command does not end", E_FAIL);
  DWORD status = 0;
  GetExitCodeProcess(process, &status);
  std::printf("status %lu\n", status);
  return 0;
}

// As Windows does, which takes each command away before it is run. Wine's start leaves them alone.
int LogOn() {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce", 0,
                    KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) {
    return Fail("nothing can be left to be run", E_FAIL);
  }
  int status = 0;
  DWORD index = 0;
  for (;;) {
    char name[256];
    char command[2048] = "";
    DWORD name_size = sizeof name;
    DWORD command_size = sizeof command - 1;
    if (RegEnumValueA(key, index, name, &name_size, nullptr, nullptr,
                      reinterpret_cast<BYTE*>(command), &command_size) != ERROR_SUCCESS) {
      break;
    }
    if (name_size == 0) {  // the key's own value is no command
      ++index;
      continue;
    }
    RegDeleteValueA(key, name);
    status |= PrintStatusOf(Start(command));
  }
  RegCloseKey(key);
  return status;
}

HWND Shown(const char* class_name, const char* title) {
  HWND window = FindWindowA(class_name, title);
  return window && IsWindowVisible(window) ? window : nullptr;
}

int ShowHost(const std::string& host, const char* file) {
  HANDLE process = Start("\"" + host + "\"");
  if (!process) return Fail(host + " does not start", HRESULT_FROM_WIN32(GetLastError()));
  if (!WaitFor([] { return Shown("ScrivoHostWindow", nullptr) != nullptr; })) return 1;
  Touch(file);
  return 0;
}

struct Search {
  std::string text;
  HWND found = nullptr;
};

BOOL CALLBACK TakeButton(HWND window, LPARAM given) {
  auto& search = *reinterpret_cast<Search*>(given);
  char text[128] = "";
  GetWindowTextA(window, text, sizeof text);
  std::string plain;
  for (const char c : std::string(text)) {
    if (c != '&') plain += c;
  }
  if (plain != search.text) return TRUE;
  search.found = window;
  return FALSE;
}

HWND ButtonOf(HWND form, const char* text) {
  Search search{text};
  EnumChildWindows(form, &TakeButton, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

constexpr int kMessageText = 0xFFFF;  // the item of a message box

// The button of a message box that agrees; 0 when it has none.
int AgreeingButton(HWND box) {
  return GetDlgItem(box, IDYES) ? IDYES : GetDlgItem(box, IDOK) ? IDOK : 0;
}

// A setup's windows are of the same class, but have either no such text or no such button.
BOOL CALLBACK TakeMessage(HWND window, LPARAM given) {
  char name[16] = "";
  GetClassNameA(window, name, sizeof name);
  if (std::string(name) != "#32770" || !IsWindowVisible(window) ||
      !GetDlgItem(window, kMessageText) || AgreeingButton(window) == 0) {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(given) = window;
  return FALSE;
}

// Tells what a message box says, once, and answers it; false when there is none.
bool AnswersMessage(bool declines = false) {
  HWND box = nullptr;
  EnumWindows(&TakeMessage, reinterpret_cast<LPARAM>(&box));
  if (!box) return false;
  char text[1024] = "";
  GetDlgItemTextA(box, kMessageText, text, sizeof text);
  std::printf("message: %s\n", text);
  SendMessageA(box, WM_COMMAND, declines ? IDCANCEL : AgreeingButton(box), 0);
  WaitFor([&] { return !IsWindowVisible(box); });  // so that it is told once
  return true;
}

int Compile(const std::string& host, const std::string& web) {
  HANDLE process = Start("\"" + host + "\" --external \"" + web + "\"");
  if (!process) return Fail(host + " does not start", HRESULT_FROM_WIN32(GetLastError()));
  HWND form = nullptr;
  const auto form_is_shown = [&] {
    AnswersMessage();
    form = Shown("ScrivoWindow", "Scrivo - compile the open web");
    return form && ButtonOf(form, "Generate");
  };
  int status = 0;
  if (WaitFor(form_is_shown)) {
    // No viewer, and no window that stays open.
    for (const char* option :
         {"Open CHM after compilation", "Don't close compilation log on success"}) {
      HWND box = ButtonOf(form, option);
      if (SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED) SendMessageA(box, BM_CLICK, 0, 0);
    }
    PostMessageA(ButtonOf(form, "Generate"), BM_CLICK, 0, 0);
    if (!WaitFor([&] {
          AnswersMessage();
          return !IsWindow(form);
        })) {
      status = Fail("the dialog does not close", E_FAIL);
    }
  } else {
    status = Fail("the compile dialog does not open", E_FAIL);
  }
  WaitFor([] { return Shown("ScrivoHostWindow", nullptr) != nullptr; });
  PostMessageA(FindWindowA("ScrivoHostWindow", nullptr), WM_CLOSE, 0, 0);
  if (WaitForSingleObject(process, kLimit) != WAIT_OBJECT_0)
    return Fail("Scrivo Host does not end", E_FAIL);
  return status;
}

HWND PageOf(HWND setup) { return FindWindowExA(setup, nullptr, "#32770", nullptr); }

// The setup with a page that can be left and has this button; null when none comes.
HWND AwaitPage(const char* button = nullptr) {
  HWND setup = nullptr;
  const auto can_be_left = [&] {
    setup = Shown("#32770", nullptr);
    HWND page = setup ? PageOf(setup) : nullptr;
    return page && IsWindowVisible(page) && IsWindowEnabled(GetDlgItem(setup, IDOK)) &&
           (!button || IsWindowVisible(ButtonOf(setup, button)));
  };
  return WaitFor(can_be_left) ? setup : nullptr;
}

// Goes through the pages of a setup, without starting what it offers to start.
int GoThroughPages(HANDLE process, bool declines) {
  HWND left = nullptr;
  bool declined = false;
  bool ended = !process;
  const auto goes_on = [&] {
    ended = WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
    if (ended) return true;
    if (AnswersMessage(declines && !declined)) {
      declined = declines;
      return true;
    }
    HWND setup = Shown("#32770", nullptr);
    HWND page = setup ? PageOf(setup) : nullptr;
    if (!page || !IsWindowVisible(page)) return false;
    if (HWND box = ButtonOf(setup, "Start Scrivo Host");
        box && SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED) {
      SendMessageA(box, BM_CLICK, 0, 0);
    }
    if (page != left && IsWindowEnabled(GetDlgItem(setup, IDOK))) {
      left = page;
      PostMessageA(setup, WM_COMMAND, IDOK, 0);
      return true;
    }
    if (declined && IsWindowEnabled(GetDlgItem(setup, IDCANCEL)))
      PostMessageA(setup, WM_COMMAND, IDCANCEL, 0);
    return false;
  };
  while (!ended) {
    if (!WaitFor(goes_on)) return Fail("the setup does not go on", E_FAIL);
  }
  return PrintStatusOf(process);
}

int PressNext() {
  HWND setup = AwaitPage();
  if (!setup) return Fail("there is no page", E_FAIL);
  HWND page = PageOf(setup);
  PostMessageA(setup, WM_COMMAND, IDOK, 0);
  return WaitFor([&] { return !IsWindow(page); }) ? 0 : Fail("the page stays", E_FAIL);
}

}  // namespace

int main(int argc, char** argv) {
  OleInitialize(nullptr);
  const std::string task = argc > 1 ? argv[1] : "";
  if (task == "run" || task == "pages" || task == "decline") {
    const bool plain = argc > 2 && std::string(argv[2]) == "plain";
    HANDLE token = plain ? PlainToken() : nullptr;
    if (plain && !token) return Fail("there are no plain users", E_FAIL);
    HANDLE process = Start(CommandLine(argv + (plain ? 3 : 2), argv + argc), token);
    return task == "run" ? PrintStatusOf(process) : GoThroughPages(process, task == "decline");
  }
  if (task == "logon") return LogOn();
  if (task == "com") return CreateThroughCom();
  if (task == "create" && argc == 3) return CreateFrom(argv[2]);
  if (task == "hold" && argc == 4) return Hold(argv[2], argv[3]);
  if (task == "host" && argc == 4) return ShowHost(argv[2], argv[3]);
  if (task == "compile" && argc == 4) return Compile(argv[2], argv[3]);
  if (task == "page") return AwaitPage(argv[2]) ? 0 : Fail("there is no page", E_FAIL);
  if (task == "next" && argc == 2) return PressNext();
  return 2;
}

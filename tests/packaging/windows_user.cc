// What a user of an installed Scrivo does on Windows, for tests/packaging/setup:
//
//   windows_user com                creates the add-in through COM by its programmatic identifier
//   windows_user create LIBRARY     creates it through the library's own DllGetClassObject
//   windows_user hold LIBRARY FILE  loads the library as an application does, until FILE is there
//   windows_user host HOST FILE     starts Scrivo Host; FILE says that it is shown
//   windows_user compile HOST WEB   compiles a web in Scrivo Host, as it does for other programs
//   windows_user page [BUTTON]      waits until a page of a setup, with this button, can be left
//   windows_user next               leaves it, and waits for the next one
//
// The exit status is 0 when that was done; what was in the way is printed.

#include <ole2.h>
#include <windows.h>

#include <cstdio>
#include <functional>
#include <string>

namespace {

constexpr DWORD kLimit = 120000;  // milliseconds until a program counts as stuck
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

HANDLE Start(std::string command_line) {
  STARTUPINFOA start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &start, &process)) {
    return nullptr;
  }
  CloseHandle(process.hThread);
  return process.hProcess;
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

// Tells what a message box says, once, and answers it.
bool AnswersMessage() {
  HWND box = Shown("#32770", nullptr);
  if (!box) return false;
  char text[1024] = "";
  GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
  std::printf("message: %s\n", text);
  SendMessageA(box, WM_COMMAND, GetDlgItem(box, IDYES) ? IDYES : IDOK, 0);
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
  if (task == "com") return CreateThroughCom();
  if (task == "create" && argc == 3) return CreateFrom(argv[2]);
  if (task == "hold" && argc == 4) return Hold(argv[2], argv[3]);
  if (task == "host" && argc == 4) return ShowHost(argv[2], argv[3]);
  if (task == "compile" && argc == 4) return Compile(argv[2], argv[3]);
  if (task == "page") return AwaitPage(argv[2]) ? 0 : Fail("there is no page", E_FAIL);
  if (task == "next" && argc == 2) return PressNext();
  return 2;
}

#include "ui/win32/native_window.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32/wide.h"
#include "system/error.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

constexpr int kDefaultDpi = 96;
constexpr double kTwipsPerInch = 1440;

// The window classes of this module. A library must take them with it when it is unloaded: what
// handles their messages goes too.
class WindowClasses {
 public:
  WindowClasses() = default;
  WindowClasses(const WindowClasses&) = delete;
  WindowClasses& operator=(const WindowClasses&) = delete;
  ~WindowClasses() {
    for (const std::string& name : registered_) UnregisterClassA(name.c_str(), module_);
  }

  void Need(const char* name, WNDPROC procedure) {
    WNDCLASSA existing;
    if (GetClassInfoA(module_, name, &existing)) return;
    auto window_class = Described<WNDCLASSA>(procedure);
    window_class.lpszClassName = name;
    if (RegisterClassA(&window_class)) registered_.emplace_back(name);
  }

  void NeedWide(const char* name, WNDPROC procedure) {
    const std::wstring wide_name = Wide(name);
    WNDCLASSW existing;
    if (GetClassInfoW(module_, wide_name.c_str(), &existing)) return;
    auto window_class = Described<WNDCLASSW>(procedure);
    window_class.lpszClassName = wide_name.c_str();
    if (RegisterClassW(&window_class)) registered_.emplace_back(name);
  }

 private:
  template <typename WindowClass>
  WindowClass Described(WNDPROC procedure) const {
    WindowClass window_class{};
    window_class.lpfnWndProc = procedure;
    window_class.hInstance = module_;
    window_class.hCursor = LoadCursor(nullptr, IDC_ARROW);
    window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    return window_class;
  }

  const HINSTANCE module_ = OwnModule();
  std::vector<std::string> registered_;
};

// GetDpiForWindow where the system has it (from Windows 10), else 0.
int MonitorDpi(HWND handle) {
  using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);
  static const auto function = reinterpret_cast<GetDpiForWindowFunction>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32.dll"), "GetDpiForWindow")));
  return handle && function ? static_cast<int>(function(handle)) : 0;
}

int SystemDpi() {
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : kDefaultDpi;
}

// The system's default handling, in the kind of text that the window was made for.
LRESULT DefaultProcedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  return IsWindowUnicode(handle) ? DefWindowProcW(handle, message, wparam, lparam)
                                 : DefWindowProcA(handle, message, wparam, lparam);
}

WindowClasses& OwnClasses() {
  static WindowClasses classes;
  return classes;
}

void ThrowUnlessCreated(HWND window) {
  if (!window) throw Error(kOutOfMemory, "Scrivo.Window", "The window cannot be created");
}

}  // namespace

int PixelsFromTwips(double twips, int dpi) {
  // No place on any screen is further out; settings may hold any number.
  constexpr double kFurthest = 1 << 20;
  const double pixels = std::clamp(twips * dpi / kTwipsPerInch, -kFurthest, kFurthest);
  return static_cast<int>(pixels < 0 ? pixels - 0.5 : pixels + 0.5);
}

double TwipsFromPixels(int pixels, int dpi) { return pixels * kTwipsPerInch / dpi; }

NativeWindow::~NativeWindow() { Destroy(); }

void NativeWindow::Destroy() {
  if (!handle_) return;
  SetWindowLongPtrA(handle_, GWLP_USERDATA, 0);  // the derived class is gone already
  DestroyWindow(std::exchange(handle_, nullptr));
}

int NativeWindow::Dpi() const {
  const int dpi = MonitorDpi(handle_);
  return dpi > 0 ? dpi : SystemDpi();
}

void NativeWindow::Create(const std::string& title, DWORD style, DWORD extended_style, HWND parent,
                          const RECT& bounds) {
  OwnClasses().Need(kFormClass, &NativeWindow::Procedure);
  ThrowUnlessCreated(CreateWindowExA(
      extended_style, kFormClass, ToAnsi(title).c_str(), style, bounds.left, bounds.top,
      bounds.right - bounds.left, bounds.bottom - bounds.top, parent, nullptr, OwnModule(), this));
}

void NativeWindow::CreateWide(const char* class_name, const std::string& title, DWORD style,
                              DWORD extended_style) {
  OwnClasses().NeedWide(class_name, &NativeWindow::Procedure);
  ThrowUnlessCreated(CreateWindowExW(extended_style, Wide(class_name).c_str(), Wide(title).c_str(),
                                     style, 0, 0, 0, 0, nullptr, nullptr, OwnModule(), this));
}

LRESULT NativeWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefaultProcedure(handle_, message, wparam, lparam);
}

LRESULT CALLBACK NativeWindow::Procedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* window =
        static_cast<NativeWindow*>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams);
    window->handle_ = handle;
    SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
  }
  auto* window = reinterpret_cast<NativeWindow*>(GetWindowLongPtrA(handle, GWLP_USERDATA));
  if (!window) return DefaultProcedure(handle, message, wparam, lparam);
  try {
    if (message == WM_NCDESTROY) {
      SetWindowLongPtrA(handle, GWLP_USERDATA, 0);
      window->handle_ = nullptr;
      return DefaultProcedure(handle, message, wparam, lparam);
    }
    return window->OnMessage(message, wparam, lparam);
  } catch (...) {
    return 0;  // the presenters report their errors themselves; nothing may cross into the system
  }
}

void RunModal(HWND window, const std::shared_ptr<const bool>& done) {
  ShowWindow(window, SW_SHOW);
  SetForegroundWindow(window);
  MSG message;
  while (!*done) {
    const BOOL got = GetMessageA(&message, nullptr, 0, 0);
    if (got <= 0) {
      if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    if (IsFormKey(&message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

bool IsFormKey(MSG* message) {
  HWND form = message->hwnd ? GetAncestor(message->hwnd, GA_ROOT) : nullptr;
  return IsOwnWindow(form) && IsDialogMessageA(form, message);
}

bool IsOwnWindow(HWND window) {
  char class_name[32] = "";
  return window && GetClassNameA(window, class_name, sizeof class_name) &&
         lstrcmpA(class_name, kFormClass) == 0;
}

HFONT CreateMessageFont(int dpi) {
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, SystemDpi());
  return CreateFontIndirectA(&metrics.lfMessageFont);
}

HFONT CreateHeadingFont(HFONT font, int percent) {
  LOGFONTA description{};
  GetObjectA(font, sizeof description, &description);
  description.lfHeight = description.lfHeight * percent / 100;
  description.lfWeight = FW_BOLD;
  return CreateFontIndirectA(&description);
}

SIZE TextSize(HWND window, HFONT font, const std::string& text) {
  const std::string ansi = ToAnsi(text);
  HDC device = GetDC(window);
  HGDIOBJ old_font = font ? SelectObject(device, font) : nullptr;
  SIZE size{};
  GetTextExtentPoint32A(device, ansi.c_str(), static_cast<int>(ansi.size()), &size);
  if (old_font) SelectObject(device, old_font);
  ReleaseDC(window, device);
  return size;
}

HWND CreateControl(const char* class_name, const std::string& text, DWORD style,
                   DWORD extended_style, HWND parent, int id, HFONT font) {
  HWND control = CreateWindowExA(
      extended_style, class_name, ToAnsi(text).c_str(), WS_CHILD | style, 0, 0, 0, 0, parent,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), OwnModule(), nullptr);
  if (!control) throw Error(kOutOfMemory, "Scrivo.Window", "The control cannot be created");
  SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  return control;
}

std::string TextOf(HWND control) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(control)), '\0');
  if (!text.empty()) {
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(control, text.data(), static_cast<int>(text.size() + 1))));
  }
  return FromAnsi(text);
}

void ShowText(HWND control, const std::string& text) {
  SetWindowTextA(control, ToAnsi(text).c_str());
}

HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCSTR>(&SystemDpi), &module);
  return module;
}

}  // namespace scrivo

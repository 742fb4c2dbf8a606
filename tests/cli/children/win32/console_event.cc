// console_event PROCESS: sends an event to the console of that process, for all that share it, as
// its user would: Ctrl-Break. Where the system cannot send that from outside (Wine 8 cannot),
// Ctrl-C is typed into the console instead. Ends with 0 when the event was sent.

#include <windows.h>

#include <cstdlib>

namespace {

// This program is part of the console, and is told too.
BOOL WINAPI StayAlive(DWORD) { return TRUE; }

bool TypeControlC() {
  constexpr wchar_t kControlC = 3;
  const HANDLE input =
      CreateFileA("CONIN$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  nullptr, OPEN_EXISTING, 0, nullptr);
  if (input == INVALID_HANDLE_VALUE) return false;
  INPUT_RECORD key{};
  key.EventType = KEY_EVENT;
  key.Event.KeyEvent.bKeyDown = TRUE;
  key.Event.KeyEvent.wRepeatCount = 1;
  key.Event.KeyEvent.wVirtualKeyCode = 'C';
  key.Event.KeyEvent.uChar.UnicodeChar = kControlC;
  key.Event.KeyEvent.dwControlKeyState = LEFT_CTRL_PRESSED;
  DWORD written = 0;
  return WriteConsoleInputW(input, &key, 1, &written) && written == 1;
}

}  // namespace

int main(int argc, char** argv) {
  const DWORD process = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 0;
  SetConsoleCtrlHandler(StayAlive, TRUE);
  FreeConsole();
  if (!AttachConsole(process)) return 1;
  return GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, 0) || TypeControlC() ? 0 : 1;
}

#include "platform/win32/interruption.h"
#include "platform/win32/services.h"
#include "platform/win32/windows.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

static_assert(sizeof(void*) == 8 || sizeof(STARTUPINFOA) == 68);
static_assert(sizeof(void*) == 8 || sizeof(SECURITY_ATTRIBUTES) == 12);

HANDLE HandleOf(SystemHandle handle) { return reinterpret_cast<HANDLE>(handle); }

SystemHandle NumberOf(HANDLE handle) { return reinterpret_cast<SystemHandle>(handle); }

SECURITY_ATTRIBUTES Inheritable() { return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE}; }

}  // namespace

bool Win32Processes::Done(bool success) {
  if (!success) last_error_ = GetLastError();
  return success;
}

bool Win32Processes::OpenPipe(SystemHandle* read_end, SystemHandle* write_end) {
  SECURITY_ATTRIBUTES attributes = Inheritable();
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  if (!Done(CreatePipe(&reading, &writing, &attributes, 0))) return false;
  *read_end = NumberOf(reading);
  *write_end = NumberOf(writing);
  return true;
}

bool Win32Processes::Start(const StartRequest& request, StartedProcess* started) {
  if (Interrupted()) {
    last_error_ = ERROR_OPERATION_ABORTED;
    return false;
  }
  STARTUPINFOA start_up{};
  start_up.cb = sizeof start_up;
  start_up.dwFlags = request.start_flags;
  start_up.wShowWindow = request.show_window;
  start_up.hStdInput = HandleOf(request.standard_input);
  start_up.hStdOutput = HandleOf(request.standard_output);
  start_up.hStdError = HandleOf(request.standard_error);
  SECURITY_ATTRIBUTES attributes = Inheritable();
  std::string command_line = ToAnsi(request.command_line);  // the system writes into it
  const std::string folder = ToAnsi(request.folder);
  PROCESS_INFORMATION process{};
  if (!Done(CreateProcessA(nullptr, command_line.data(), &attributes, &attributes,
                           request.inherit_handles, request.creation_flags, nullptr,
                           folder.empty() ? nullptr : folder.c_str(), &start_up, &process))) {
    return false;
  }
  EndWhenInterrupted(process.hProcess);
  *started = {NumberOf(process.hProcess), NumberOf(process.hThread), process.dwProcessId,
              process.dwThreadId};
  return true;
}

bool Win32Processes::Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) {
  DWORD count = 0;
  const bool success = Done(ReadFile(HandleOf(pipe), buffer, size, &count, nullptr));
  *got = success ? count : 0;
  return success;
}

bool Win32Processes::ReadWouldWait(SystemHandle pipe) {
  DWORD available = 0;
  return PeekNamedPipe(HandleOf(pipe), nullptr, 0, nullptr, &available, nullptr) && available == 0;
}

std::uint32_t Win32Processes::ExitCode(SystemHandle process) {
  DWORD code = 0;
  Done(GetExitCodeProcess(HandleOf(process), &code));
  return code;
}

void Win32Processes::WaitForEnd(SystemHandle process) {
  Done(WaitForSingleObject(HandleOf(process), INFINITE) != WAIT_FAILED);
}

void Win32Processes::End(SystemHandle process) {
  // The code that a program ended by Ctrl-C or the task manager leaves, too.
  if (Done(TerminateProcess(HandleOf(process), 1))) WaitForEnd(process);
}

void Win32Processes::Close(SystemHandle handle) {
  Forget(HandleOf(handle));
  Done(CloseHandle(HandleOf(handle)));
}

}  // namespace scrivo

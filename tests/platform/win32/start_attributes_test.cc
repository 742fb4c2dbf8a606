// What a child's process and thread are made with. An emulated Windows takes note of that and gives
// handles that nobody can inherit all the same, so the call itself is watched.

#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

using CreateFunction = decltype(&CreateProcessA);

struct Attributes {
  bool are_given = false;
  SECURITY_ATTRIBUTES value{};
};

CreateFunction create_process = nullptr;
Attributes process_attributes, thread_attributes;

Attributes Copied(const SECURITY_ATTRIBUTES* given) {
  return given ? Attributes{true, *given} : Attributes{};
}

BOOL WINAPI Watched(LPCSTR program, LPSTR command_line, LPSECURITY_ATTRIBUTES process,
                    LPSECURITY_ATTRIBUTES thread, BOOL inherits, DWORD flags, LPVOID environment,
                    LPCSTR folder, LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION started) {
  process_attributes = Copied(process);
  thread_attributes = Copied(thread);
  return create_process(program, command_line, process, thread, inherits, flags, environment,
                        folder, start_up, started);
}

// Puts `function` in the place of the function `old` that this program imports from a library of
// the system; false when it imports none such.
bool Replace(CreateFunction old, CreateFunction function) {
  auto* const base = reinterpret_cast<std::uint8_t*>(GetModuleHandleA(nullptr));
  const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
  const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& imports =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
  for (; library->Name != 0; ++library) {
    auto* entry = reinterpret_cast<CreateFunction*>(base + library->FirstThunk);
    for (; *entry != nullptr; ++entry) {
      if (*entry != old) continue;
      DWORD protection = 0;
      VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
      *entry = function;
      return true;
    }
  }
  return false;
}

TEST_F(WithRealServices, AChildsProcessAndThreadAreMadeToBeInherited) {
  create_process = &CreateProcessA;
  ASSERT_TRUE(Replace(create_process, &Watched));
  StartRequest request;
  request.command_line = '"' + TestProgram("test_printer") + '"';
  request.creation_flags = kNormalPriorityClass;
  StartedProcess child;
  EXPECT_TRUE(TheServices().processes->Start(request, &child));
  EXPECT_TRUE(Replace(&Watched, create_process));
  for (const Attributes& attributes : {process_attributes, thread_attributes}) {
    EXPECT_TRUE(attributes.are_given);
    EXPECT_EQ(attributes.value.nLength, sizeof(SECURITY_ATTRIBUTES));
    EXPECT_EQ(attributes.value.lpSecurityDescriptor, nullptr);
    EXPECT_TRUE(attributes.value.bInheritHandle);
  }
  TheServices().processes->WaitForEnd(child.process);
  TheServices().processes->Close(child.thread);
  TheServices().processes->Close(child.process);
}

}  // namespace
}  // namespace scrivo

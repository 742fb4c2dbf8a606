// A library for the tests that tells what its code sees of the module that holds it.

#include <cstring>

#include "system/services.h"

// Fills both buffers, of `size` bytes each, with texts that a NUL closes.
extern "C" __declspec(dllexport) void TellModule(char* name, char* folder, std::size_t size) {
  const std::shared_ptr<scrivo::SystemServices> system = scrivo::CreateSystemServices().system;
  std::strncpy(name, system->ModuleName().c_str(), size - 1);
  std::strncpy(folder, system->ModuleFolder().c_str(), size - 1);
}

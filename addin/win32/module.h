#pragma once

namespace scrivo {

// What keeps the library loaded: its objects, and those who said so.

// Counts as an object of the library while it lives.
class ModuleReference {
 public:
  ModuleReference();
  ~ModuleReference();
  ModuleReference(const ModuleReference&) = delete;
  ModuleReference& operator=(const ModuleReference&) = delete;
};

// Keeps the library loaded until the same is taken back (IClassFactory::LockServer).
void LockModule(bool locked);

// True while nobody needs the library.
bool CanUnloadModule();

}  // namespace scrivo

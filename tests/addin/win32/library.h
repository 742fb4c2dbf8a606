#pragma once

#include <string>

#include "com/win32/com_ptr.h"
#include "com/win32/dispatch_call.h"

namespace scrivo {

// Scrivo.dll beside the test program, loaded while this object lives.
class Library {
 public:
  Library() { Load(); }
  ~Library() { Unload(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  void Load() { module_ = LoadLibraryA("Scrivo.dll"); }
  void Unload() { FreeLibrary(module_); }
  // Where it lies.
  std::string Folder() const {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(module_, path, MAX_PATH);
    const std::string whole = path;
    return whole.substr(0, whole.rfind('\\'));
  }
  HMODULE module() const { return module_; }
  // One of its exports, null when there is none with this name.
  template <typename Function>
  Function Export(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  HRESULT Register() const { return Export<HRESULT(WINAPI*)()>("DllRegisterServer")(); }
  HRESULT Unregister() const { return Export<HRESULT(WINAPI*)()>("DllUnregisterServer")(); }
  HRESULT Install(bool install, const wchar_t* text) const {
    return Export<HRESULT(WINAPI*)(BOOL, const wchar_t*)>("DllInstall")(install, text);
  }
  bool CanUnload() const { return Export<HRESULT(WINAPI*)()>("DllCanUnloadNow")() == S_OK; }
  HRESULT ClassObject(REFCLSID class_id, REFIID id, void** object) const {
    using Function = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    return Export<Function>("DllGetClassObject")(class_id, id, object);
  }

 private:
  HMODULE module_ = nullptr;
};

// COM on a thread, as a host's user-interface thread has it.
class Apartment {
 public:
  Apartment() { OleInitialize(nullptr); }
  ~Apartment() { OleUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

inline CLSID ConnectClass() {
  CLSID class_id{};
  CLSIDFromProgID(L"Kestrel.Connect", &class_id);
  return class_id;
}

}  // namespace scrivo

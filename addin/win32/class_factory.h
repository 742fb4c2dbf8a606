#pragma once

#include <functional>

#include "com/win32/com_ptr.h"

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

// Makes the objects of one class for COM.
class ClassFactory : public IClassFactory {
 public:
  using Maker = std::function<ComPtr<IDispatch>()>;

  explicit ClassFactory(Maker make) : make_(std::move(make)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  // The class cannot be part of another object: `outer` must be null.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  virtual ~ClassFactory() = default;

  ModuleReference module_;
  LONG references_ = 1;
  Maker make_;
};

}  // namespace scrivo

#pragma once

#include <functional>

#include "addin/win32/module.h"
#include "com/win32/com_ptr.h"

namespace scrivo {

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

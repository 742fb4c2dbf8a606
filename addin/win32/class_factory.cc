#include "addin/win32/class_factory.h"

#include "addin/win32/host_entry.h"

namespace scrivo {

HRESULT ClassFactory::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object =
      id == IID_IUnknown || id == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG ClassFactory::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  HRESULT answer = E_UNEXPECTED;
  const HRESULT made = FromHost([&] { answer = make_()->QueryInterface(id, object); });
  return FAILED(made) ? made : answer;
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  LockModule(lock != FALSE);
  return S_OK;
}

}  // namespace scrivo

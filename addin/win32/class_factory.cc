#include "addin/win32/class_factory.h"

#include <atomic>

#include "addin/win32/host_entry.h"
#include "com/win32/dispatch_object.h"

namespace scrivo {
namespace {

std::atomic<long> references = 0;

}  // namespace

ModuleReference::ModuleReference() { ++references; }

ModuleReference::~ModuleReference() { --references; }

void LockModule(bool locked) { references += locked ? 1 : -1; }

bool CanUnloadModule() { return references == 0 && DispatchObject::LiveObjects() == 0; }

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

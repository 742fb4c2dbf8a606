#pragma once

#include <utility>
#include <vector>

#include "com/win32/com_ptr.h"
#include "com/win32/dispatch_table.h"
#include "com/win32/variant.h"

namespace scrivo {

// An object that serves its members by name (IDispatch) from a table, as strictly as the system's
// own servers: unknown names, wrong kinds of call, counts and types of arguments fail with the
// DISP_E code that Automation has for them. No exception leaves it. Made by MakeObject, destroyed
// by its last Release.
class DispatchObject : public IDispatch {
 public:
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  // There is no type information: callers go by names.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  // The first name is a member, the others are its parameters, whatever their case.
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  // Arguments for a property that takes none go to the default member of what it gives, so that
  // Files("a.htm") is an item of Files.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID interface_id, LCID locale, WORD kinds,
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrong_argument) override;

  // How many objects of this module live, and how many references to them are held.
  static long LiveObjects();
  static long LiveReferences();

 protected:
  DispatchObject();
  virtual ~DispatchObject();

  // The members; the same table for the object's whole life.
  virtual const DispatchTable& Members() const = 0;
  // Another interface of the object, without a reference for the caller; null when it has none
  // with this id.
  virtual void* OtherInterface(REFIID) { return nullptr; }
  // Called before a member's body; may throw as a body may.
  virtual void Entering(const DispatchMember&) {}

 private:
  Variant Run(const DispatchMember& member, const DISPPARAMS& arguments);

  LONG references_ = 1;
};

// Makes an object that serves by name; the caller owns its first reference.
template <typename Object, typename... Arguments>
ComPtr<Object> MakeObject(Arguments&&... arguments) {
  return ComPtr<Object>::Take(new Object(std::forward<Arguments>(arguments)...));
}

// What "for each" asks a collection for (DISPID_NEWENUM): an IEnumVARIANT over these items, as
// VT_UNKNOWN.
Variant EnumeratorOver(std::vector<Variant> items);

}  // namespace scrivo

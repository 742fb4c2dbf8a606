#pragma once

#include <vector>

#include "tests/com/win32/scripted_object.h"

namespace scrivo {

using ScriptedObjects = std::vector<ComPtr<ScriptedObject>>;

// What hands out the items of a collection one after another, right or wrong.
class ScriptedEnumerator : public IEnumVARIANT {
 public:
  explicit ScriptedEnumerator(ScriptedObjects items) : items_(std::move(items)) { ++Living(); }
  static long& Living() {
    static long living = 0;
    return living;
  }

  std::size_t fails_at = ~std::size_t{0};  // the item that cannot be had
  VARTYPE type = VT_DISPATCH;              // of its items

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool has = id == IID_IUnknown || id == IID_IEnumVARIANT;
    *object = has ? this : nullptr;
    if (has) AddRef();
    return has ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* got) override {
    ULONG given = 0;
    for (; given < count && next_ < items_.size(); ++given, ++next_) {
      if (next_ == fails_at) return E_FAIL;
      values[given].vt = type;
      values[given].pdispVal = ComPtr<ScriptedObject>(items_[next_]).Detach();
    }
    if (got) *got = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  virtual ~ScriptedEnumerator() { --Living(); }

  ULONG references_ = 1;
  ScriptedObjects items_;
  std::size_t next_ = 0;
};

// A collection that can be enumerated only.
inline ComPtr<ScriptedObject> Enumerable(const ScriptedObjects& items) {
  ComPtr<ScriptedObject> collection = ScriptedObject::Make();
  collection->OnId(DISPID_NEWENUM, [items](ScriptedCall& call) {
    call.result->vt = VT_UNKNOWN;
    call.result->punkVal = new ScriptedEnumerator(items);
    return S_OK;
  });
  return collection;
}

// A collection that can be counted only; its first item has the number 0.
inline ComPtr<ScriptedObject> Countable(const ScriptedObjects& items) {
  ComPtr<ScriptedObject> collection = ScriptedObject::Make();
  collection->Gives(L"Count", PlainVariant(VT_I4, static_cast<long long>(items.size())));
  collection->On(L"Item", [items](ScriptedCall& call) {
    const std::size_t index = static_cast<std::size_t>(call.Argument(0).lVal);
    if (call.Argument(0).vt != VT_I4 || index >= items.size()) return DISP_E_BADINDEX;
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = ComPtr<ScriptedObject>(items[index]).Detach();
    return S_OK;
  });
  return collection;
}

// So many objects, numbered by their "Url".
inline ScriptedObjects NumberedObjects(int count) {
  ScriptedObjects objects;
  for (int i = 0; i < count; ++i) {
    objects.push_back(ScriptedObject::Make());
    objects.back()->Gives(L"Url", PlainVariant(VT_I4, i));
  }
  return objects;
}

}  // namespace scrivo

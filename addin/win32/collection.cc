#include "addin/win32/collection.h"

#include "com/win32/com_error.h"
#include "system/error.h"

namespace scrivo {
namespace {

LateBound RequireObject(const Variant& item) {
  LateBound object = ObjectOf(item);
  if (!object)
    throw Error(kObjectNotSet, "Automation", "A collection holds an item that is not an object");
  return object;
}

// The collection's enumerator, null when it has none.
ComPtr<IEnumVARIANT> EnumeratorOf(const LateBound& collection) {
  try {
    const Variant enumerator = collection.GetById(DISPID_NEWENUM);
    if (enumerator.Type() != VT_UNKNOWN && enumerator.Type() != VT_DISPATCH) return {};
    return ComPtr<IUnknown>::Share(enumerator.get().punkVal).Query<IEnumVARIANT>(IID_IEnumVARIANT);
  } catch (const Error&) {
    return {};
  }
}

std::vector<LateBound> Enumerated(IEnumVARIANT& enumerator) {
  std::vector<LateBound> items;
  for (;;) {
    Variant item;
    ULONG got = 0;
    const HRESULT result = enumerator.Next(1, item.Put(), &got);
    if (FAILED(result)) RaiseComError(result, "the next item of a collection");
    if (result != S_OK || got == 0) return items;
    items.push_back(RequireObject(item));
  }
}

// The web's collections number their items from 0.
std::vector<LateBound> Counted(const LateBound& collection) {
  std::vector<LateBound> items;
  const std::int32_t count = NumberOf(collection.Get(L"Count"));
  for (std::int32_t i = 0; i < count; ++i) {
    items.push_back(RequireObject(ItemOf(collection, Variant::Long(i))));
  }
  return items;
}

}  // namespace

std::vector<LateBound> ItemsOf(const LateBound& collection) {
  if (!collection) return {};
  const ComPtr<IEnumVARIANT> enumerator = EnumeratorOf(collection);
  return enumerator ? Enumerated(*enumerator) : Counted(collection);
}

Variant ItemOf(const LateBound& collection, const Variant& key) {
  // "Item" is the default member of every collection; some know it without the name.
  try {
    return collection.Get(L"Item", key);
  } catch (const Error& error) {
    if (error.number != kObjectDoesNotSupportThis) throw;
  }
  return collection.GetById(DISPID_VALUE, key);
}

}  // namespace scrivo

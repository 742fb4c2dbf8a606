#include "com/win32/dispatch_call.h"

#include <algorithm>
#include <vector>

#include "platform/win32/wide.h"
#include "system/error.h"

namespace scrivo {
namespace {

struct Meaning {
  HRESULT result;
  std::int32_t number;
};

const Meaning kMeanings[] = {
    {DISP_E_UNKNOWNNAME, kObjectDoesNotSupportThis},
    {DISP_E_MEMBERNOTFOUND, kObjectDoesNotSupportThis},
    {DISP_E_TYPEMISMATCH, kTypeMismatch},
    {DISP_E_OVERFLOW, kOverflow},
    {E_OUTOFMEMORY, kOutOfMemory},
};

// The system's text for a code, without its line end and point; "" when it has none.
std::string SystemText(HRESULT result) {
  wchar_t text[512] = L"";
  DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(result), 0, text, 512, nullptr);
  while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) --length;
  return Narrow(std::wstring_view(text, length));
}

// What an object says about the error that it raises; owns its texts.
class RaisedError {
 public:
  RaisedError() = default;
  RaisedError(const RaisedError&) = delete;
  RaisedError& operator=(const RaisedError&) = delete;
  ~RaisedError() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* Put() { return &info_; }

  [[noreturn]] void Throw(const std::string& member) {
    if (info_.pfnDeferredFillIn) info_.pfnDeferredFillIn(&info_);
    const HRESULT code = info_.scode != 0 ? info_.scode : static_cast<HRESULT>(info_.wCode);
    if (code == 0) RaiseComError(DISP_E_EXCEPTION, member);
    throw Error(ErrorNumberOf(code), TextOf(info_.bstrSource), TextOf(info_.bstrDescription));
  }

 private:
  EXCEPINFO info_{};
};

// The system's functions only read from it, which their older declarations do not say.
VARIANT* SourceOf(const Variant& value) { return const_cast<VARIANT*>(&value.get()); }

// `value` as a value of `type`; what it refers to when it is a reference.
Variant Converted(const Variant& value, VARTYPE type) {
  Variant converted;
  const HRESULT result = VariantChangeType(converted.Put(), SourceOf(value), 0, type);
  if (FAILED(result)) RaiseComError(result, "the value of a member");
  return converted;
}

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

std::int32_t ErrorNumberOf(HRESULT result) {
  constexpr auto kRunTimeErrors = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 0);
  const bool is_run_time_error = (result & ~0xFFFF) == kRunTimeErrors;
  return static_cast<std::int32_t>(is_run_time_error ? result & 0xFFFF : result);
}

void RaiseComError(HRESULT result, const std::string& subject) {
  std::int32_t number = ErrorNumberOf(result);
  for (const Meaning& meaning : kMeanings) {
    if (meaning.result == result) number = meaning.number;
  }
  std::string text = SystemText(result);
  if (text.empty()) text = "Automation error";
  text.append(": ").append(subject);
  throw Error(number, "Automation", text);
}

DISPID LateBound::Find(const wchar_t* member) const {
  if (!object_)
    throw Error(kObjectNotSet, "Automation", "There is no object for " + Narrow(member));
  auto name = const_cast<wchar_t*>(member);
  DISPID id = DISPID_UNKNOWN;
  const HRESULT result = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(result)) RaiseComError(result, Narrow(member));
  return id;
}

Variant LateBound::Invoke(DISPID id, WORD flags, std::initializer_list<VARIANT> arguments,
                          const std::string& name) const {
  if (!object_) throw Error(kObjectNotSet, "Automation", "There is no object for " + name);
  std::vector<VARIANT> last_first(arguments);
  std::reverse(last_first.begin(), last_first.end());
  DISPPARAMS parameters{};
  parameters.rgvarg = last_first.data();
  parameters.cArgs = static_cast<UINT>(last_first.size());
  DISPID put = DISPID_PROPERTYPUT;
  if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  Variant value;
  RaisedError raised;
  UINT wrong_argument = 0;
  const HRESULT result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                         flags & DISPATCH_PROPERTYGET ? value.Put() : nullptr,
                                         raised.Put(), &wrong_argument);
  if (result == DISP_E_EXCEPTION) raised.Throw(name);
  if (FAILED(result)) RaiseComError(result, name);
  return value;
}

void LateBound::Put(const wchar_t* member, const Variant& value) const {
  const WORD flags = value.Type() == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
  Invoke(Find(member), flags, {value.get()}, Narrow(member));
}

std::string TextOf(const Variant& value) { return TextOf(Converted(value, VT_BSTR).get().bstrVal); }

std::int32_t NumberOf(const Variant& value) { return Converted(value, VT_I4).get().lVal; }

bool TruthOf(const Variant& value) {
  return Converted(value, VT_BOOL).get().boolVal != VARIANT_FALSE;
}

LateBound ObjectOf(const Variant& value) {
  Variant direct;
  const HRESULT result = VariantCopyInd(direct.Put(), SourceOf(value));
  if (FAILED(result)) RaiseComError(result, "the value of a member");
  switch (direct.Type()) {
    case VT_EMPTY:
    case VT_NULL:
      return LateBound();
    case VT_DISPATCH:
      return LateBound(ComPtr<IDispatch>::Share(direct.get().pdispVal));
    case VT_UNKNOWN: {
      const auto unknown = ComPtr<IUnknown>::Share(direct.get().punkVal);
      ComPtr<IDispatch> object = unknown.Query<IDispatch>(IID_IDispatch);
      if (unknown && !object)
        RaiseComError(E_NOINTERFACE, "an object that cannot be called by name");
      return LateBound(std::move(object));
    }
    default:
      RaiseComError(DISP_E_TYPEMISMATCH, "a value where an object is expected");
  }
}

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

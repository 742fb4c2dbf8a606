#include "com/win32/dispatch_call.h"

#include <algorithm>
#include <vector>

#include "com/win32/com_error.h"
#include "system/error.h"

namespace scrivo {
namespace {

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

}  // namespace

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

}  // namespace scrivo

#include "com/win32/dispatch_object.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <memory>
#include <new>
#include <utility>

#include "com/win32/com_ptr.h"
#include "system/error.h"

namespace scrivo {
namespace {

std::atomic<long> live_objects{0};
std::atomic<long> live_references{0};

// What Automation's callers take out of an Error: run-time errors are numbered in a range of their
// own, all others are HRESULTs as they are.
void Describe(const Error& error, EXCEPINFO* exception) {
  *exception = EXCEPINFO{};
  exception->scode =
      error.number > 0 && error.number <= 0xffff
          ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<WORD>(error.number))
          : error.number;
  if (exception->scode == 0) exception->scode = E_FAIL;
  const std::wstring source = Wide(error.source), description = Wide(error.description);
  exception->bstrSource = SysAllocStringLen(source.data(), static_cast<UINT>(source.size()));
  exception->bstrDescription =
      SysAllocStringLen(description.data(), static_cast<UINT>(description.size()));
}

bool IsSameName(const wchar_t* one, const wchar_t* other) {
  return CompareStringOrdinal(one, -1, other, -1, TRUE) == CSTR_EQUAL;
}

// Clones share the items; each has its own place in them.
class EnumVariant : public IEnumVARIANT {
 public:
  using Items = std::shared_ptr<const std::vector<Variant>>;

  EnumVariant(Items items, std::size_t next) : items_(std::move(items)), next_(next) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = id == IID_IUnknown || id == IID_IEnumVARIANT ? this : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
    if (!values || (!fetched && count != 1)) return E_POINTER;
    ULONG given = 0;
    HRESULT result = S_OK;
    for (; given < count && next_ < items_->size(); ++given, ++next_) {
      VariantInit(&values[given]);
      // The headers forget that the source stays as it is.
      result = VariantCopy(&values[given], const_cast<VARIANT*>(&(*items_)[next_].get()));
      if (FAILED(result)) break;
    }
    if (FAILED(result)) {
      next_ -= given;
      while (given > 0) VariantClear(&values[--given]);
    } else if (given < count) {
      result = S_FALSE;
    }
    if (fetched) *fetched = given;
    return result;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = items_->size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) override {
    if (!clone) return E_POINTER;
    *clone = new (std::nothrow) EnumVariant(items_, next_);
    return *clone ? S_OK : E_OUTOFMEMORY;
  }

 private:
  virtual ~EnumVariant() = default;

  const Items items_;
  std::size_t next_;
  LONG references_ = 1;
};

}  // namespace

const DispatchMember* DispatchTable::Find(DISPID id, WORD kinds) const {
  for (const DispatchMember& member : members_) {
    if (member.id == id && (member.kind & kinds) != 0) return &member;
  }
  return nullptr;
}

const DispatchMember* DispatchTable::Find(const wchar_t* name) const {
  for (const DispatchMember& member : members_) {
    if (IsSameName(member.name, name)) return &member;
  }
  return nullptr;
}

DISPID DispatchTable::FindParameter(DISPID id, const wchar_t* name) const {
  for (const DispatchMember& member : members_) {
    if (member.id != id) continue;
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
      if (IsSameName(member.parameters[i].name, name)) return static_cast<DISPID>(i);
    }
  }
  return DISPID_UNKNOWN;
}

DispatchObject::DispatchObject() {
  ++live_objects;
  ++live_references;
}

DispatchObject::~DispatchObject() { --live_objects; }

long DispatchObject::LiveObjects() { return live_objects; }

long DispatchObject::LiveReferences() { return live_references; }

HRESULT DispatchObject::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = id == IID_IUnknown || id == IID_IDispatch ? static_cast<IDispatch*>(this)
                                                      : OtherInterface(id);
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG DispatchObject::AddRef() {
  ++live_references;
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG DispatchObject::Release() {
  --live_references;
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT DispatchObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT DispatchObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT DispatchObject::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids || count == 0) return E_INVALIDARG;
  const DispatchMember* member = Members().Find(names[0]);
  ids[0] = member ? member->id : DISPID_UNKNOWN;
  bool all_known = member != nullptr;
  for (UINT i = 1; i < count; ++i) {
    ids[i] = member ? Members().FindParameter(member->id, names[i]) : DISPID_UNKNOWN;
    all_known = all_known && ids[i] != DISPID_UNKNOWN;
  }
  return all_known ? S_OK : DISP_E_UNKNOWNNAME;
}

Variant DispatchObject::Run(const DispatchMember& member, const DISPPARAMS& arguments) {
  const bool takes_value = (member.kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  const DispatchArguments bound(member.parameters, arguments, takes_value);
  Entering(member);
  return member.body(*this, bound);
}

HRESULT DispatchObject::Invoke(DISPID id, REFIID interface_id, LCID locale, WORD kinds,
                               DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                               UINT* wrong_argument) {
  if (interface_id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!arguments) return E_INVALIDARG;
  const auto self = ComPtr<IDispatch>::Share(this);  // a body may let go of the last reference
  try {
    const DispatchMember* member = Members().Find(id, kinds);
    if (!member) throw DispatchFailure{DISP_E_MEMBERNOTFOUND};
    const bool is_item =
        member->kind == DISPATCH_PROPERTYGET && member->parameters.empty() && arguments->cArgs > 0;
    DISPPARAMS none{};
    Variant value = Run(*member, is_item ? none : *arguments);
    if (is_item) {
      if (value.Type() != VT_DISPATCH || !value.get().pdispVal) return DISP_E_BADPARAMCOUNT;
      const HRESULT code = value.get().pdispVal->Invoke(
          DISPID_VALUE, interface_id, locale, kinds, arguments, result, exception, wrong_argument);
      return code == DISP_E_MEMBERNOTFOUND ? DISP_E_BADPARAMCOUNT : code;
    }
    if (result) *result = value.Detach();
    return S_OK;
  } catch (const DispatchFailure& failure) {
    if (wrong_argument && failure.argument != DispatchFailure::kNoArgument) {
      *wrong_argument = failure.argument;
    }
    return failure.code;
  } catch (...) {
    if (exception) Describe(ErrorFrom(std::current_exception()), exception);
    return DISP_E_EXCEPTION;
  }
}

Variant EnumeratorOver(std::vector<Variant> items) {
  auto shared = std::make_shared<const std::vector<Variant>>(std::move(items));
  const auto enumerator = ComPtr<IUnknown>::Take(new EnumVariant(std::move(shared), 0));
  return Variant::Unknown(enumerator.get());
}

}  // namespace scrivo

#include "com/win32/dispatch_arguments.h"

#include "com/win32/com_ptr.h"

namespace scrivo {
namespace {

// Conversions between text and numbers must not depend on who runs the program.
constexpr LCID kEnglish = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

bool IsLeftOut(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

bool HoldsObject(const VARIANT& value) { return value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN; }

Variant AsObject(const VARIANT& value, UINT position) {
  if (!HoldsObject(value)) throw DispatchFailure{DISP_E_TYPEMISMATCH, position};
  if (!value.punkVal) return Variant::Object(nullptr);
  const auto object = ComPtr<IUnknown>::Share(value.punkVal).Query<IDispatch>(IID_IDispatch);
  if (!object) throw DispatchFailure{DISP_E_TYPEMISMATCH, position};
  return Variant::Object(object.get());
}

Variant ConvertedArgument(const VARIANT& given, VARTYPE type, UINT position) {
  Variant value;
  // The headers forget that the source stays as it is.
  const HRESULT copied = VariantCopyInd(value.Put(), const_cast<VARIANT*>(&given));
  if (FAILED(copied)) throw DispatchFailure{copied, position};
  if (type == VT_VARIANT || (value.Type() == type && !HoldsObject(value.get()))) return value;
  if (type == VT_DISPATCH) return AsObject(value.get(), position);
  if (HoldsObject(value.get())) throw DispatchFailure{DISP_E_TYPEMISMATCH, position};
  Variant converted;
  const HRESULT result = VariantChangeTypeEx(converted.Put(), const_cast<VARIANT*>(&value.get()),
                                             kEnglish, VARIANT_NOVALUEPROP, type);
  if (FAILED(result)) throw DispatchFailure{result, position};
  return converted;
}

// Which element of rgvarg belongs to each parameter; kNoArgument where none does.
std::vector<UINT> Places(std::size_t parameters, const DISPPARAMS& given, bool takes_value) {
  if (given.cNamedArgs > given.cArgs) throw DispatchFailure{DISP_E_BADPARAMCOUNT};
  std::vector<UINT> places(parameters, DispatchFailure::kNoArgument);
  const std::size_t by_position = given.cArgs - given.cNamedArgs;
  const std::size_t plain = takes_value ? parameters - 1 : parameters;
  if (by_position > plain) throw DispatchFailure{DISP_E_BADPARAMCOUNT};
  for (std::size_t i = 0; i < by_position; ++i) {
    places[i] = given.cArgs - 1 - static_cast<UINT>(i);
  }
  for (UINT i = 0; i < given.cNamedArgs; ++i) {
    const DISPID id = given.rgdispidNamedArgs[i];
    std::size_t parameter = parameters;
    if (takes_value && id == DISPID_PROPERTYPUT) {
      parameter = parameters - 1;
    } else if (id >= 0 && static_cast<std::size_t>(id) < plain) {
      parameter = static_cast<std::size_t>(id);
    }
    if (parameter == parameters || places[parameter] != DispatchFailure::kNoArgument) {
      throw DispatchFailure{DISP_E_PARAMNOTFOUND, i};
    }
    places[parameter] = i;
  }
  return places;
}

}  // namespace

DispatchArguments::DispatchArguments(const std::vector<DispatchParameter>& parameters,
                                     const DISPPARAMS& given, bool takes_value)
    : positions_(Places(parameters.size(), given, takes_value)) {
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const UINT position = positions_[i];
    if (position == DispatchFailure::kNoArgument) {
      if (!parameters[i].optional) throw DispatchFailure{DISP_E_BADPARAMCOUNT};
      values_.push_back(Variant::Omitted());
    } else if (IsLeftOut(given.rgvarg[position])) {
      if (!parameters[i].optional) throw DispatchFailure{DISP_E_PARAMNOTOPTIONAL, position};
      values_.push_back(Variant::Omitted());
    } else {
      values_.push_back(ConvertedArgument(given.rgvarg[position], parameters[i].type, position));
    }
  }
}

std::string DispatchArguments::Text(std::size_t index) const {
  return Has(index) ? TextOf(Value(index).bstrVal) : "";
}

}  // namespace scrivo

#pragma once

#include <string>
#include <vector>

#include "com/win32/variant.h"

namespace scrivo {

// One parameter of a member that is served by name.
struct DispatchParameter {
  const wchar_t* name;
  // VT_BSTR, VT_I4, VT_BOOL, VT_DISPATCH, or VT_VARIANT for anything.
  VARTYPE type;
  bool optional = false;
};

// A failure that is the caller's: a DISP_E code, and which argument is meant.
struct DispatchFailure {
  static constexpr UINT kNoArgument = ~0u;

  HRESULT code;
  UINT argument = kNoArgument;  // its index in DISPPARAMS::rgvarg
};

// The arguments of one call, in the order of the parameters and of their types.
class DispatchArguments {
 public:
  // Binds a caller's arguments to the parameters as the system's own servers do: positions and
  // names are followed, values are converted where Automation has a conversion. `takes_value`: the
  // last parameter is a property's new value. Throws DispatchFailure.
  DispatchArguments(const std::vector<DispatchParameter>& parameters, const DISPPARAMS& given,
                    bool takes_value);

  std::size_t Count() const { return values_.size(); }
  // Whether an optional argument was given.
  bool Has(std::size_t index) const { return values_[index].Type() != VT_ERROR; }
  // The argument as it is; VT_ERROR when it was left out.
  const VARIANT& Value(std::size_t index) const { return values_[index].get(); }
  // The value of a VT_BSTR parameter as ANSI text; "" when it was left out.
  std::string Text(std::size_t index) const;
  // The value of a VT_I4 parameter; 0 when it was left out.
  LONG Long(std::size_t index) const { return Has(index) ? Value(index).lVal : 0; }
  // The value of a VT_BOOL parameter; false when it was left out.
  bool Boolean(std::size_t index) const {
    return Has(index) && Value(index).boolVal != VARIANT_FALSE;
  }
  // The value of a VT_DISPATCH parameter, null also when it was left out. Not owned.
  IDispatch* Object(std::size_t index) const {
    return Has(index) ? Value(index).pdispVal : nullptr;
  }
  // An argument's index in the caller's DISPPARAMS::rgvarg, for a DispatchFailure about it.
  UINT Position(std::size_t index) const { return positions_[index]; }

 private:
  std::vector<Variant> values_;
  std::vector<UINT> positions_;
};

}  // namespace scrivo

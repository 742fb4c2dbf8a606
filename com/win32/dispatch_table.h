#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "com/win32/dispatch_arguments.h"

namespace scrivo {

class DispatchObject;

// One member that an object serves by name: a method, or one direction of a property.
struct DispatchMember {
  DISPID id;
  const wchar_t* name;
  WORD kind;  // one of the DISPATCH_ values
  std::vector<DispatchParameter> parameters;
  // Gives the result, empty when there is none. May throw Error, which the caller sees as the
  // server's own failure, or DispatchFailure.
  std::function<Variant(DispatchObject& self, const DispatchArguments& arguments)> body;
};

// The members of a class of objects. A property that can be read and written is two members with
// one name and one id.
class DispatchTable {
 public:
  const std::vector<DispatchMember>& Members() const { return members_; }
  void Add(DispatchMember member) { members_.push_back(std::move(member)); }
  // The member with this id that may be called in one of these ways; null when there is none.
  const DispatchMember* Find(DISPID id, WORD kinds) const;
  // The first member with this name, whatever its case; null when there is none.
  const DispatchMember* Find(const wchar_t* name) const;
  // The position of a parameter among those of the members with this id; -1 when there is none.
  DISPID FindParameter(DISPID id, const wchar_t* name) const;

 private:
  std::vector<DispatchMember> members_;
};

// Writes the table of one class; bodies get the object as what it is.
template <typename Object>
class DispatchTableOf : public DispatchTable {
 public:
  using Body = Variant (*)(Object& self, const DispatchArguments& arguments);
  using Action = void (*)(Object& self, const DispatchArguments& arguments);
  using Parameters = std::vector<DispatchParameter>;

  // Takes over the members of a base class.
  DispatchTableOf& Include(const DispatchTable& base) {
    for (const DispatchMember& member : base.Members()) Add(member);
    return *this;
  }
  DispatchTableOf& Get(DISPID id, const wchar_t* name, Body body) {
    return Get(id, name, {}, body);
  }
  DispatchTableOf& Get(DISPID id, const wchar_t* name, Parameters parameters, Body body) {
    return AddBody(id, name, DISPATCH_PROPERTYGET, std::move(parameters), body);
  }
  // The new value is the only argument.
  DispatchTableOf& Put(DISPID id, const wchar_t* name, VARTYPE type, Action body) {
    return AddAction(id, name, DISPATCH_PROPERTYPUT, {{L"Value", type}}, body);
  }
  DispatchTableOf& PutRef(DISPID id, const wchar_t* name, Action body) {
    return AddAction(id, name, DISPATCH_PROPERTYPUTREF, {{L"Value", VT_DISPATCH}}, body);
  }
  DispatchTableOf& Method(DISPID id, const wchar_t* name, Parameters parameters, Body body) {
    return AddBody(id, name, DISPATCH_METHOD, std::move(parameters), body);
  }
  DispatchTableOf& Call(DISPID id, const wchar_t* name, Parameters parameters, Action body) {
    return AddAction(id, name, DISPATCH_METHOD, std::move(parameters), body);
  }

 private:
  DispatchTableOf& AddBody(DISPID id, const wchar_t* name, WORD kind, Parameters parameters,
                           Body body) {
    Add({id, name, kind, std::move(parameters),
         [body](DispatchObject& self, const DispatchArguments& arguments) {
           return body(static_cast<Object&>(self), arguments);
         }});
    return *this;
  }
  DispatchTableOf& AddAction(DISPID id, const wchar_t* name, WORD kind, Parameters parameters,
                             Action body) {
    Add({id, name, kind, std::move(parameters),
         [body](DispatchObject& self, const DispatchArguments& arguments) {
           body(static_cast<Object&>(self), arguments);
           return Variant();
         }});
    return *this;
  }
};

}  // namespace scrivo

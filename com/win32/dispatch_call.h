#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "com/win32/com_ptr.h"
#include "com/win32/variant.h"

namespace scrivo {

// Raises the Error that stands for a failed HRESULT. Its number is the run-time error of the same
// meaning where there is one (an unknown member is kObjectDoesNotSupportThis), else the HRESULT;
// its description is the system's text and `subject`, what the failed call was about.
[[noreturn]] void RaiseComError(HRESULT result, const std::string& subject);

// The number of an error that an object has raised itself: codes that carry a run-time error
// number (0x800A….) give that number, all others stay.
std::int32_t ErrorNumberOf(HRESULT result);

// An object of somebody else's that is called by name, or none. Every failure is an Error: the
// number, source and description that the object raised itself, else as RaiseComError makes it.
// Calling none raises kObjectNotSet.
class LateBound {
 public:
  LateBound() = default;
  explicit LateBound(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  explicit operator bool() const { return static_cast<bool>(object_); }
  IDispatch* get() const { return object_.get(); }

  // The value of a property, or the result of a method, of these arguments in their order. An
  // optional argument that is left out before another stands in the list as Variant::Omitted().
  template <typename... Arguments>
  Variant Get(const wchar_t* member, const Arguments&... arguments) const {
    return Invoke(Find(member), DISPATCH_PROPERTYGET | DISPATCH_METHOD, {arguments.get()...},
                  Narrow(member));
  }
  // The same for the default member, or another with a fixed number.
  template <typename... Arguments>
  Variant GetById(DISPID id, const Arguments&... arguments) const {
    return Invoke(id, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {arguments.get()...},
                  "member " + std::to_string(id));
  }
  // Calls a method for what it does.
  template <typename... Arguments>
  void Call(const wchar_t* member, const Arguments&... arguments) const {
    Invoke(Find(member), DISPATCH_METHOD, {arguments.get()...}, Narrow(member));
  }
  // Sets a property: an object by reference, anything else by value.
  void Put(const wchar_t* member, const Variant& value) const;

 private:
  DISPID Find(const wchar_t* member) const;
  Variant Invoke(DISPID id, WORD flags, std::initializer_list<VARIANT> arguments,
                 const std::string& name) const;

  ComPtr<IDispatch> object_;
};

// What a result means. A value of another type is converted as the system does it; one that cannot
// be is kTypeMismatch.

std::string TextOf(const Variant& value);
std::int32_t NumberOf(const Variant& value);
bool TruthOf(const Variant& value);
// None for nothing in any form: empty, null, a reference to no object.
LateBound ObjectOf(const Variant& value);

// The objects of one of the host's collections, in its order, read out before anything is done
// with them. No collection has none. An item that is not an object raises Error.
std::vector<LateBound> ItemsOf(const LateBound& collection);

// A collection's item by a key of its own: a name, a caption or a position.
Variant ItemOf(const LateBound& collection, const Variant& key);

// ItemsOf, each as a `Wrapper` behind `Item`.
template <typename Wrapper, typename Item>
std::vector<std::shared_ptr<Item>> WrappedItems(const LateBound& collection) {
  std::vector<std::shared_ptr<Item>> items;
  for (LateBound& object : ItemsOf(collection)) {
    items.push_back(std::make_shared<Wrapper>(std::move(object)));
  }
  return items;
}

}  // namespace scrivo

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "com/win32/dispatch_object.h"
#include "host/session.h"

namespace scrivo::host {

class HostWorld;

// The number of failures that an argument's value causes.
constexpr std::int32_t kBadArgument = static_cast<std::int32_t>(E_INVALIDARG);

// An object of the host's object model. It is counted in its world, each call of a member is
// told to the world first, and it keeps the world alive: an add-in may hold it for longer than the
// host runs.
class HostObject : public DispatchObject {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // What the object stands for as a base of addresses.
  struct Base {
    std::string address;
    bool is_folder = false;
  };
  // Throws DispatchFailure (a type mismatch) for an object that is not a base; the caller completes
  // which argument is meant.
  virtual Base AsBase() { throw DispatchFailure{DISP_E_TYPEMISMATCH}; }

 protected:
  // `class_name` is the object's in the object model; a literal.
  HostObject(std::shared_ptr<HostWorld> world, const char* class_name);
  ~HostObject() override;

  void Entering(const DispatchMember& member) override;

  // "Application" and "Parent", which every object has.
  static const DispatchTable& CommonMembers();
  // What "Parent" gives: the application unless a class knows better.
  virtual Variant Parent();

  const std::shared_ptr<HostWorld> world_;

 private:
  const char* const class_name_;
};

// A collection: its items by number and, where the class finds them, by name.
class HostCollection : public HostObject {
 protected:
  // `first` is the number of the first item: 0 in FrontPage's collections, 1 in Office's.
  HostCollection(std::shared_ptr<HostWorld> world, const char* class_name, LONG first)
      : HostObject(std::move(world), class_name), first_(first) {}

  // "Item", "Count" and the enumerator.
  static const DispatchTable& CollectionMembers();
  // "Count" and the enumerator, for those whose "Item" is not a property.
  static const DispatchTable& CountingMembers();

  virtual std::size_t Count() = 0;
  virtual Variant ItemAt(std::size_t index) = 0;
  // What an enumerator gives for an item.
  virtual Variant Enumerated(std::size_t index) { return ItemAt(index); }
  // The item with this name. Throws when there is none, or, as here, when names are not taken.
  virtual Variant ItemNamed(const std::string&) { throw DispatchFailure{DISP_E_TYPEMISMATCH, 0}; }

  // The item that an argument means by number or name. Throws Error when there is none.
  Variant ItemOf(const DispatchArguments& arguments, std::size_t argument);
  // The position from 0 of the item that a number means. Throws Error when there is none.
  std::size_t IndexOf(LONG number);

 private:
  const LONG first_;
};

}  // namespace scrivo::host

#include "host/win32/host_object.h"

#include "com/win32/dispatch_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {

HostObject::HostObject(std::shared_ptr<HostWorld> world, const char* class_name)
    : world_(std::move(world)), class_name_(class_name) {
  world_->objects.insert(this);
  ++world_->references;
}

HostObject::~HostObject() { world_->objects.erase(this); }

ULONG HostObject::AddRef() {
  ++world_->references;
  return DispatchObject::AddRef();
}

ULONG HostObject::Release() {
  const std::shared_ptr<HostWorld> world = world_;
  --world->references;
  return DispatchObject::Release();
}

void HostObject::Entering(const DispatchMember& member) {
  if (!world_->before_call) return;
  world_->before_call(std::string(class_name_) + "." + Narrow(std::wstring_view(member.name)));
}

Variant HostObject::Parent() { return ApplicationOf(world_); }

const DispatchTable& HostObject::CommonMembers() {
  static const auto table =
      DispatchTableOf<HostObject>()
          .Get(
              1000, L"Application",
              [](HostObject& self, const DispatchArguments&) { return ApplicationOf(self.world_); })
          .Get(1001, L"Parent",
               [](HostObject& self, const DispatchArguments&) { return self.Parent(); });
  return table;
}

std::size_t HostCollection::IndexOf(LONG number) {
  if (number < first_ || static_cast<std::size_t>(number - first_) >= Count()) {
    throw HostError("There is no item " + std::to_string(number) + ".", kBadArgument);
  }
  return static_cast<std::size_t>(number - first_);
}

Variant HostCollection::ItemOf(const DispatchArguments& arguments, std::size_t argument) {
  const VARIANT& key = arguments.Value(argument);
  try {
    if (key.vt == VT_BSTR) return ItemNamed(TextOf(key.bstrVal));
    Variant number;
    const bool is_number = key.vt == VT_I2 || key.vt == VT_I4 || key.vt == VT_UI1 ||
                           key.vt == VT_UI2 || key.vt == VT_UI4 || key.vt == VT_INT ||
                           key.vt == VT_UINT || key.vt == VT_I8 || key.vt == VT_R4 ||
                           key.vt == VT_R8;
    if (!is_number ||
        FAILED(VariantChangeType(number.Put(), const_cast<VARIANT*>(&key), 0, VT_I4))) {
      throw DispatchFailure{DISP_E_TYPEMISMATCH};
    }
    return ItemAt(IndexOf(number.get().lVal));
  } catch (const DispatchFailure& failure) {
    throw DispatchFailure{failure.code, arguments.Position(argument)};
  }
}

const DispatchTable& HostCollection::CountingMembers() {
  static const auto table =
      DispatchTableOf<HostCollection>()
          .Include(CommonMembers())
          .Get(1, L"Count",
               [](HostCollection& self, const DispatchArguments&) {
                 return Variant::Long(static_cast<LONG>(self.Count()));
               })
          .Get(DISPID_NEWENUM, L"_NewEnum", [](HostCollection& self, const DispatchArguments&) {
            std::vector<Variant> items;
            for (std::size_t i = 0; i < self.Count(); ++i) items.push_back(self.Enumerated(i));
            return EnumeratorOver(std::move(items));
          });
  return table;
}

const DispatchTable& HostCollection::CollectionMembers() {
  static const auto table = DispatchTableOf<HostCollection>()
                                .Include(CountingMembers())
                                .Get(DISPID_VALUE, L"Item", {{L"Index", VT_VARIANT}},
                                     [](HostCollection& self, const DispatchArguments& arguments) {
                                       return self.ItemOf(arguments, 0);
                                     });
  return table;
}

}  // namespace scrivo::host

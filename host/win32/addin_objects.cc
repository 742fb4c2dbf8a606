#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {
namespace {

class ComAddInObject : public HostObject {
 public:
  ComAddInObject(std::shared_ptr<HostWorld> world, std::shared_ptr<Addin> addin)
      : HostObject(std::move(world), "COMAddIn"), addin_(std::move(addin)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }

  void PutConnect(bool connect) {
    if (connect) {
      world_->addins.Connect(addin_, kAfterStartup);
    } else {
      world_->addins.Disconnect(addin_, kUserClosed);
    }
  }
  void PutObject(IDispatch* object) { addin_->object = ComPtr<IDispatch>::Share(object); }

  static const DispatchTable& Table() {
    using Self = ComAddInObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(DISPID_VALUE, L"Description",
                 [](Self& self, const Arguments&) {
                   return Variant::Text(self.addin_->entry.description);
                 })
            .Put(DISPID_VALUE, L"Description", VT_BSTR,
                 [](Self& self, const Arguments& arguments) {
                   self.addin_->entry.description = arguments.Text(0);
                 })
            .Get(3, L"ProgId",
                 [](Self& self, const Arguments&) {
                   return Variant::Text(self.addin_->entry.prog_id);
                 })
            .Get(4, L"Guid",
                 [](Self& self, const Arguments&) { return Variant::Text(self.addin_->class_id); })
            .Get(6, L"Connect",
                 [](Self& self, const Arguments&) {
                   return Variant::Boolean(self.addin_->IsConnected());
                 })
            .Put(6, L"Connect", VT_BOOL,
                 [](Self& self, const Arguments& arguments) {
                   self.PutConnect(arguments.Boolean(0));
                 })
            .Get(7, L"Object",
                 [](Self& self, const Arguments&) {
                   return Variant::Object(self.addin_->object.get());
                 })
            .Put(
                7, L"Object", VT_DISPATCH,
                [](Self& self, const Arguments& arguments) { self.PutObject(arguments.Object(0)); })
            .PutRef(7, L"Object", [](Self& self, const Arguments& arguments) {
              self.PutObject(arguments.Object(0));
            });
    return table;
  }

  const std::shared_ptr<Addin> addin_;
};

class ComAddInsObject : public HostCollection {
 public:
  explicit ComAddInsObject(std::shared_ptr<HostWorld> world)
      : HostCollection(std::move(world), "COMAddIns", 1) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  std::size_t Count() override { return world_->addins.Addins().size(); }
  Variant ItemAt(std::size_t index) override {
    return ComAddInOf(world_, world_->addins.Addins()[index]);
  }
  Variant ItemNamed(const std::string& name) override {
    if (const auto addin = world_->addins.Find(name)) return ComAddInOf(world_, addin);
    throw HostError("There is no add-in \"" + name + "\".", kBadArgument);
  }

  static const DispatchTable& Table() {
    using Self = ComAddInsObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CountingMembers())
            .Method(
                DISPID_VALUE, L"Item", {{L"Index", VT_VARIANT}},
                [](Self& self, const Arguments& arguments) { return self.ItemOf(arguments, 0); })
            .Call(2, L"Update", {},
                  [](Self& self, const Arguments&) { self.world_->addins.Read(); });
    return table;
  }
};

}  // namespace

Variant ComAddInsOf(const std::shared_ptr<HostWorld>& world) {
  return Variant::Object(MakeObject<ComAddInsObject>(world).get());
}

Variant ComAddInOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Addin>& addin) {
  return Variant::Object(MakeObject<ComAddInObject>(world, addin).get());
}

}  // namespace scrivo::host

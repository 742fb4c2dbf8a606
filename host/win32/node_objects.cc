
#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {
namespace {

using Navigation = std::shared_ptr<const NavigationIndex>;

class NodeObject : public HostObject {
 public:
  NodeObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web,
             Navigation navigation, std::size_t place)
      : HostObject(std::move(world), "NavigationNode"),
        web_(std::move(web)),
        navigation_(std::move(navigation)),
        place_(place) {}

  Base AsBase() override { return {node().Url(), false}; }

 private:
  const DispatchTable& Members() const override { return Table(); }
  void Entering(const DispatchMember& member) override {
    HostObject::Entering(member);
    RequireOpen(*web_);
  }
  Variant Parent() override { return NodeAt(navigation_->At(place_).parent); }

  SiteNode& node() { return *navigation_->At(place_).node; }
  Variant NodeAt(std::size_t place) { return NodeOrNone(world_, web_, navigation_, place); }
  Variant File() {
    return FileOrNone(world_, web_, place_ == NavigationIndex::kRoot ? nullptr : node().File());
  }
  Variant Home() {
    const auto home = web_->Web().HomeNode();
    return NodeAt(home ? navigation_->Find(home.get()) : NavigationIndex::kNone);
  }

  static const DispatchTable& Table() {
    using Self = NodeObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(1, L"Children",
                 [](Self& self, const Arguments&) {
                   return NodesOf(self.world_, self.web_, self.navigation_,
                                  self.navigation_->At(self.place_).children);
                 })
            .Get(2, L"File", [](Self& self, const Arguments&) { return self.File(); })
            .Get(3, L"Label",
                 [](Self& self, const Arguments&) { return Variant::Text(self.node().Label()); })
            .Get(4, L"Url",
                 [](Self& self, const Arguments&) { return Variant::Text(self.node().Url()); })
            .Get(5, L"Web",
                 [](Self& self, const Arguments&) { return WebOrNone(self.world_, self.web_); })
            .Get(6, L"Next",
                 [](Self& self, const Arguments&) {
                   return self.NodeAt(self.navigation_->Sibling(self.place_, 1));
                 })
            .Get(7, L"Prev",
                 [](Self& self, const Arguments&) {
                   return self.NodeAt(self.navigation_->Sibling(self.place_, -1));
                 })
            .Get(8, L"Home", [](Self& self, const Arguments&) { return self.Home(); })
            // Link bars are left out when the tree is read.
            .Get(9, L"IsLinkBar", [](Self&, const Arguments&) { return Variant::Boolean(false); });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;
  const Navigation navigation_;
  const std::size_t place_;
};

class NodesObject : public HostCollection {
 public:
  NodesObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web,
              Navigation navigation, std::vector<std::size_t> places)
      : HostCollection(std::move(world), "NavigationNodes", 0),
        web_(std::move(web)),
        navigation_(std::move(navigation)),
        places_(std::move(places)) {}

 private:
  const DispatchTable& Members() const override { return CollectionMembers(); }
  std::size_t Count() override { return places_.size(); }
  Variant ItemAt(std::size_t index) override {
    return NodeOrNone(world_, web_, navigation_, places_[index]);
  }

  const std::shared_ptr<HostedWeb> web_;
  const Navigation navigation_;
  const std::vector<std::size_t> places_;
};

}  // namespace

Variant NodeOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                   const std::shared_ptr<const NavigationIndex>& navigation, std::size_t place) {
  if (place == NavigationIndex::kNone) return Variant::Object(nullptr);
  return Variant::Object(MakeObject<NodeObject>(world, web, navigation, place).get());
}

Variant NodesOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                const std::shared_ptr<const NavigationIndex>& navigation,
                std::vector<std::size_t> places) {
  return Variant::Object(MakeObject<NodesObject>(world, web, navigation, std::move(places)).get());
}

}  // namespace scrivo::host

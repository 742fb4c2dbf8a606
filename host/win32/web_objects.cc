
#include "host/web_address.h"
#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {
namespace {

class WebsObject : public HostCollection {
 public:
  explicit WebsObject(std::shared_ptr<HostWorld> world)
      : HostCollection(std::move(world), "Webs", 0) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  std::size_t Count() override { return world_->session.Webs().size(); }
  Variant ItemAt(std::size_t index) override {
    return WebOrNone(world_, world_->session.Webs()[index]);
  }
  // By the folder's path or address.
  Variant ItemNamed(const std::string& name) override {
    for (const auto& web : world_->session.Webs()) {
      if (web->FindFolder(name) == web->Web().BaseFolder()) return WebOrNone(world_, web);
    }
    throw HostError("The web " + name + " is not open.", kBadArgument);
  }

  static const DispatchTable& Table() {
    static const auto table =
        DispatchTableOf<WebsObject>()
            .Include(CollectionMembers())
            .Method(2, L"Open",
                    {{L"szWebUrl", VT_BSTR},
                     {L"UserName", VT_BSTR, true},
                     {L"Password", VT_BSTR, true},
                     {L"WebOpenFlags", VT_I4, true}},
                    [](WebsObject& self, const DispatchArguments& arguments) {
                      return WebOrNone(self.world_, self.world_->session.Open(arguments.Text(0)));
                    });
    return table;
  }
};

class WebObject : public HostObject {
 public:
  WebObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web)
      : HostObject(std::move(world), "Web"), web_(std::move(web)) {}

  Base AsBase() override { return {web_->Url(), true}; }

 private:
  const DispatchTable& Members() const override { return Table(); }
  void Entering(const DispatchMember& member) override {
    HostObject::Entering(member);
    RequireOpen(*web_);
  }

  Variant AllFolders() {
    SiteFolders folders, waiting{web_->Web().BaseFolder()};
    while (!waiting.empty()) {
      const std::shared_ptr<SiteFolder> folder = waiting.back();
      waiting.pop_back();
      const SiteFolders below = folder->Folders();
      folders.insert(folders.end(), below.begin(), below.end());
      waiting.insert(waiting.end(), below.rbegin(), below.rend());
    }
    return FoldersOf(world_, web_, folders);
  }
  Variant HomeNode() {
    const auto navigation = web_->Navigation();
    const auto home = web_->Web().HomeNode();
    return NodeOrNone(world_, web_, navigation,
                      home ? navigation->Find(home.get()) : NavigationIndex::kNone);
  }
  Variant AllNodes() {
    const auto navigation = web_->Navigation();
    std::vector<std::size_t> places;
    for (std::size_t i = 1; i < navigation->Places().size(); ++i) places.push_back(i);
    return NodesOf(world_, web_, navigation, places);
  }

  static const DispatchTable& Table() {
    using Self = WebObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(1, L"RootFolder",
                 [](Self& self, const Arguments&) {
                   return FolderOrNone(self.world_, self.web_, self.web_->Web().BaseFolder());
                 })
            .Get(2, L"RootNavigationNode",
                 [](Self& self, const Arguments&) {
                   return NodeOrNone(self.world_, self.web_, self.web_->Navigation(),
                                     NavigationIndex::kRoot);
                 })
            .Get(3, L"HomeNavigationNode",
                 [](Self& self, const Arguments&) { return self.HomeNode(); })
            .Get(4, L"AllNavigationNodes",
                 [](Self& self, const Arguments&) { return self.AllNodes(); })
            .Get(5, L"AllFiles",
                 [](Self& self, const Arguments&) {
                   return FilesOf(self.world_, self.web_, scrivo::AllFiles(self.web_->Web()));
                 })
            .Get(6, L"AllFolders", [](Self& self, const Arguments&) { return self.AllFolders(); })
            .Get(7, L"WebWindows",
                 [](Self& self, const Arguments&) { return WebWindowsOf(self.world_, self.web_); })
            .Get(8, L"ActiveWebWindow",
                 [](Self& self, const Arguments&) {
                   return WebWindowOrNone(self.world_, self.web_);
                 })
            .Get(9, L"Url",
                 [](Self& self, const Arguments&) { return Variant::Text(self.web_->Url()); })
            .Get(10, L"Title",
                 [](Self& self, const Arguments&) { return Variant::Text(self.web_->Title()); })
            .Get(11, L"Properties",
                 [](Self& self, const Arguments&) {
                   return PropertiesOf(self.world_, {{"vti_title", self.web_->Title()}});
                 })
            .Get(12, L"AllowsLongFilenames",
                 [](Self&, const Arguments&) { return Variant::Boolean(true); })
            .Method(13, L"LocateFile", {{L"DocumentUrl", VT_BSTR}},
                    [](Self& self, const Arguments& arguments) {
                      return FileOrNone(self.world_, self.web_,
                                        self.web_->FindFile(arguments.Text(0)));
                    })
            .Method(14, L"LocateFolder", {{L"FolderUrl", VT_BSTR}},
                    [](Self& self, const Arguments& arguments) {
                      return FolderOrNone(self.world_, self.web_,
                                          self.web_->FindFolder(arguments.Text(0)));
                    })
            .Call(
                15, L"Refresh", {},
                [](Self& self, const Arguments&) { self.world_->session.Refresh(self.web_.get()); })
            .Call(16, L"Activate", {},
                  [](Self& self, const Arguments&) { self.world_->session.Activate(self.web_); })
            .Call(17, L"Close", {},
                  [](Self& self, const Arguments&) { self.world_->session.Close(self.web_); });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;
};

}  // namespace

Variant WebsOf(const std::shared_ptr<HostWorld>& world) {
  return Variant::Object(MakeObject<WebsObject>(world).get());
}

Variant WebOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web) {
  return web ? Variant::Object(MakeObject<WebObject>(world, web).get()) : Variant::Object(nullptr);
}

void RequireOpen(const HostedWeb& web) {
  if (!web.is_open) throw HostError("The web " + web.Path() + " has been closed.");
}

}  // namespace scrivo::host

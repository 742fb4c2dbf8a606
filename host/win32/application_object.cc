
#include "host/web_address.h"
#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {
namespace {

class ApplicationObject : public HostObject {
 public:
  explicit ApplicationObject(std::shared_ptr<HostWorld> world)
      : HostObject(std::move(world), "Application") {}

 private:
  const DispatchTable& Members() const override { return Table(); }

  // What the first argument of an address routine stands for: a text, or an object of this host.
  Base BaseOf(const DispatchArguments& arguments) {
    const VARIANT& given = arguments.Value(0);
    if (given.vt == VT_BSTR) {
      const std::string address = TextOf(given.bstrVal);
      return {address, world_->session.NamesFolder(address)};
    }
    HostObject* object = given.vt == VT_DISPATCH ? world_->Own(given.pdispVal) : nullptr;
    if (!object) throw DispatchFailure{DISP_E_TYPEMISMATCH, arguments.Position(0)};
    try {
      return object->AsBase();
    } catch (const DispatchFailure& failure) {
      throw DispatchFailure{failure.code, arguments.Position(0)};
    }
  }

  Variant LocatePage(const std::string& url) {
    for (const auto& web : world_->session.Webs()) {
      if (const auto file = web->FindFile(url))
        return PageWindowOrNone(world_, web, web->Edit(file));
    }
    throw HostError("There is no page " + url + " in the open webs.");
  }

  static const DispatchTable& Table() {
    using Self = ApplicationObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(1, L"ActiveWeb",
                 [](Self& self, const Arguments&) {
                   return WebOrNone(self.world_, self.world_->session.Active());
                 })
            .Get(2, L"Webs", [](Self& self, const Arguments&) { return WebsOf(self.world_); })
            .Get(3, L"WebWindows",
                 [](Self& self, const Arguments&) { return WebWindowsOf(self.world_, nullptr); })
            .Get(4, L"ActiveWebWindow",
                 [](Self& self, const Arguments&) {
                   return WebWindowOrNone(self.world_, self.world_->session.Active());
                 })
            .Get(5, L"ActivePageWindow",
                 [](Self& self, const Arguments&) {
                   const auto& web = self.world_->session.Active();
                   return web ? PageWindowOrNone(self.world_, web, web->active_page)
                              : Variant::Object(nullptr);
                 })
            .Get(6, L"Version",
                 [](Self&, const Arguments&) { return Variant::Text(SCRIVO_VERSION); })
            .Get(7, L"Name", [](Self&, const Arguments&) { return Variant::Text("Scrivo Host"); })
            .Get(8, L"CommandBars",
                 [](Self& self, const Arguments&) { return CommandBarsOf(self.world_); })
            .Get(9, L"COMAddIns",
                 [](Self& self, const Arguments&) { return ComAddInsOf(self.world_); })
            .Method(10, L"MakeAbs", {{L"UrlBase", VT_VARIANT}, {L"Url", VT_BSTR}},
                    [](Self& self, const Arguments& arguments) {
                      const Base base = self.BaseOf(arguments);
                      return Variant::Text(
                          MakeAbsolute(base.address, base.is_folder, arguments.Text(1)));
                    })
            .Method(11, L"MakeRel", {{L"UrlBase", VT_VARIANT}, {L"Url", VT_BSTR}},
                    [](Self& self, const Arguments& arguments) {
                      const Base base = self.BaseOf(arguments);
                      return Variant::Text(
                          MakeRelative(base.address, base.is_folder, arguments.Text(1)));
                    })
            .Method(12, L"LocatePage", {{L"DocumentUrl", VT_BSTR}, {L"ViewMode", VT_I4, true}},
                    [](Self& self, const Arguments& arguments) {
                      return self.LocatePage(arguments.Text(0));
                    })
            .Call(13, L"Quit", {}, [](Self& self, const Arguments&) {
              if (self.world_->quit) self.world_->quit();
            });
    return table;
  }
};

}  // namespace

Variant ApplicationOf(const std::shared_ptr<HostWorld>& world) {
  return Variant::Object(MakeObject<ApplicationObject>(world).get());
}

}  // namespace scrivo::host

#include "addin/win32/com_host.h"

#include "addin/win32/collection.h"
#include "addin/win32/com_command_bars.h"
#include "addin/win32/com_site.h"

namespace scrivo {
namespace {

class ComOpenedWeb : public OpenedWeb {
 public:
  explicit ComOpenedWeb(LateBound web) : web_(std::move(web)) {}

  void Activate() override { web_.Call(L"Activate"); }

 private:
  LateBound web_;
};

}  // namespace

std::shared_ptr<SiteWeb> ComHost::CurrentWeb() {
  LateBound web = ObjectOrNone(application_, L"ActiveWeb");
  return web ? std::make_shared<ComWeb>(std::move(web)) : nullptr;
}

std::string ComHost::RelativeLocation(SiteWeb& web, const std::string& address) {
  const LateBound& base = dynamic_cast<ComWeb&>(web).Object();
  return TextOf(application_.Get(L"MakeRel", Variant::Object(base.get()), Variant::Text(address)));
}

std::string ComHost::Version() { return TextOf(application_.Get(L"Version")); }

std::shared_ptr<CommandBar> ComHost::Bar(const std::string& name) {
  const LateBound bars = ObjectOf(application_.Get(L"CommandBars"));
  LateBound bar = ObjectOf(ItemOf(bars, Variant::Text(name)));
  return bar ? std::make_shared<ComBar>(std::move(bar), listener_) : nullptr;
}

std::shared_ptr<OpenedWeb> ComHost::OpenWeb(const std::string& path, const std::string& user_name,
                                            const std::string& password,
                                            std::int32_t open_options) {
  const LateBound webs = ObjectOf(application_.Get(L"Webs"));
  LateBound web = ObjectOf(webs.Get(L"Open", Variant::Text(path), Variant::Text(user_name),
                                    Variant::Text(password), Variant::Long(open_options)));
  return web ? std::make_shared<ComOpenedWeb>(std::move(web)) : nullptr;
}

std::string ComAddInInstance::ProgId() { return TextOf(instance_.Get(L"ProgId")); }

}  // namespace scrivo

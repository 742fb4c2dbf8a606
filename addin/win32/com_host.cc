#include "addin/win32/com_host.h"

#include "addin/win32/com_site.h"
#include "com/win32/dispatch_call.h"

namespace scrivo {
namespace {

std::shared_ptr<CommandBarControl> ControlOrNull(LateBound control,
                                                 const std::weak_ptr<void>& listener) {
  return control ? std::make_shared<ComControl>(std::move(control), listener) : nullptr;
}

class ComOpenedWeb : public OpenedWeb {
 public:
  explicit ComOpenedWeb(LateBound web) : web_(std::move(web)) {}

  void Activate() override { web_.Call(L"Activate"); }

 private:
  LateBound web_;
};

}  // namespace

bool ComControl::Visible() { return TruthOf(control_.Get(L"Visible")); }

void ComControl::Caption(const std::string& caption) {
  control_.Put(L"Caption", Variant::Text(caption));
}

void ComControl::OnAction(const std::string& action) {
  control_.Put(L"OnAction", Variant::Text(action));
}

void ComControl::BeginGroup(bool begins) { control_.Put(L"BeginGroup", Variant::Boolean(begins)); }

void ComControl::FaceId(std::int32_t face) { control_.Put(L"FaceId", Variant::Long(face)); }

void ComControl::Delete() { control_.Call(L"Delete", Variant::Omitted()); }

std::shared_ptr<CommandBarControls> ComControl::Controls() {
  return std::make_shared<ComControls>(ObjectOf(control_.Get(L"Controls")), listener_);
}

void ComControl::OnClick(ClickHandler handler) {
  clicks_.emplace_back(control_, std::move(handler), listener_);
}

std::shared_ptr<CommandBarControl> ComControls::Item(const std::string& caption) {
  return ControlOrNull(ObjectOf(ItemOf(controls_, Variant::Text(caption))), listener_);
}

std::shared_ptr<CommandBarControl> ComControls::Add(ControlType type,
                                                    std::optional<bool> temporary) {
  // All five slots are filled: not every host lets the last ones be missing.
  return ControlOrNull(
      ObjectOf(controls_.Get(L"Add", Variant::Long(type), Variant::Omitted(), Variant::Omitted(),
                             Variant::Omitted(),
                             temporary ? Variant::Boolean(*temporary) : Variant::Omitted())),
      listener_);
}

std::shared_ptr<CommandBarControls> ComBar::Controls() {
  return std::make_shared<ComControls>(ObjectOf(bar_.Get(L"Controls")), listener_);
}

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

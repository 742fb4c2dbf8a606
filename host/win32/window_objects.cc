
#include <algorithm>

#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"

namespace scrivo::host {
namespace {

class PageWindowObject : public HostObject {
 public:
  PageWindowObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web,
                   std::shared_ptr<EditedPage> page)
      : HostObject(std::move(world), "PageWindow"), web_(std::move(web)), page_(std::move(page)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  void Entering(const DispatchMember& member) override {
    HostObject::Entering(member);
    RequireOpen(*web_);
    if (std::find(web_->pages.begin(), web_->pages.end(), page_) == web_->pages.end()) {
      throw HostError("The page has been closed.");
    }
  }
  Variant Parent() override { return WebWindowOrNone(world_, web_); }

  void Save() {
    page_->dirty = false;
    ++page_->saves;
  }

  static const DispatchTable& Table() {
    using Self = PageWindowObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(1, L"IsDirty",
                 [](Self& self, const Arguments&) { return Variant::Boolean(self.page_->dirty); })
            .Get(2, L"File",
                 [](Self& self, const Arguments&) {
                   return FileOrNone(self.world_, self.web_, self.page_->file);
                 })
            .Get(
                3, L"Caption",
                [](Self& self, const Arguments&) { return Variant::Text(self.page_->file->Url()); })
            .Get(4, L"Web",
                 [](Self& self, const Arguments&) { return WebOrNone(self.world_, self.web_); })
            .Call(5, L"Save", {{L"ForceOverwrite", VT_BOOL, true}},
                  [](Self& self, const Arguments&) { self.Save(); })
            .Call(6, L"Close", {{L"ForceSave", VT_BOOL, true}},
                  [](Self& self, const Arguments& arguments) {
                    if (arguments.Boolean(0)) self.Save();
                    self.web_->ClosePage(self.page_.get());
                  })
            .Call(7, L"Activate", {},
                  [](Self& self, const Arguments&) { self.web_->active_page = self.page_; });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;
  const std::shared_ptr<EditedPage> page_;
};

class PageWindowsObject : public HostCollection {
 public:
  PageWindowsObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web)
      : HostCollection(std::move(world), "PageWindows", 0), web_(std::move(web)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  std::size_t Count() override { return web_->pages.size(); }
  Variant ItemAt(std::size_t index) override {
    return PageWindowOrNone(world_, web_, web_->pages[index]);
  }
  Variant ItemNamed(const std::string& name) override {
    if (const auto page = web_->FindPage(name)) return PageWindowOrNone(world_, web_, page);
    throw HostError("The page " + name + " is not open.", kBadArgument);
  }

  void Close(const DispatchArguments& arguments) {
    auto closing = web_->pages;
    if (arguments.Has(0)) closing = {web_->pages[IndexOf(arguments.Long(0))]};
    for (const auto& page : closing) {
      if (arguments.Boolean(1) && page->dirty) ++page->saves, page->dirty = false;
      web_->ClosePage(page.get());
    }
  }

  static const DispatchTable& Table() {
    static const auto table =
        DispatchTableOf<PageWindowsObject>()
            .Include(CollectionMembers())
            .Call(2, L"Close",
                  {{L"Index", VT_I4, true},
                   {L"ForceSave", VT_BOOL, true},
                   {L"PromptUser", VT_BOOL, true}},
                  [](PageWindowsObject& self, const DispatchArguments& arguments) {
                    self.Close(arguments);
                  });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;
};

class WebWindowObject : public HostObject {
 public:
  WebWindowObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web)
      : HostObject(std::move(world), "WebWindow"), web_(std::move(web)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  void Entering(const DispatchMember& member) override {
    HostObject::Entering(member);
    RequireOpen(*web_);
  }

  static const DispatchTable& Table() {
    using Self = WebWindowObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(CommonMembers())
            .Get(1, L"PageWindows",
                 [](Self& self, const Arguments&) {
                   return Variant::Object(
                       MakeObject<PageWindowsObject>(self.world_, self.web_).get());
                 })
            .Get(2, L"ActivePageWindow",
                 [](Self& self, const Arguments&) {
                   return PageWindowOrNone(self.world_, self.web_, self.web_->active_page);
                 })
            .Get(3, L"Caption",
                 [](Self& self, const Arguments&) { return Variant::Text(self.web_->Title()); })
            .Get(4, L"Visible", [](Self&, const Arguments&) { return Variant::Boolean(true); })
            .Get(5, L"Web",
                 [](Self& self, const Arguments&) { return WebOrNone(self.world_, self.web_); })
            .Call(6, L"Activate", {},
                  [](Self& self, const Arguments&) { self.world_->session.Activate(self.web_); })
            .Call(7, L"Close", {},
                  [](Self& self, const Arguments&) { self.world_->session.Close(self.web_); });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;
};

class WebWindowsObject : public HostCollection {
 public:
  WebWindowsObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web)
      : HostCollection(std::move(world), "WebWindows", 0), web_(std::move(web)) {}

 private:
  const DispatchTable& Members() const override { return Table(); }
  std::vector<std::shared_ptr<HostedWeb>> Webs() const {
    if (!web_) return world_->session.Webs();
    return {web_};
  }
  std::size_t Count() override { return Webs().size(); }
  Variant ItemAt(std::size_t index) override { return WebWindowOrNone(world_, Webs()[index]); }

  // A host whose last web window closes ends.
  void Close(const DispatchArguments& arguments) {
    auto closing = Webs();
    if (arguments.Has(0)) closing = {closing[IndexOf(arguments.Long(0))]};
    for (const auto& web : closing) world_->session.Close(web);
    if (world_->session.Webs().empty() && world_->quit) world_->quit();
  }

  static const DispatchTable& Table() {
    static const auto table =
        DispatchTableOf<WebWindowsObject>()
            .Include(CollectionMembers())
            .Call(2, L"Close", {{L"Index", VT_I4, true}},
                  [](WebWindowsObject& self, const DispatchArguments& arguments) {
                    self.Close(arguments);
                  });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;  // null: all webs
};

}  // namespace

Variant WebWindowsOf(const std::shared_ptr<HostWorld>& world,
                     const std::shared_ptr<HostedWeb>& web) {
  return Variant::Object(MakeObject<WebWindowsObject>(world, web).get());
}

Variant WebWindowOrNone(const std::shared_ptr<HostWorld>& world,
                        const std::shared_ptr<HostedWeb>& web) {
  return web ? Variant::Object(MakeObject<WebWindowObject>(world, web).get())
             : Variant::Object(nullptr);
}

Variant PageWindowOrNone(const std::shared_ptr<HostWorld>& world,
                         const std::shared_ptr<HostedWeb>& web,
                         const std::shared_ptr<EditedPage>& page) {
  return page ? Variant::Object(MakeObject<PageWindowObject>(world, web, page).get())
              : Variant::Object(nullptr);
}

}  // namespace scrivo::host

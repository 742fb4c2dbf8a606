#include "host/web_address.h"
#include "host/win32/host_object.h"
#include "host/win32/host_world.h"
#include "host/win32/object_model.h"
#include "platform/paths.h"
#include "system/services.h"
#include "text/ascii_text.h"

namespace scrivo::host {
namespace {

// An object of an open web: its calls fail once the web is closed.
class WebPart : public HostObject {
 protected:
  WebPart(std::shared_ptr<HostWorld> world, const char* class_name, std::shared_ptr<HostedWeb> web)
      : HostObject(std::move(world), class_name), web_(std::move(web)) {}

  void Entering(const DispatchMember& member) override {
    HostObject::Entering(member);
    RequireOpen(*web_);
  }
  Variant Parent() override { return WebOrNone(world_, web_); }

  static const DispatchTable& PartMembers() {
    static const auto table = DispatchTableOf<WebPart>()
                                  .Include(CommonMembers())
                                  .Get(900, L"Web", [](WebPart& self, const DispatchArguments&) {
                                    return WebOrNone(self.world_, self.web_);
                                  });
    return table;
  }

  const std::shared_ptr<HostedWeb> web_;
};

class FileObject : public WebPart {
 public:
  FileObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web,
             std::shared_ptr<SiteFile> file)
      : WebPart(std::move(world), "WebFile", std::move(web)), file_(std::move(file)) {}

  Base AsBase() override { return {file_->Url(), false}; }

 private:
  const DispatchTable& Members() const override { return Table(); }

  std::string Path() {
    std::string address = file_->Url();
    return UrlToPath(address);
  }
  Variant NavigationNode() {
    const auto navigation = web_->Navigation();
    const auto entry = file_->NavigationEntry();
    return NodeOrNone(world_, web_, navigation,
                      entry ? navigation->Find(entry.get()) : NavigationIndex::kNone);
  }
  // A page opened for editing shows in the program that is registered for it.
  Variant Edit() {
    const auto page = web_->Edit(file_);
    if (world_->open_document) world_->open_document(Path());
    return PageWindowOrNone(world_, web_, page);
  }

  static const DispatchTable& Table() {
    using Self = FileObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(PartMembers())
            .Get(1, L"Url",
                 [](Self& self, const Arguments&) { return Variant::Text(self.file_->Url()); })
            .Get(2, L"Name",
                 [](Self& self, const Arguments&) {
                   return Variant::Text(LastName(self.file_->Url()));
                 })
            .Get(
                3, L"Extension",
                [](Self& self, const Arguments&) { return Variant::Text(self.file_->Extension()); })
            .Get(4, L"Title",
                 [](Self& self, const Arguments&) { return Variant::Text(self.file_->Title()); })
            .Get(5, L"Properties",
                 [](Self& self, const Arguments&) {
                   return PropertiesOf(self.world_, {{"vti_title", self.file_->Title()}});
                 })
            .Get(6, L"MetaTags",
                 [](Self& self, const Arguments&) {
                   return MetaTagsOf(self.world_, self.file_, self.Path());
                 })
            .Get(7, L"NavigationNode",
                 [](Self& self, const Arguments&) { return self.NavigationNode(); })
            .Get(8, L"IsOpen",
                 [](Self& self, const Arguments&) {
                   return Variant::Boolean(self.web_->FindPage(self.file_->Url()) != nullptr);
                 })
            .Method(9, L"Edit", {{L"ViewMode", VT_I4, true}},
                    [](Self& self, const Arguments&) { return self.Edit(); })
            .Call(10, L"Open", {}, [](Self& self, const Arguments&) {
              if (self.world_->open_document) self.world_->open_document(self.Path());
            });
    return table;
  }

  const std::shared_ptr<SiteFile> file_;
};

class FolderObject : public WebPart {
 public:
  FolderObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web,
               std::shared_ptr<SiteFolder> folder)
      : WebPart(std::move(world), "WebFolder", std::move(web)), folder_(std::move(folder)) {}

  Base AsBase() override { return {HostedWeb::FolderUrl(*folder_), true}; }

 private:
  const DispatchTable& Members() const override { return Table(); }

  std::string Url() { return HostedWeb::FolderUrl(*folder_); }
  bool IsRoot() { return EqualsIgnoringCase(Url(), web_->Url()); }
  // The root of a web or of a sub-web: only those keep the extensions' private folder.
  bool IsWeb() {
    return IsRoot() ||
           TheServices().files->FolderExists(JoinPath(folder_->LocalPath(), "_vti_pvt"));
  }

  static const DispatchTable& Table() {
    using Self = FolderObject;
    using Arguments = DispatchArguments;
    static const auto table =
        DispatchTableOf<Self>()
            .Include(PartMembers())
            .Get(1, L"Files",
                 [](Self& self, const Arguments&) {
                   return FilesOf(self.world_, self.web_, self.folder_->Files());
                 })
            .Get(2, L"Folders",
                 [](Self& self, const Arguments&) {
                   return FoldersOf(self.world_, self.web_, self.folder_->Folders());
                 })
            .Get(3, L"Url", [](Self& self, const Arguments&) { return Variant::Text(self.Url()); })
            .Get(4, L"Name",
                 [](Self& self, const Arguments&) { return Variant::Text(LastName(self.Url())); })
            .Get(5, L"Properties",
                 [](Self& self, const Arguments&) { return PropertiesOf(self.world_, {}); })
            .Get(6, L"IsRoot",
                 [](Self& self, const Arguments&) { return Variant::Boolean(self.IsRoot()); })
            .Get(7, L"IsWeb",
                 [](Self& self, const Arguments&) { return Variant::Boolean(self.IsWeb()); })
            .Get(8, L"IsReadable", [](Self&, const Arguments&) { return Variant::Boolean(true); })
            .Get(9, L"IsExecutable",
                 [](Self&, const Arguments&) { return Variant::Boolean(false); });
    return table;
  }

  const std::shared_ptr<SiteFolder> folder_;
};

class FilesObject : public HostCollection {
 public:
  FilesObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web, SiteFiles files)
      : HostCollection(std::move(world), "WebFiles", 0),
        web_(std::move(web)),
        files_(std::move(files)) {}

 private:
  const DispatchTable& Members() const override { return CollectionMembers(); }
  std::size_t Count() override { return files_.size(); }
  Variant ItemAt(std::size_t index) override { return FileOrNone(world_, web_, files_[index]); }
  Variant ItemNamed(const std::string& name) override {
    for (const auto& file : files_) {
      const std::string url = file->Url();
      if (EqualsIgnoringCase(LastName(url), name) || EqualsIgnoringCase(url, name)) {
        return FileOrNone(world_, web_, file);
      }
    }
    throw HostError("There is no file " + name + ".", kBadArgument);
  }

  const std::shared_ptr<HostedWeb> web_;
  const SiteFiles files_;
};

class FoldersObject : public HostCollection {
 public:
  FoldersObject(std::shared_ptr<HostWorld> world, std::shared_ptr<HostedWeb> web,
                SiteFolders folders)
      : HostCollection(std::move(world), "WebFolders", 0),
        web_(std::move(web)),
        folders_(std::move(folders)) {}

 private:
  const DispatchTable& Members() const override { return CollectionMembers(); }
  std::size_t Count() override { return folders_.size(); }
  Variant ItemAt(std::size_t index) override { return FolderOrNone(world_, web_, folders_[index]); }
  Variant ItemNamed(const std::string& name) override {
    for (const auto& folder : folders_) {
      const std::string url = HostedWeb::FolderUrl(*folder);
      if (EqualsIgnoringCase(LastName(url), name) || EqualsIgnoringCase(url, name)) {
        return FolderOrNone(world_, web_, folder);
      }
    }
    throw HostError("There is no folder " + name + ".", kBadArgument);
  }

  const std::shared_ptr<HostedWeb> web_;
  const SiteFolders folders_;
};

}  // namespace

Variant FileOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                   const std::shared_ptr<SiteFile>& file) {
  return file ? Variant::Object(MakeObject<FileObject>(world, web, file).get())
              : Variant::Object(nullptr);
}

Variant FilesOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                SiteFiles files) {
  return Variant::Object(MakeObject<FilesObject>(world, web, std::move(files)).get());
}

Variant FolderOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                     const std::shared_ptr<SiteFolder>& folder) {
  return folder ? Variant::Object(MakeObject<FolderObject>(world, web, folder).get())
                : Variant::Object(nullptr);
}

Variant FoldersOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                  SiteFolders folders) {
  return Variant::Object(MakeObject<FoldersObject>(world, web, std::move(folders)).get());
}

}  // namespace scrivo::host

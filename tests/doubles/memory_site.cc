#include "tests/doubles/memory_site.h"

#include <algorithm>

namespace scrivo {

class MemorySite::File : public SiteFile {
 public:
  File(MemorySite* site, MemoryPage page) : page(std::move(page)), site_(*site) {}

  std::string Url() override {
    site_.Do("Url", page.location);
    return site_.url + "/" + page.location;
  }
  std::string Extension() override {
    site_.Do("Extension", page.location);
    const std::string name = page.location.substr(page.location.rfind('/') + 1);
    const std::size_t point = name.rfind('.');
    return point == std::string::npos ? "" : name.substr(point + 1);
  }
  std::string Property(const std::string& name) override {
    site_.Do("Property", page.location + " " + name);
    const auto property = page.properties.find(name);
    if (property == page.properties.end()) throw HostError();
    return property->second;
  }
  std::shared_ptr<SiteNode> NavigationEntry() override {
    site_.Do("NavigationEntry", page.location);
    return page.node;
  }
  std::string Title() override {
    site_.Do("Title", page.location);
    return page.title;
  }

  MemoryPage page;

 private:
  MemorySite& site_;
};

class MemorySite::Folder : public SiteFolder {
 public:
  Folder(MemorySite* site, std::string location) : location_(std::move(location)), site_(*site) {}

  SiteFiles Files() override {
    site_.Do("Files", location_);
    return files;
  }
  SiteFolders Folders() override {
    site_.Do("Folders", location_);
    return folders;
  }
  std::string LocalPath() override {
    site_.Do("LocalPath", location_);
    const char separator = site_.local_path.find('\\') != std::string::npos ? '\\' : '/';
    std::string below = location_;
    std::replace(below.begin(), below.end(), '/', separator);
    return below.empty() ? site_.local_path : site_.local_path + separator + below;
  }

  SiteFiles files;
  SiteFolders folders;

 private:
  std::string location_;
  MemorySite& site_;
};

class MemorySite::Node : public SiteNode {
 public:
  Node(MemorySite* site, std::size_t number, std::string label, std::shared_ptr<SiteFile> file)
      : number(number), label_(std::move(label)), file_(std::move(file)), site_(*site) {}

  SiteNodes Children() override {
    site_.Do("Children", label_);
    SiteNodes result;
    result.reserve(children.size());
    for (const std::size_t child : children) result.push_back(site_.nodes_[child]);
    return result;
  }
  std::shared_ptr<SiteFile> File() override {
    site_.Do("File", label_);
    return file_;
  }
  std::string Label() override {
    site_.Do("Label", label_);
    return label_;
  }
  std::string Url() override {
    site_.Do("Node.Url", label_);
    return file_ ? site_.url + "/" + static_cast<MemorySite::File&>(*file_).page.location : "";
  }

  std::size_t number;
  std::vector<std::size_t> children;

 private:
  std::string label_;
  std::shared_ptr<SiteFile> file_;
  MemorySite& site_;
};

class MemorySite::Page : public OpenPage {
 public:
  Page(MemorySite* site, std::size_t number) : site_(*site), number_(number) {}

  bool IsModified() override {
    site_.Do("IsModified", site_.open[number_].name);
    return site_.open[number_].is_modified;
  }
  void Save(bool overwrite) override {
    site_.Do("Save", site_.open[number_].name + (overwrite ? " overwrite" : ""));
    site_.open[number_].is_modified = false;
  }

 private:
  MemorySite& site_;
  std::size_t number_;
};

class MemorySite::WebObject : public SiteWeb {
 public:
  explicit WebObject(MemorySite* site) : site_(*site) {}

  std::string Url() override {
    site_.Do("Web.Url");
    return site_.url;
  }
  std::shared_ptr<SiteFolder> BaseFolder() override {
    site_.Do("BaseFolder");
    return site_.folders_.at("");
  }
  std::shared_ptr<SiteNode> NavigationRoot() override {
    site_.Do("NavigationRoot");
    return site_.has_navigation ? site_.nodes_.front() : nullptr;
  }
  std::shared_ptr<SiteNode> HomeNode() override {
    site_.Do("HomeNode");
    return site_.home;
  }
  scrivo::OpenPages OpenPages() override {
    site_.Do("OpenPages");
    scrivo::OpenPages pages;
    for (std::size_t i = 0; i < site_.open.size(); ++i) {
      pages.push_back(std::make_shared<Page>(&site_, i));
    }
    return pages;
  }
  void Refresh() override { site_.Do("Refresh"); }

 private:
  MemorySite& site_;
};

class MemorySite::HostObject : public HostApplication {
 public:
  explicit HostObject(MemorySite* site) : site_(*site) {}

  std::shared_ptr<SiteWeb> CurrentWeb() override {
    site_.Do("CurrentWeb");
    return site_.is_open ? site_.web_ : nullptr;
  }
  std::string RelativeLocation(SiteWeb&, const std::string& address) override {
    site_.Do("RelativeLocation", address);
    for (const std::string& base :
         {site_.url + "/", site_.local_path + "\\", site_.local_path + "/"}) {
      if (address.compare(0, base.size(), base) != 0) continue;
      std::string location = address.substr(base.size());
      if (base.back() == '\\') std::replace(location.begin(), location.end(), '\\', '/');
      return location;
    }
    return address;
  }
  std::string Version() override {
    site_.Do("Version");
    return site_.version;
  }

 private:
  MemorySite& site_;
};

MemorySite::MemorySite(std::string url, std::string local_path)
    : url(std::move(url)),
      local_path(std::move(local_path)),
      web_(std::make_shared<WebObject>(this)),
      host_(std::make_shared<HostObject>(this)) {
  folders_[""] = std::make_shared<Folder>(this, "");
  nodes_.push_back(std::make_shared<Node>(this, 0, "(root)", nullptr));
}

MemorySite::~MemorySite() {
  // Pages and nodes refer to each other.
  for (auto& [location, file] : files_) file->page.node = nullptr;
}

std::shared_ptr<SiteFile> MemorySite::AddPage(const std::string& location, const std::string& title,
                                              const std::string& keywords) {
  MemoryPage page{location, title, {}, nullptr};
  if (!keywords.empty()) page.properties["keywords"] = keywords;
  const auto file = std::make_shared<File>(this, std::move(page));
  const std::size_t slash = location.rfind('/');
  FolderAt(slash == std::string::npos ? "" : location.substr(0, slash)).files.push_back(file);
  files_[location] = file;
  return file;
}

MemorySite::Folder& MemorySite::FolderAt(const std::string& location) {
  const auto found = folders_.find(location);
  if (found != folders_.end()) return *found->second;
  const auto folder = std::make_shared<Folder>(this, location);
  const std::size_t slash = location.rfind('/');
  FolderAt(slash == std::string::npos ? "" : location.substr(0, slash)).folders.push_back(folder);
  folders_[location] = folder;
  return *folder;
}

std::shared_ptr<SiteNode> MemorySite::AddNode(const std::shared_ptr<SiteNode>& parent,
                                              const std::string& label,
                                              const std::shared_ptr<SiteFile>& page) {
  const auto node = std::make_shared<Node>(this, nodes_.size(), label, page);
  const std::size_t above = parent ? static_cast<Node&>(*parent).number : 0;
  nodes_[above]->children.push_back(node->number);
  nodes_.push_back(node);
  if (page) {
    MemoryPage& stored = static_cast<File&>(*page).page;
    if (!stored.node) stored.node = node;
  }
  return node;
}

MemoryPage& MemorySite::PageAt(const std::string& location) { return files_.at(location)->page; }

std::shared_ptr<HostApplication> MemorySite::Host() { return host_; }

std::shared_ptr<SiteWeb> MemorySite::Web() { return web_; }

void MemorySite::Fail(const std::string& operation, int times, Error error) {
  failures_.insert_or_assign(operation, Failure{times, std::move(error)});
}

Error MemorySite::HostError() { return Error(-2147467259, "Host", "Unspecified host error"); }

int MemorySite::CountOf(const std::string& operation) const {
  return static_cast<int>(std::count(calls.begin(), calls.end(), operation));
}

void MemorySite::Do(const std::string& operation, const std::string& object) {
  if (!is_recording && failures_.empty()) return;
  const std::string call = object.empty() ? operation : operation + " " + object;
  if (is_recording) calls.push_back(call);
  const auto failure = failures_.find(call);
  if (failure != failures_.end() && failure->second.times-- > 0) throw failure->second.error;
}

}  // namespace scrivo

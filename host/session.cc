#include "host/session.h"

#include <algorithm>

#include "errors/frame.h"
#include "host/web_address.h"
#include "platform/paths.h"
#include "system/services.h"
#include "text/ascii_text.h"
#include "webs/page_head.h"

namespace scrivo::host {
namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

std::string WithoutEndSeparator(std::string path) {
  while (path.size() > 1 && IsSeparator(path.back())) path.pop_back();
  return path;
}

// A path with one separator where two stand in a row, as in a folder's path that ended in one
// before a name was added. Those at its start mean another machine.
std::string WithSingleSeparators(const std::string& path) {
  std::string single;
  for (const char c : path) {
    if (single.size() > 1 && IsSeparator(c) && IsSeparator(single.back())) continue;
    single += c;
  }
  return single;
}

// The folder that a path or an address means.
std::string WebFolder(const std::string& path_or_url, PathStyle style) {
  std::string path = WithoutEndSeparator(path_or_url);
  if (path.starts_with("file:")) return UrlToPath(path, style);
  if (IsAbsoluteAddress(path) && path.find("://") != std::string::npos) {
    throw HostError("The web " + path_or_url +
                    " is on a server. Only webs in folders on disk can be opened.");
  }
  return WithSingleSeparators(path);
}

}  // namespace

NavigationIndex::NavigationIndex(const std::shared_ptr<SiteNode>& root) {
  places_.push_back({root, kNone, 0, {}});
  if (!root) return;
  // A list of what is left to do instead of recursion: a tree may be a thousand levels deep.
  struct Pending {
    std::size_t parent;
    SiteNodes children;
    std::size_t next = 0;
  };
  found_[root.get()] = kRoot;
  std::vector<Pending> pending;
  pending.push_back({kRoot, root->Children()});
  while (!pending.empty()) {
    Pending& level = pending.back();
    if (level.next == level.children.size()) {
      pending.pop_back();
      continue;
    }
    const std::size_t position = level.next++;
    const std::shared_ptr<SiteNode> node = level.children[position];
    const std::size_t place = places_.size();
    places_[level.parent].children.push_back(place);
    places_.push_back({node, level.parent, position, {}});
    found_[node.get()] = place;
    pending.push_back({place, node->Children()});
  }
}

std::size_t NavigationIndex::Find(const SiteNode* node) const {
  const auto found = found_.find(node);
  return found == found_.end() ? kNone : found->second;
}

std::size_t NavigationIndex::Sibling(std::size_t place, int distance) const {
  const Place& here = places_[place];
  if (here.parent == kNone) return kNone;
  const std::vector<std::size_t>& siblings = places_[here.parent].children;
  const auto wanted = static_cast<std::ptrdiff_t>(here.position) + distance;
  if (wanted < 0 || wanted >= static_cast<std::ptrdiff_t>(siblings.size())) return kNone;
  return siblings[static_cast<std::size_t>(wanted)];
}

HostedWeb::HostedWeb(const std::string& path, PathStyle style)
    : path_(path),
      web_(OpenDiskWeb(path, {ContentsChoice::kNavigation, {IndexSource::kKeywords}}, problems_,
                       style)) {}

std::string HostedWeb::Title() { return LastName(Url()); }

std::shared_ptr<const NavigationIndex> HostedWeb::Navigation() {
  if (!navigation_) navigation_ = std::make_shared<NavigationIndex>(web_->NavigationRoot());
  return navigation_;
}

void HostedWeb::Refresh() {
  problems_.problems.clear();
  navigation_ = nullptr;
  web_->Refresh();
}

std::shared_ptr<SiteFile> HostedWeb::FindFile(const std::string& address) {
  const std::string url = MakeAbsolute(Url(), true, AddressOfPath(address));
  for (const auto& file : AllFiles(*web_)) {
    if (EqualsIgnoringCase(file->Url(), url)) return file;
  }
  return nullptr;
}

std::shared_ptr<SiteFolder> HostedWeb::FindFolder(const std::string& address) {
  const std::string url = WithoutEndSeparator(MakeAbsolute(Url(), true, AddressOfPath(address)));
  SiteFolders waiting{web_->BaseFolder()};
  while (!waiting.empty()) {
    const std::shared_ptr<SiteFolder> folder = waiting.back();
    waiting.pop_back();
    if (EqualsIgnoringCase(FolderUrl(*folder), url)) return folder;
    for (const auto& below : folder->Folders()) waiting.push_back(below);
  }
  return nullptr;
}

std::string HostedWeb::FolderUrl(SiteFolder& folder) { return AddressOfPath(folder.LocalPath()); }

std::shared_ptr<EditedPage> HostedWeb::Edit(const std::shared_ptr<SiteFile>& file) {
  active_page = FindPage(file->Url());
  if (!active_page) {
    active_page = std::make_shared<EditedPage>();
    active_page->file = file;
    pages.push_back(active_page);
  }
  return active_page;
}

std::shared_ptr<EditedPage> HostedWeb::FindPage(const std::string& url) const {
  for (const auto& page : pages) {
    if (EqualsIgnoringCase(page->file->Url(), url)) return page;
  }
  return nullptr;
}

void HostedWeb::ClosePage(const EditedPage* page) {
  std::erase_if(pages, [&](const auto& open) { return open.get() == page; });
  if (active_page.get() == page) active_page = pages.empty() ? nullptr : pages.back();
}

std::shared_ptr<HostedWeb> Session::Open(const std::string& path_or_url) {
  const std::string path = WebFolder(path_or_url, style_);
  const auto opened = std::make_shared<HostedWeb>(path, style_);
  for (const auto& web : webs_) {
    if (EqualsIgnoringCase(web->Url(), opened->Url())) {
      Activate(web);
      return web;
    }
  }
  webs_.push_back(opened);
  Activate(opened);
  return opened;
}

void Session::Activate(const std::shared_ptr<HostedWeb>& web) {
  active_ = web;
  Changed();
}

void Session::Close(const std::shared_ptr<HostedWeb>& web) {
  web->is_open = false;
  std::erase(webs_, web);
  if (active_ == web) active_ = webs_.empty() ? nullptr : webs_.back();
  Changed();
}

void Session::Refresh(HostedWeb* web) {
  web->Refresh();
  Changed();
}

bool Session::NamesFolder(const std::string& address) const {
  for (const auto& web : webs_) {
    if (web->FindFolder(address)) return true;
  }
  return false;
}

std::vector<std::string> MetaTagNames(const std::string& path) {
  std::vector<std::string> names;
  IgnoringErrors([&] {
    Services& services = TheServices();
    const std::string page = ReadWhole(*services.files->OpenForReading(path));
    const auto ansi = [&] { return services.system->AnsiCodePage(); };
    for (const MetaTag& tag : FindPageHead(page, Headings::kNo, ansi).metas) {
      if (std::find(names.begin(), names.end(), tag.name) == names.end()) names.push_back(tag.name);
    }
  });
  return names;
}

}  // namespace scrivo::host

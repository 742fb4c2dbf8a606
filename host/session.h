#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/globals.h"
#include "site/site.h"
#include "system/error.h"
#include "webs/disk_web.h"

namespace scrivo::host {

// E_FAIL, the number of failures that have no better one: those of the authoring application are
// not documented.
constexpr std::int32_t kHostFailure = static_cast<std::int32_t>(0x80004005);

// A failure of the host, as an Error with its source.
inline Error HostError(std::string description, std::int32_t number = kHostFailure) {
  return Error(number, "ScrivoHost", std::move(description));
}

// A web's navigation tree with the ways up and to the sides, which the site model does not have.
// It stays what it was when it was made.
class NavigationIndex {
 public:
  static constexpr std::size_t kRoot = 0;
  static constexpr std::size_t kNone = SIZE_MAX;

  struct Place {
    std::shared_ptr<SiteNode> node;
    std::size_t parent = kNone;  // kNone for the root
    std::size_t position = 0;    // among its siblings, from 0
    std::vector<std::size_t> children;
  };

  // Reads the tree below `root`, which may be null: then there is only a root without a node.
  explicit NavigationIndex(const std::shared_ptr<SiteNode>& root);

  // The root and then every node before its children.
  const std::vector<Place>& Places() const { return places_; }
  const Place& At(std::size_t place) const { return places_[place]; }
  // Where this very node stands; kNone when it is not in the tree.
  std::size_t Find(const SiteNode* node) const;
  // The sibling so many places on (-1: the one before); kNone when there is none.
  std::size_t Sibling(std::size_t place, int distance) const;

 private:
  std::vector<Place> places_;
  std::map<const SiteNode*, std::size_t> found_;
};

// A page that is open for editing. This host has no editor: a page becomes dirty when somebody
// says so, and saving it makes it clean again without touching the disk.
struct EditedPage {
  std::shared_ptr<SiteFile> file;
  bool dirty = false;
  int saves = 0;
};

// One open web with its open pages.
class HostedWeb {
 public:
  // Opens the folder. Throws Error as OpenDiskWeb.
  HostedWeb(const std::string& path, PathStyle style);

  const std::string& Path() const { return path_; }
  DiskWeb& Web() { return *web_; }
  std::string Url() { return web_->Url(); }
  // The name of the web's folder.
  std::string Title();
  // The navigation tree, read when it is first asked for after opening or refreshing.
  std::shared_ptr<const NavigationIndex> Navigation();
  // Lists the folders anew when something is next asked for.
  void Refresh();

  // The file at a location inside the web or at an absolute address, letter case aside; null when
  // there is none.
  std::shared_ptr<SiteFile> FindFile(const std::string& address);
  // The folder at such a place.
  std::shared_ptr<SiteFolder> FindFolder(const std::string& address);
  // The address of one of the web's folders.
  static std::string FolderUrl(SiteFolder& folder);

  std::vector<std::shared_ptr<EditedPage>> pages;
  std::shared_ptr<EditedPage> active_page;

  // The page's entry in `pages`, made when there is none, as the active one.
  std::shared_ptr<EditedPage> Edit(const std::shared_ptr<SiteFile>& file);
  // The open page with this file; null when there is none.
  std::shared_ptr<EditedPage> FindPage(const std::string& url) const;
  void ClosePage(const EditedPage* page);

  bool is_open = true;

  // What was wrong in the web, for the user's eyes.
  const WebProblemList& Problems() const { return problems_; }

 private:
  WebProblemList problems_;  // before the web, which reports to it
  const std::string path_;
  std::shared_ptr<DiskWeb> web_;
  std::shared_ptr<const NavigationIndex> navigation_;
};

// The webs that are open in the host, one of them active.
class Session {
 public:
  explicit Session(PathStyle style = Globals().path_style) : style_(style) {}

  // Called after the set of webs, the active one, or what is in it may have changed.
  std::function<void()> on_change;

  const std::vector<std::shared_ptr<HostedWeb>>& Webs() const { return webs_; }
  // Null when no web is open.
  const std::shared_ptr<HostedWeb>& Active() const { return active_; }

  // Opens the web at a path or a "file" address and makes it active; one that is open already
  // only becomes active. Throws Error, with nothing changed, when it cannot be opened.
  std::shared_ptr<HostedWeb> Open(const std::string& path_or_url);
  // `web` must be open.
  void Activate(const std::shared_ptr<HostedWeb>& web);
  // The web opened before it becomes the active one.
  void Close(const std::shared_ptr<HostedWeb>& web);
  // Reads the web anew.
  void Refresh(HostedWeb* web);
  // The open web and whether the address names a folder of it: what a base in an address routine
  // stands for.
  bool NamesFolder(const std::string& address) const;

 private:
  void Changed() const {
    if (on_change) on_change();
  }

  const PathStyle style_;
  std::vector<std::shared_ptr<HostedWeb>> webs_;
  std::shared_ptr<HostedWeb> active_;
};

// The names of a page's meta tags, in small letters and in their order, each once. Empty for a
// file that cannot be read. `path` is that of the file on disk.
std::vector<std::string> MetaTagNames(const std::string& path);

}  // namespace scrivo::host

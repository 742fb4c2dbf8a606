#pragma once

#include <memory>
#include <string>
#include <vector>

#include "com/win32/dispatch_call.h"
#include "site/site.h"

namespace scrivo {

// The site model over the host's own objects, which are called by name. Each object holds one
// reference to the host's.

class ComFile : public SiteFile {
 public:
  explicit ComFile(LateBound file) : file_(std::move(file)) {}

  std::string Url() override;
  std::string Extension() override;
  std::string Property(const std::string& name) override;
  std::shared_ptr<SiteNode> NavigationEntry() override;
  std::string Title() override;

 private:
  LateBound file_;
};

class ComFolder : public SiteFolder {
 public:
  explicit ComFolder(LateBound folder) : folder_(std::move(folder)) {}

  SiteFiles Files() override;
  // Those that are webs of their own among them.
  SiteFolders Folders() override;
  // Told by the folder's address.
  std::string LocalPath() override;

 private:
  LateBound folder_;
};

class ComNode : public SiteNode {
 public:
  explicit ComNode(LateBound node) : node_(std::move(node)) {}

  SiteNodes Children() override;
  std::shared_ptr<SiteFile> File() override;
  std::string Label() override;
  std::string Url() override;

 private:
  LateBound node_;
};

class ComPage : public OpenPage {
 public:
  explicit ComPage(LateBound window) : window_(std::move(window)) {}

  bool IsModified() override;
  void Save(bool overwrite) override;

 private:
  LateBound window_;
};

class ComWeb : public SiteWeb {
 public:
  explicit ComWeb(LateBound web) : web_(std::move(web)) {}

  std::string Url() override;
  std::shared_ptr<SiteFolder> BaseFolder() override;
  std::shared_ptr<SiteNode> NavigationRoot() override;
  std::shared_ptr<SiteNode> HomeNode() override;
  // Those of all the web's windows.
  scrivo::OpenPages OpenPages() override;
  void Refresh() override;

  const LateBound& Object() const { return web_; }

 private:
  // The web's windows; the active one where the host does not tell them all.
  std::vector<LateBound> Windows() const;

  LateBound web_;
};

// What a member gives where editions of the host disagree on how to say that there is nothing:
// none for null, empty, a reference to no object, an error, and a member that the edition does not
// have. That the host could not answer at all (no memory, no access, no connection) is raised.
LateBound ObjectOrNone(const LateBound& object, const wchar_t* member);

}  // namespace scrivo

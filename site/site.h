#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace scrivo {

// The site model: the web that is open in the host, as the generator reads it. Labels, titles and
// properties are UTF-8; locations, paths and addresses are names (platform/paths.h), which
// may be no UTF-8. Every operation may fail with an Error. Collections come in the host's own
// order; nobody sorts them.

class SiteFile;
class SiteFolder;
class SiteNode;
class OpenPage;

using SiteFiles = std::vector<std::shared_ptr<SiteFile>>;
using SiteFolders = std::vector<std::shared_ptr<SiteFolder>>;
using SiteNodes = std::vector<std::shared_ptr<SiteNode>>;
using OpenPages = std::vector<std::shared_ptr<OpenPage>>;

// A file of the web.
class SiteFile {
 public:
  virtual ~SiteFile() = default;

  // The file's address, such as file:///C:/Webs/site/docs/a.htm.
  virtual std::string Url() = 0;
  // The extension without the point, in any case; "" when there is none.
  virtual std::string Extension() = 0;
  // The page's named meta property, such as "keywords". A page without it fails.
  virtual std::string Property(const std::string& name) = 0;
  // Where the file stands in the navigation structure; null for one that stands outside.
  virtual std::shared_ptr<SiteNode> NavigationEntry() = 0;
  // The page's title.
  virtual std::string Title() = 0;
};

// A folder of the web.
class SiteFolder {
 public:
  virtual ~SiteFolder() = default;

  // The files of this folder only.
  virtual SiteFiles Files() = 0;
  // The direct subfolders.
  virtual SiteFolders Folders() = 0;
  // The folder's path on disk, without a separator at its end.
  virtual std::string LocalPath() = 0;
};

// A node of the web's navigation structure.
class SiteNode {
 public:
  virtual ~SiteNode() = default;

  virtual SiteNodes Children() = 0;
  // The page that the node stands for, null for a node that is only a label.
  virtual std::shared_ptr<SiteFile> File() = 0;
  // The text shown in the navigation structure.
  virtual std::string Label() = 0;
  // The node's address, that of its page.
  virtual std::string Url() = 0;
};

// A page that is open in the host's editor.
class OpenPage {
 public:
  virtual ~OpenPage() = default;

  virtual bool IsModified() = 0;
  virtual void Save(bool overwrite) = 0;
};

// The open web.
class SiteWeb {
 public:
  virtual ~SiteWeb() = default;

  // The web's address, such as file:///C:/Webs/site.
  virtual std::string Url() = 0;
  virtual std::shared_ptr<SiteFolder> BaseFolder() = 0;
  // The node above the structure's first level.
  virtual std::shared_ptr<SiteNode> NavigationRoot() = 0;
  // The node of the web's home page, null when it has none.
  virtual std::shared_ptr<SiteNode> HomeNode() = 0;
  virtual scrivo::OpenPages OpenPages() = 0;
  // Makes the host show the files that were added or removed.
  virtual void Refresh() = 0;
};

// The application that hosts the add-in.
class HostApplication {
 public:
  virtual ~HostApplication() = default;

  // The open web, null when none is open.
  virtual std::shared_ptr<SiteWeb> CurrentWeb() = 0;
  // Where a page lies inside `web`, relative to its base folder, with "/" between folder names:
  // help/a.htm for file:///D:/Manual/help/a.htm in file:///D:/Manual.
  virtual std::string RelativeLocation(SiteWeb& web, const std::string& address) = 0;
  // The host's version, such as "12.0.0.6211".
  virtual std::string Version() = 0;
};

// Runs one statement of a collector, which calls into the host; what it does about a failure is
// its own affair. A statement that it skips adds nothing.
using StatementRunner = std::function<void(const std::function<void()>& statement)>;

// Lets a failure pass to the collector's caller.
void RunDirectly(const std::function<void()>& statement);

// Every file of the web: a folder's own files in order, then those of each subfolder the same way.
SiteFiles AllFiles(SiteWeb& web, const StatementRunner& run = RunDirectly);

// Every node below the root: a node, then its descendants. The root itself is not listed; a web
// without a root has no nodes.
SiteNodes AllNodes(SiteWeb& web, const StatementRunner& run = RunDirectly);

}  // namespace scrivo

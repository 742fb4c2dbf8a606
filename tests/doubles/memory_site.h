#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "site/site.h"
#include "system/error.h"

namespace scrivo {

class MemorySite;

// One page or other file of a MemorySite.
struct MemoryPage {
  std::string location;  // "docs/a.htm"
  std::string title;
  std::map<std::string, std::string> properties;  // a missing one fails
  std::shared_ptr<SiteNode> node;                 // its place in the navigation structure
};

// A page that is open in the host's editor.
struct MemoryOpenPage {
  std::string name;
  bool is_modified = false;
};

// A host with one web, all in memory, and a record of what was asked of it. Every operation can be
// made to fail. The site must outlive the objects that it hands out.
//
//   MemorySite site;                             // file:///C:/Webs/site
//   auto page = site.AddPage("docs/a.htm", "A page");
//   auto node = site.AddNode(nullptr, "Label", page);
//   site.Fail("Label Label", 1);                 // fails once, then works
//   Globals().HostApplication = site.Host();
class MemorySite {
 public:
  explicit MemorySite(std::string url = "file:///C:/Webs/site",
                      std::string local_path = "C:\\Webs\\site");
  ~MemorySite();
  MemorySite(const MemorySite&) = delete;
  MemorySite& operator=(const MemorySite&) = delete;

  // Adds a file; the folders of its location appear with their first file, in that order.
  std::shared_ptr<SiteFile> AddPage(const std::string& location, const std::string& title = "",
                                    const std::string& keywords = "");
  // Adds a node below `parent` (null: at the top level) and makes it the page's place in the
  // structure if that has none yet. A null page makes a node that is only a label.
  std::shared_ptr<SiteNode> AddNode(const std::shared_ptr<SiteNode>& parent,
                                    const std::string& label,
                                    const std::shared_ptr<SiteFile>& page = nullptr);
  MemoryPage& PageAt(const std::string& location);

  std::shared_ptr<HostApplication> Host();
  std::shared_ptr<SiteWeb> Web();

  // Makes the next `times` calls of an operation, as it is written in `calls`, fail with `error`.
  void Fail(const std::string& operation, int times, Error error = HostError());
  // The error that operations fail with when a test does not say.
  static Error HostError();

  std::string url;
  std::string local_path;
  bool is_open = true;               // false: the host has no open web
  bool has_navigation = true;        // false: the web has no navigation root
  std::shared_ptr<SiteNode> home;    // the home page's node
  std::vector<MemoryOpenPage> open;  // the host's open pages
  std::string version = "12.0.0.6211";
  bool is_recording = true;
  // What was asked, such as "CurrentWeb", "Files docs", "Url docs/a.htm", "Property docs/a.htm
  // keywords", "Label Intro", "Save a.htm overwrite".
  std::vector<std::string> calls;

  // How often an operation was asked.
  int CountOf(const std::string& operation) const;

 private:
  class Folder;
  class File;
  class Node;
  class Page;
  class WebObject;
  class HostObject;
  struct Failure {
    int times;
    Error error;
  };

  // Records an operation and fails it if that was planned.
  void Do(const std::string& operation, const std::string& object = "");
  Folder& FolderAt(const std::string& location);

  std::map<std::string, Failure> failures_;
  std::map<std::string, std::shared_ptr<Folder>> folders_;  // by location, "" the base folder
  std::map<std::string, std::shared_ptr<File>> files_;      // by location
  // Every node, the root first. Nodes know their children by number only, so that no depth of the
  // structure makes their destruction recurse.
  std::vector<std::shared_ptr<Node>> nodes_;
  std::shared_ptr<WebObject> web_;
  std::shared_ptr<HostObject> host_;
};

}  // namespace scrivo

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/doubles/fake_services.h"
#include "tests/webs/reported.h"
#include "webs/disk_web.h"

namespace scrivo {

// A disk in memory on which some names are links: path → the real path of what it leads to.
class LinkedMemoryFiles : public MemoryFiles {
 public:
  std::map<std::string, std::string> real_paths;

  std::string RealPath(const std::string& path) override {
    const auto real = real_paths.find(path);
    return real == real_paths.end() ? path : real->second;
  }
};

// A web in memory at /web, in the POSIX style.
class WithMemoryWeb : public WithFakeServices {
 protected:
  WithMemoryWeb() {
    TheServices().files = disk;
    disk->folders.insert("/web");
  }

  // Puts a file into the web, with the folders above it.
  void Put(const std::string& location, const std::string& content) {
    for (std::size_t at = location.find('/'); at != std::string::npos;
         at = location.find('/', at + 1)) {
      disk->folders.insert("/web/" + location.substr(0, at));
    }
    disk->files["/web/" + location] = content;
  }
  void PutPage(const std::string& location, const std::string& title) {
    Put(location, "<html><head><title>" + title + "</title></head><body></body></html>");
  }
  // The navigation structure, from its node lines.
  void PutStructure(const std::string& nodes) {
    Put("_vti_pvt/structure.cnf", "3.0.0.507\r\n2000\r\n" + nodes);
  }

  std::shared_ptr<DiskWeb> Open(const DiskWebOptions& options = {}) {
    return OpenDiskWeb("/web", options, report, PathStyle::kPosix);
  }
  std::shared_ptr<DiskWeb> Open(ContentsChoice contents) {
    return Open(DiskWebOptions{contents, {IndexSource::kKeywords}});
  }

  // The tree as text: a line for each node, a "-" for each level, its label, and its address or
  // "(no file)".
  static std::string Drawn(SiteWeb& web) {
    std::string text;
    Draw(*web.NavigationRoot(), "", web.Url() + "/", &text);
    return text;
  }
  std::string Reported() const { return scrivo::Reported(report); }
  // How often the path was opened.
  int TimesOpened(const std::string& path) const {
    int times = 0;
    for (const std::string& operation : disk->log) times += operation == "open " + path;
    return times;
  }

  std::shared_ptr<LinkedMemoryFiles> disk = std::make_shared<LinkedMemoryFiles>();
  WebProblemList report;

 private:
  static void Draw(SiteNode& node, const std::string& indent, const std::string& base,
                   std::string* text) {
    for (const auto& child : node.Children()) {
      *text += indent + child->Label() + ": ";
      *text += child->File() ? child->File()->Url().substr(base.size()) : "(no file)";
      *text += "\n";
      Draw(*child, indent + "-", base, text);
    }
  }
};

}  // namespace scrivo

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "webs/contents_tree.h"
#include "webs/disk_web.h"
#include "webs/page_facts.h"
#include "webs/web_listing.h"
#include "webs/web_text.h"
#include "webs/welcome_names.h"

namespace scrivo {

// Where a web lies and how it is read; shared by everything that one web hands out.
struct WebSource {
  std::shared_ptr<Files> files;
  std::string path;  // without a separator at its end
  std::string url;
  PathStyle style;
  DiskWebOptions options;
  WebText text;
  WebReport& report;
};

// The objects of a web as it was when its folders were listed: files, folders and nodes, each made
// once. Pointers to them share the ownership of the snapshot.
class WebSnapshot : public std::enable_shared_from_this<WebSnapshot> {
 public:
  using Index = WebListing::Index;

  // Lists the folders. Errors as WebListing.
  explicit WebSnapshot(std::shared_ptr<WebSource> source);
  ~WebSnapshot();
  WebSnapshot(const WebSnapshot&) = delete;
  WebSnapshot& operator=(const WebSnapshot&) = delete;

  WebSource& Source() { return *source_; }
  const WebListing& Listing() const { return listing_; }
  const WelcomeNames& Welcome() const { return welcome_; }
  // The contents, read when they are first asked for.
  const ContentsTree& Tree();
  // Which contents Tree() holds, and why.
  const ContentsAccount& AccountOfContents();
  // The node that shows the file first in AllNodes; 0, the root, when none does.
  std::uint32_t FirstNodeOf(Index file);
  // The line of the structure file that a node of this web comes from; 0 when it comes from none.
  std::size_t LineOf(const SiteNode& node);
  // The node of the home page; 0 when there is none.
  std::uint32_t HomeNode();
  // What the page says of itself; the page is read when it is first asked for.
  const PageFacts& Facts(Index file);

  std::shared_ptr<SiteFile> File(Index file);
  std::shared_ptr<SiteFolder> Folder(Index folder);
  std::shared_ptr<SiteNode> Node(std::uint32_t node);

 private:
  class DiskFile;
  class DiskFolder;
  class DiskNode;

  std::string StructurePath() const;
  ContentsTree ReadNavigation(WebReport& report);
  bool HoldsMoreThanHomePage(const ContentsTree& tree) const;
  void CountStructure();
  bool LeadsSomewhere() const;
  void HandOutLabels();
  void ReadTree();
  void FindFirstNodes();

  const std::shared_ptr<WebSource> source_;
  const WebListing listing_;
  const WelcomeNames welcome_;
  PageReader reader_;
  std::vector<std::unique_ptr<PageFacts>> facts_;  // by file, null while not read
  std::vector<DiskFile> file_objects_;
  std::vector<DiskFolder> folder_objects_;
  bool has_tree_ = false;
  ContentsTree tree_;
  ContentsAccount account_;
  std::vector<DiskNode> node_objects_;
  std::vector<std::uint32_t> first_nodes_;  // by file
};

}  // namespace scrivo

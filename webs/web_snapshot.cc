#include "webs/web_snapshot.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "html/page_kind.h"
#include "system/error.h"
#include "text/ascii_text.h"
#include "webs/folder_tree.h"
#include "webs/host_notes.h"
#include "webs/navigation_tree.h"
#include "webs/page_head.h"
#include "webs/structure_file.h"

namespace scrivo {
namespace {

std::string ExtensionOf(const std::string& name) {
  const std::size_t point = name.rfind('.');
  return point == std::string::npos ? "" : name.substr(point + 1);
}

}  // namespace

class WebSnapshot::DiskFile : public SiteFile {
 public:
  DiskFile(WebSnapshot* web, Index index) : web_(*web), index_(index) {}

  std::string Url() override {
    return web_.Source().url + "/" + web_.Listing().FileLocation(index_);
  }
  std::string Extension() override { return ExtensionOf(web_.Listing().FileName(index_)); }
  std::string Property(const std::string& name) override {
    const PageFacts& facts = web_.Facts(index_);
    const std::string small = AsciiLowered(name);
    if (small == "keywords" && !facts.keywords.empty()) return facts.keywords;
    for (const auto& [meta, content] : facts.metas) {
      if (meta == small) return content;
    }
    throw Error(kObjectDoesNotSupportThis, "SiteFile",
                "The page " + web_.Listing().FilePath(index_) + " has no \"" + name + "\".");
  }
  std::shared_ptr<SiteNode> NavigationEntry() override {
    const std::uint32_t node = web_.FirstNodeOf(index_);
    return node == 0 ? nullptr : web_.Node(node);
  }
  std::string Title() override {
    const std::string& title = web_.Facts(index_).title;
    if (!title.empty()) return title;
    WebText& text = web_.Source().text;
    return text.HandOut(GuessedUtf8(web_.Listing().FileName(index_), text.CodePage()),
                        web_.Listing().FilePath(index_));
  }

 private:
  WebSnapshot& web_;
  const Index index_;
};

class WebSnapshot::DiskFolder : public SiteFolder {
 public:
  DiskFolder(WebSnapshot* web, Index index) : web_(*web), index_(index) {}

  SiteFiles Files() override {
    const WebListing::Range range = web_.Listing().FilesOf(index_);
    SiteFiles files;
    files.reserve(range.end - range.begin);
    for (Index file = range.begin; file != range.end; ++file) files.push_back(web_.File(file));
    return files;
  }
  SiteFolders Folders() override {
    const WebListing::Range range = web_.Listing().FoldersOf(index_);
    SiteFolders folders;
    folders.reserve(range.end - range.begin);
    for (Index folder = range.begin; folder != range.end; ++folder) {
      folders.push_back(web_.Folder(folder));
    }
    return folders;
  }
  std::string LocalPath() override { return web_.Listing().FolderPath(index_); }

 private:
  WebSnapshot& web_;
  const Index index_;
};

class WebSnapshot::DiskNode : public SiteNode {
 public:
  DiskNode(WebSnapshot* web, std::uint32_t index) : web_(*web), index_(index) {}

  std::uint32_t Line() const { return web_.tree_.nodes[index_].line; }

  SiteNodes Children() override {
    const ContentsNode& node = Self();
    SiteNodes children;
    children.reserve(node.child_count);
    for (std::uint32_t i = 0; i < node.child_count; ++i) {
      children.push_back(web_.Node(node.first_child + i));
    }
    return children;
  }
  std::shared_ptr<SiteFile> File() override {
    const Index file = Self().file;
    return file == WebListing::kNone ? nullptr : web_.File(file);
  }
  std::string Label() override { return Self().label; }
  std::string Url() override {
    const ContentsNode& node = Self();
    if (node.file != WebListing::kNone) return web_.File(node.file)->Url();
    // The address of a page elsewhere stands whole in the structure.
    if (node.page.empty() || node.page.find(':') != std::string::npos) return node.page;
    return web_.Source().url + "/" + node.page;
  }

 private:
  const ContentsNode& Self() { return web_.Tree().nodes[index_]; }

  WebSnapshot& web_;
  const std::uint32_t index_;
};

WebSnapshot::WebSnapshot(std::shared_ptr<WebSource> source)
    : source_(std::move(source)),
      listing_(*source_->files, source_->path, source_->style, source_->text.CodePage(),
               source_->options.leaves_out_hidden, source_->report),
      welcome_(listing_,
               [this](Index web) {
                 return ReadServiceNotes(*source_->files, listing_.FolderPath(web), source_->style,
                                         source_->report)
                     .welcome_names;
               }),
      reader_(*source_->files, source_->options, &source_->text, source_->report),
      facts_(listing_.FileCount()) {
  file_objects_.reserve(listing_.FileCount());
  for (Index file = 0; file < listing_.FileCount(); ++file) file_objects_.emplace_back(this, file);
  folder_objects_.reserve(listing_.FolderCount());
  for (Index folder = 0; folder < listing_.FolderCount(); ++folder) {
    folder_objects_.emplace_back(this, folder);
  }
}

WebSnapshot::~WebSnapshot() = default;

const ContentsTree& WebSnapshot::Tree() {
  if (!has_tree_) ReadTree();
  return tree_;
}

const ContentsAccount& WebSnapshot::AccountOfContents() {
  Tree();
  return account_;
}

std::uint32_t WebSnapshot::FirstNodeOf(Index file) {
  Tree();
  return first_nodes_[file];
}

std::size_t WebSnapshot::LineOf(const SiteNode& node) {
  const auto* const own = dynamic_cast<const DiskNode*>(&node);
  return own == nullptr ? 0 : own->Line();
}

std::uint32_t WebSnapshot::HomeNode() {
  const ContentsNode& root = Tree().nodes[0];
  std::uint32_t home = 0;
  int home_rank = -1;
  for (std::uint32_t i = root.first_child; i < root.first_child + root.child_count; ++i) {
    const Index file = tree_.nodes[i].file;
    if (file == WebListing::kNone || listing_.FolderHolding(file) != 0) continue;
    const int rank = welcome_.Rank(0, listing_.FileKey(file));
    if (rank >= 0 && (home_rank < 0 || rank < home_rank)) {
      home = i;
      home_rank = rank;
    }
  }
  return home;
}

const PageFacts& WebSnapshot::Facts(Index file) {
  static const PageFacts kNone;
  if (KindOfPage(listing_.FileName(file)) == PageKind::kNone) return kNone;
  std::unique_ptr<PageFacts>& facts = facts_[file];
  if (!facts) {
    const char separator = Separator(source_->style);
    const Index folder = listing_.FolderHolding(file);
    std::string notes;
    if (listing_.HasNotes(folder)) {
      notes = listing_.FolderPath(folder) + separator + "_vti_cnf" + separator +
              listing_.FileName(file);
    }
    facts = std::make_unique<PageFacts>(reader_.Read(listing_.FilePath(file), notes));
  }
  return *facts;
}

std::shared_ptr<SiteFile> WebSnapshot::File(Index file) {
  return {shared_from_this(), &file_objects_[file]};
}

std::shared_ptr<SiteFolder> WebSnapshot::Folder(Index folder) {
  return {shared_from_this(), &folder_objects_[folder]};
}

std::shared_ptr<SiteNode> WebSnapshot::Node(std::uint32_t node) {
  Tree();
  return {shared_from_this(), &node_objects_[node]};
}

std::string WebSnapshot::StructurePath() const {
  const char separator = Separator(source_->style);
  return source_->path + separator + "_vti_pvt" + separator + "structure.cnf";
}

// What is wrong with single entries goes to `report`.
ContentsTree WebSnapshot::ReadNavigation(WebReport& report) {
  const std::string path = StructurePath();
  std::optional<std::string> text;
  account_.has_structure = true;
  try {
    text = ReadIfThere(*source_->files, path, std::numeric_limits<std::size_t>::max());
    account_.has_structure = text.has_value();
    if (!text && source_->options.contents == ContentsChoice::kNavigation) {
      source_->report.Problem(
          {path, 0, "the file does not exist; the web has no navigation structure"});
    }
  } catch (const Error& error) {
    account_.is_readable = false;
    ReportFailure(path, "the navigation structure cannot be read", error, source_->report);
  }
  WebProblemList problems;
  std::vector<StructureNode> nodes =
      ParseStructure(text ? std::string_view(*text) : "", path, problems);
  if (nodes.empty() && !problems.problems.empty()) account_.is_readable = false;
  for (const WebProblem& problem : problems.problems) source_->report.Problem(problem);
  text.reset();  // as large as the tree itself
  return BuildNavigationTree(std::move(nodes), listing_, source_->text.CodePage(), path, report);
}

bool WebSnapshot::HoldsMoreThanHomePage(const ContentsTree& tree) const {
  const Index home = welcome_.PageOf(0);
  return std::any_of(tree.nodes.begin() + 1, tree.nodes.end(), [&](const ContentsNode& node) {
    // A home page that is missing on disk is no more than a home page either.
    if (node.file == WebListing::kNone) return welcome_.Rank(0, node.page) < 0;
    return node.file != home;
  });
}

void WebSnapshot::CountStructure() {
  for (Index file = 0; file < listing_.FileCount(); ++file) {
    account_.pages += IsHelpPage(listing_, file) ? 1 : 0;
  }
  account_.entries = tree_.nodes.size() - 1;
  std::vector<bool> seen(listing_.FileCount());
  for (auto node = tree_.nodes.begin() + 1; node != tree_.nodes.end(); ++node) {
    if (node->file == WebListing::kNone) {
      // The address of a page elsewhere has a colon.
      if (!node->page.empty() && node->page.find(':') == std::string::npos) ++account_.missing;
    } else if (IsHelpPage(listing_, node->file) && !seen[node->file]) {
      seen[node->file] = true;
      ++account_.shown;
    }
  }
  account_.is_home_only = account_.entries > 0 && !HoldsMoreThanHomePage(tree_);
}

bool WebSnapshot::LeadsSomewhere() const {
  if (account_.shown == 0) return false;
  if (account_.shown == account_.pages) return true;
  constexpr std::size_t kFewest = 4;  // one page in so many
  return !account_.is_home_only && kFewest * account_.shown >= account_.pages &&
         2 * account_.missing <= account_.entries;
}

// Of a structure that is not used no character is lost.
void WebSnapshot::HandOutLabels() {
  const std::string path = StructurePath();
  for (auto node = tree_.nodes.begin() + 1; node != tree_.nodes.end(); ++node) {
    node->label = source_->text.HandOut(std::move(node->label), path, node->line);
  }
}

void WebSnapshot::ReadTree() {
  const ContentsChoice choice = source_->options.contents;
  account_ = {};
  if (choice == ContentsChoice::kNavigation) {
    tree_ = ReadNavigation(source_->report);
    account_.used = ContentsChoice::kNavigation;
  } else if (choice == ContentsChoice::kAuto) {
    // Of contents that are not used nobody needs to know what is wrong in them.
    WebProblemList problems;
    tree_ = ReadNavigation(problems);
    CountStructure();
    if (LeadsSomewhere()) {
      account_.used = ContentsChoice::kNavigation;
      for (const WebProblem& problem : problems.problems) source_->report.Problem(problem);
    }
  }
  if (account_.used == ContentsChoice::kNavigation) {
    HandOutLabels();
  } else {
    tree_ = BuildFolderTree(
        listing_, welcome_, [this](Index file) { return File(file)->Title(); }, &source_->text);
  }
  node_objects_.reserve(tree_.nodes.size());
  for (std::uint32_t i = 0; i < tree_.nodes.size(); ++i) node_objects_.emplace_back(this, i);
  FindFirstNodes();
  has_tree_ = true;
}

void WebSnapshot::FindFirstNodes() {
  first_nodes_.assign(listing_.FileCount(), 0);
  std::vector<std::uint32_t> pending{0};
  while (!pending.empty()) {
    const std::uint32_t i = pending.back();
    pending.pop_back();
    const ContentsNode& node = tree_.nodes[i];
    if (node.file != WebListing::kNone && first_nodes_[node.file] == 0) {
      first_nodes_[node.file] = i;
    }
    for (std::uint32_t c = node.child_count; c-- > 0;) pending.push_back(node.first_child + c);
  }
}

}  // namespace scrivo

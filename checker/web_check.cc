#include "checker/web_check.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "checker/page_check.h"
#include "html/page_kind.h"
#include "project/project_tree.h"
#include "system/error.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char kStructureName[] = "_vti_pvt/structure.cnf";

// The characters of a text that a code page lacks, each once, and how many there are.
class LostCharacters {
 public:
  explicit LostCharacters(int code_page) : code_page_(code_page) {}

  // `what` the text is: "label", "title".
  void See(const std::string& what, const std::string& utf8) {
    bool has_lost = false;
    for (std::string_view rest = utf8; !rest.empty();) {
      std::string character;
      AppendUtf8(NextUtf8(&rest), &character);
      std::size_t lost = 0;
      FromUtf8(character, code_page_, &lost);
      if (lost == 0) continue;
      has_lost = true;
      ++count_;
      if (shown_ < kMostShown && sample_.find(character) == std::string::npos) {
        sample_ += character;
        ++shown_;
      }
    }
    if (has_lost) where_ += (where_.empty() ? "" : ", ") + what;
  }

  std::size_t Count() const { return count_; }
  const std::string& Sample() const { return sample_; }
  std::string Text() const {
    return "code page " + std::to_string(code_page_) + " lacks " + std::to_string(count_) +
           (count_ == 1 ? " character (" : " characters (") + sample_ + ") of: " + where_;
  }

 private:
  static constexpr int kMostShown = 5;

  const int code_page_;
  std::size_t count_ = 0;
  int shown_ = 0;
  std::string sample_, where_;
};

class WebCheck {
 public:
  WebCheck(DiskWeb& web, const SourceFiles& files, const std::string& folder,
           const WebProblemList& problems, const CheckOptions& options)
      : web_(web),
        files_(files),
        folder_(folder),
        problems_(problems),
        options_(options),
        tree_(files, folder, options.page_code_page, false) {}

  WebFindings Find() {
    CheckContents();
    CheckPages();
    CheckPagesOutside();
    CheckKeywords();
    AddProblems();
    std::stable_sort(result_.findings.begin(), result_.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.kind < b.kind; });
    return std::move(result_);
  }

 private:
  void Add(FindingKind kind, std::string file, std::string subject, std::string text,
           std::size_t line = 0) {
    result_.findings.push_back({kind, std::move(file), line, std::move(subject), std::move(text)});
  }

  std::string LocationOf(const std::string& address) const {
    const std::string start = web_.Url() + "/";
    return address.starts_with(start) ? address.substr(start.size()) : address;
  }

  // Entries whose page is missing are reported where the structure is read.
  void CheckContents() {
    for (const std::shared_ptr<SiteNode>& node : AllNodes(web_)) {
      ++result_.contents_entries;
      CheckLabel(*node);
      if (node->File()) continue;
      const std::string address = node->Url();
      if (!address.empty() && LocationOf(address) == address) {
        Add(FindingKind::kContentsEntry, kStructureName, node->Label(),
            "the entry \"" + node->Label() + "\" leads out of the web, to " + address +
                "; contents made from a web lead to its own pages only",
            web_.LineOf(*node));
      }
    }
  }

  // In contents made of the folders the label of a page is its title, that of a folder its name.
  void CheckLabel(SiteNode& node) {
    LostCharacters lost(options_.help_code_page);
    if (web_.ContentsUsed() == ContentsChoice::kNavigation) {
      lost.See("label", node.Label());
      AddLost(lost, kStructureName, web_.LineOf(node));
    } else if (!node.File()) {
      lost.See("folder name", node.Label());
      AddLost(lost, "");
    }
  }

  // A page that another one shows in a frame needs no entry of its own.
  void CheckPagesOutside() {
    for (const std::shared_ptr<SiteFile>& page : web_.PagesOutsideContents()) {
      const std::string location = LocationOf(page->Url());
      if (frames_.contains(location)) continue;
      Add(FindingKind::kPageOutsideContents, location, "", page->Title());
    }
  }

  void CheckPages() {
    const SiteFiles files = AllFiles(web_);
    std::size_t done = 0;
    for (const std::shared_ptr<SiteFile>& file : files) {
      if (options_.on_page) options_.on_page(done++, files.size());
      const std::string location = LocationOf(file->Url());
      const PageKind kind = KindOfPage(location);
      if (kind == PageKind::kByServer) {
        Add(FindingKind::kServerComponent, location, "page made by a server",
            "a page that only a web server can make");
      }
      if (kind != PageKind::kPlain) continue;
      ++result_.pages;
      CheckPageAt(location);
      CheckTexts(*file, location);
    }
  }

  void CheckPageAt(const std::string& location) {
    std::error_code error;
    const auto source = files_.Open(folder_ + "/" + location, &error);
    std::string bytes;
    if (source == nullptr || !ReadText(*source, &bytes)) return;  // the web reports it
    PageFindings page =
        CheckPage(bytes, location, options_.page_code_page, tree_, web_.WelcomeNames());
    std::move(page.findings.begin(), page.findings.end(), std::back_inserter(result_.findings));
    frames_.insert(page.frames.begin(), page.frames.end());
  }

  // What of a page gets into the lists of the help file.
  void CheckTexts(SiteFile& file, const std::string& location) {
    LostCharacters lost(options_.help_code_page);
    lost.See("title", file.Title());
    const std::string keywords = KeywordsOf(file);
    if (Trimmed(keywords).empty()) {
      without_keywords_.push_back(location);
    } else {
      lost.See("keywords", keywords);
    }
    AddLost(lost, location);
  }

  void AddLost(const LostCharacters& lost, const std::string& file, std::size_t line = 0) {
    if (lost.Count() > 0) Add(FindingKind::kLostText, file, lost.Sample(), lost.Text(), line);
  }

  static std::string KeywordsOf(SiteFile& file) {
    try {
      return file.Property("keywords");
    } catch (const Error& error) {
      if (error.number == kUserInterrupt) throw;
      return "";  // the page has none
    }
  }

  // A web that makes no use of keywords is not told of each page.
  void CheckKeywords() {
    if (without_keywords_.size() == result_.pages) {
      Add(FindingKind::kNoKeywords, "", "",
          "no page has keywords, so the help file would have no index");
      return;
    }
    for (std::string& location : without_keywords_) {
      Add(FindingKind::kNoKeywords, std::move(location), "", "has no keywords");
    }
  }

  void AddProblems() {
    for (const WebProblem& problem : problems_.problems) {
      std::string file = problem.file;
      std::replace(file.begin(), file.end(), '\\', '/');
      if (file.starts_with(folder_ + "/")) file.erase(0, folder_.size() + 1);
      const FindingKind kind =
          file == kStructureName ? FindingKind::kContentsEntry : FindingKind::kUnreadable;
      result_.findings.push_back({kind, file, problem.line, "", problem.reason});
    }
  }

  DiskWeb& web_;
  const SourceFiles& files_;
  const std::string& folder_;
  const WebProblemList& problems_;
  const CheckOptions& options_;
  ProjectTree tree_;
  std::vector<std::string> without_keywords_;
  std::set<std::string> frames_;  // locations of pages that others show
  WebFindings result_;
};

}  // namespace

WebFindings CheckWeb(DiskWeb& web, const SourceFiles& files, const std::string& folder,
                     const WebProblemList& problems, const CheckOptions& options) {
  return WebCheck(web, files, folder, problems, options).Find();
}

}  // namespace scrivo

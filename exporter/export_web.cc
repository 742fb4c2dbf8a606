#include "exporter/export_web.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>

#include "bytes/byte_source.h"
#include "chm/problem.h"
#include "chm/system_info.h"
#include "exporter/book_targets.h"
#include "exporter/help_book.h"
#include "exporter/page_keywords.h"
#include "exporter/staged_folder.h"
#include "exporter/web_structure.h"
#include "html/charset.h"
#include "html/page_kind.h"
#include "project/source_files.h"
#include "unpack/output_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// The page of derived images, which a compile of a web adds, is not a page of the author's.
bool IsPlainPage(std::string_view path) {
  const bool is_derived_page =
      path.ends_with(".tmp.htm") && path.find('/') == std::string_view::npos;
  return KindOfPage(path) == PageKind::kPlain && !is_derived_page;
}

// Passes on what becomes of the files; one that cannot be written ends it all.
class StrictListener : public UnpackListener {
 public:
  explicit StrictListener(UnpackListener& listener) : listener_(listener) {}

  void OnFile(const PlannedFile& file) override { listener_.OnFile(file); }
  void OnProblem(const Problem& problem) override {
    switch (problem.kind) {
      case ProblemKind::kWriteFailed:
      case ProblemKind::kLinkInTheWay:
      case ProblemKind::kFileInTheWay:
      case ProblemKind::kFolderInTheWay:
      case ProblemKind::kMoreNotWritten:
        throw std::runtime_error(Describe(problem));
      default:
        listener_.OnProblem(problem);
    }
  }
  void OnProgress(std::uint64_t done, std::uint64_t total) override {
    listener_.OnProgress(done, total);
  }
  bool StopWanted() const override { return listener_.StopWanted(); }

 private:
  UnpackListener& listener_;
};

class WebExporter {
 public:
  WebExporter(ChmReader& reader, const fs::path& stage, bool keywords)
      : reader_(reader), stage_(stage), with_keywords_(keywords), book_(OpenHelpBook(reader)) {
    std::error_code error;
    folder_ = OpenOutputFolder(stage, &error);
    if (folder_ == nullptr) throw std::runtime_error("the web cannot be made: " + error.message());
    Problems told_by_unpacking;
    files_ = PlanUnpacking(reader, folder_->Rules(), false, &told_by_unpacking);
  }

  WebMade Make(UnpackListener& listener) {
    StrictListener strict(listener);
    const UnpackResult unpacked = Unpack(reader_, *folder_, UnpackOptions(), strict);
    made_.stopped = unpacked.stopped;
    made_.problems = unpacked.problems;
    if (unpacked.stopped) return std::move(made_);
    const BookTargets targets(files_);
    const WebStructure structure = MakeWebStructure(book_, targets);
    WriteFile("_vti_pvt/structure.cnf", structure.text);
    WriteFile("_vti_pvt/service.cnf", WebServiceText(book_));
    Count(structure);
    if (with_keywords_) CollectKeywords(targets);
    for (const PlannedFile& file : files_) {
      if (IsPlainPage(file.path)) FinishPage(file.path, structure);
    }
    made_.lacks_contents =
        book_.contents.items.empty() &&
        (IsUnread({book_.contents_name, "/#TOCIDX"}) || !ReadSystemInfo(reader_));
    made_.lacks_index =
        book_.index.items.empty() && IsUnread({book_.index_name, "/$WWKeywordLinks/BTree"});
    SitemapTarget start;
    start.local = book_.default_topic;
    made_.default_page = targets.Of(start, "/").path;
    made_.title = book_.title;
    return std::move(made_);
  }

 private:
  void Count(const WebStructure& structure) {
    made_.contents_entries = structure.entries;
    made_.anchors = structure.anchors;
    made_.outside = structure.outside;
    made_.missing = structure.missing;
    made_.merged = structure.merged;
  }

  // Whether one of these files and streams is there and could not be read.
  bool IsUnread(std::initializer_list<std::string_view> names) const {
    return std::any_of(names.begin(), names.end(), [this](std::string_view name) {
      return std::any_of(book_.problems.begin(), book_.problems.end(),
                         [name](const std::string& problem) {
                           return !name.empty() && problem.find(name) != std::string::npos;
                         });
    });
  }

  void CollectKeywords(const BookTargets& targets) {
    for (const SitemapItem& item : book_.index.items) {
      if (!item.see_also.empty()) ++made_.see_also;
      if (item.level > 0) {
        ++made_.sub_entries;
      } else if (!item.targets.empty() && !CanBeKeyword(item.name)) {
        ++made_.separators;
      } else {
        for (const SitemapTarget& target : item.targets) AddKeyword(item.name, target, targets);
      }
    }
  }

  void AddKeyword(const std::string& name, const SitemapTarget& target,
                  const BookTargets& targets) {
    const BookTarget page = targets.Of(target, book_.index_name);
    if (page.kind != BookTarget::Kind::kFile || !IsPlainPage(page.path)) {
      ++made_.without_page;
      return;
    }
    if (page.has_anchor) ++made_.keyword_anchors;
    keywords_[page.path].insert(name);
  }

  void FinishPage(const std::string& path, const WebStructure& structure) {
    std::error_code error;
    auto source = OpenFileSource(stage_ / SystemPath(path), &error);
    std::string page;
    if (source == nullptr || !ReadText(*source, &page)) return;  // unpacking has told why
    source = nullptr;  // a file that is open cannot be replaced on every system
    ++made_.pages;
    if (WithUtf8Declared(page)) made_.declares_wrongly = true;
    const auto label = structure.labels.find(path);
    if (label != structure.labels.end() && TitleOfPage(page, book_.code_page).empty()) {
      const std::size_t slash = path.rfind('/') + 1;  // 0 when there is none
      WriteFile(path.substr(0, slash) + "_vti_cnf/" + path.substr(slash),
                PageNotesText(label->second));
    }
    if (with_keywords_) WriteKeywords(path, page);
  }

  void WriteKeywords(const std::string& path, const std::string& page) {
    const std::set<std::string>& keywords = keywords_[path];
    const auto changed = WithKeywords(page, keywords, book_.code_page);
    if (!changed) {
      made_.without_page += keywords.size();
      return;
    }
    made_.keywords += keywords.size();
    if (*changed != page) WriteFile(path, *changed);
  }

  void WriteFile(const std::string& path, const std::string& text) {
    const WriteResult result =
        folder_->Create(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    if (result.outcome == WriteOutcome::kDone) return;
    throw std::runtime_error(path + ": cannot be written" +
                             (result.error ? ": " + result.error.message() : ""));
  }

  ChmReader& reader_;
  const fs::path& stage_;
  const bool with_keywords_;
  const HelpBook book_;
  std::unique_ptr<OutputFolder> folder_;
  std::vector<PlannedFile> files_;
  std::map<std::string, std::set<std::string>> keywords_;  // by the page's path
  WebMade made_;
};

}  // namespace

WebMade ExportWeb(ChmReader& reader, const fs::path& path, bool keywords,
                  UnpackListener& listener) {
  StagedFolder folder(path);
  WebMade made = WebExporter(reader, folder.Stage(), keywords).Make(listener);
  if (!made.stopped && made.pages > 0) folder.Show("_vti_pvt");
  return made;
}

}  // namespace scrivo

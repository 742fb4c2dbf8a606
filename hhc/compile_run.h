#pragma once

// One run of the compiler: what it knows while files go in, and what it writes at the end. Used by
// compiler.cc alone; its members are spread over compile_files.cc (reading, links, storing) and
// compile_streams.cc (the internal streams).

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "bytes/spill_space.h"
#include "bytes/temporary_file.h"
#include "chm/container_writer.h"
#include "hhc/auto_contents.h"
#include "hhc/compiler.h"
#include "hhc/keyword_tree.h"
#include "hhc/page_loader.h"
#include "hhc/strings_table.h"
#include "hhc/toc_index.h"
#include "hhc/topic_table.h"
#include "project/project.h"
#include "project/project_tree.h"
#include "project/sitemap.h"
#include "search/postings.h"

namespace scrivo {

class CompileRun {
 public:
  CompileRun(const CompileRequest& request, const SourceFiles& files, Project project,
             std::string project_folder, CompileListener* listener, CompileResult* result);

  // Reports what the reader of the project found odd.
  void ReportProject();

  // Puts all files into the help file.
  void CompileFiles(ContainerWriter* writer);

  // Puts the internal streams behind them. False when that cannot be done, which has been reported.
  bool WriteStreams(ContainerWriter* writer);

  bool HasFiles() const { return !stored_.empty(); }

  void Report(int code, Severity severity, std::string text);

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // The order of compilation: pages and sitemaps as they are found, then what they show, then style
  // sheets and scripts.
  enum Queue { kPages, kImages, kParts, kQueues };

  struct StoredFile {
    FoundFile found;
    FileKind kind = FileKind::kOther;
    Queue queue = kPages;
    bool listed = false;  // in [FILES]
    std::optional<std::uint32_t> topic;
  };
  // compile_files.cc
  void CollectListed();
  void ListFile(const ProjectLine& line);
  void CollectNamed();
  void CollectWindowFiles();
  void CollectAliases();
  std::size_t ContentsOrIndex(const std::string& option, std::size_t window_argument);
  std::string NamedSitemap(const std::string& option, std::size_t window_argument) const;
  std::size_t Enqueue(const FoundFile& found, Queue queue);
  Queue QueueOf(const FoundFile& found, LinkKind kind) const;
  std::size_t NextToLoad();
  void Store(std::size_t number, LoadedFile file);
  bool StoreBytes(const StoredFile& stored, const LoadedFile& file);
  void NotCompiled(const StoredFile& stored);
  void StorePage(std::size_t number, const LoadedFile& file);
  void ReportBadTags(std::size_t number, const std::vector<BadTag>& tags, std::string_view bytes,
                     int code_page);
  void FollowLinks(std::size_t number, const std::vector<PageLink>& links, const PageScan& page,
                   std::string_view bytes);
  void FollowLink(const PageLink& link, const std::string& folder, int code_page,
                  const std::string& referrer, std::string_view bytes);
  void CollectSitemaps();
  void StoreAutoContents();
  void StoreSitemap(std::size_t number, const LoadedFile& file);
  void LoadStopWords();
  void LoadMapFiles();
  std::optional<std::string> ReadListed(const std::string& name, std::string_view what);

  // compile_streams.cc
  std::optional<std::uint32_t> TopicOf(const SitemapTarget& target, const std::string& name,
                                       std::size_t sitemap_file);
  void BuildContents();
  void BuildKeywords();
  void NameTopics();
  void ShowContents(ProjectWindow* window) const;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> ContextIds();
  bool AddSearchIndex(ContainerWriter* writer);
  void WriteKeywordStreams(ContainerWriter* writer, std::string_view folder, KeywordTree* tree,
                           bool* present);
  std::vector<std::uint8_t> SystemStream(const std::vector<std::uint8_t>& index_header,
                                         bool has_keywords, bool has_associations);
  std::vector<std::uint8_t> IndexHeaderStream();
  std::string OutputStem() const;

  std::string Text(std::string_view project_bytes) const;  // UTF-8 from the project file
  std::string Encoded(std::string_view utf8) const;        // in the project's code page
  std::string Address(std::string_view utf8) const;        // the same, for addresses

  const CompileRequest& request_;
  const SourceFiles& files_;
  const Project project_;
  CompileListener* listener_;
  CompileResult& result_;
  const int code_page_;
  ProjectTree tree_;
  ContainerWriter* writer_ = nullptr;

  std::vector<StoredFile> stored_;
  std::unordered_map<std::string, std::size_t> by_path_;  // lower-case archive path
  std::vector<std::size_t> queues_[kQueues];
  std::size_t next_[kQueues] = {};
  std::deque<std::size_t> loading_;
  std::size_t pages_loading_ = 0;
  std::unordered_set<std::string> missing_;  // link targets reported already
  std::unordered_set<std::size_t> graphics_;

  std::size_t contents_ = kNone, index_ = kNone;  // in stored_
  bool sitemaps_are_topics_ = false;              // a window names them
  std::optional<AutoContents> auto_contents_;     // while they are to be made
  Sitemap contents_map_, index_map_;
  std::size_t default_window_ = kNone;  // in project_.windows
  std::vector<std::string> stop_words_;
  std::vector<ProjectAlias> aliases_;
  std::vector<ProjectMapEntry> map_;

  StringsTable strings_;
  TopicTable topics_;
  std::unordered_map<std::uint32_t, std::string> titles_;  // UTF-8, of topics that have one
  std::optional<TocIndex> tree_of_contents_;
  KeywordTree keywords_, associations_;
  std::vector<std::pair<std::uint32_t, std::string>> page_keywords_;  // topic, keyword
  TemporaryFile words_file_;
  SpillSpace words_space_;
  Postings postings_;
  std::uint32_t default_topic_ = 0;
  mutable std::size_t lost_characters_ = 0;
};

}  // namespace scrivo

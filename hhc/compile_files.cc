#include "hhc/compile_files.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <span>
#include <unordered_set>

#include "hhc/auto_contents.h"
#include "html/charset.h"
#include "project/sitemap_encoding.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// Files loaded ahead of the one that is being stored.
constexpr std::size_t kAhead = 64;

std::span<const std::uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Tells the lines of offsets in a text; offsets that do not go back cost one pass over it in all.
class LineCounter {
 public:
  explicit LineCounter(std::string_view text) : text_(text) {}

  std::string LineOf(std::size_t offset) {
    if (offset < offset_) *this = LineCounter(text_);
    line_ += CountLineEnds(text_, offset_, offset);
    offset_ = offset;
    return std::to_string(line_);
  }

 private:
  std::string_view text_;
  std::size_t offset_ = 0;
  std::size_t line_ = 1;
};

class FileCompiler {
 public:
  FileCompiler(CompileContext* context, ProjectSources* sources, ContainerWriter* writer,
               TopicFacts* facts)
      : context_(*context),
        project_(context->project),
        sources_(*sources),
        writer_(*writer),
        facts_(*facts) {
    if (sources->makes_contents) auto_contents_.emplace(project_.auto_toc);
  }

  void Compile();

 private:
  void Store(std::size_t number, const LoadedFile& file);
  bool StoreBytes(const FoundFile& found, const LoadedFile& file);
  bool StoreSitemap(const FoundFile& found, const LoadedFile& file, const Sitemap& sitemap);
  void AddPage(const FoundFile& found, const LoadedFile& file);
  void ReportBadTags(const FoundFile& found, const std::vector<BadTag>& tags, std::string_view text,
                     int code_page);
  void FollowLinks(const FoundFile& found, const std::vector<PageLink>& links,
                   const LoadedFile& file);
  void StoreAutoContents();

  CompileContext& context_;
  const Project& project_;
  ProjectSources& sources_;
  ContainerWriter& writer_;
  TopicFacts& facts_;
  std::unordered_set<std::string> missing_;  // link targets reported already
  // The kinds and addresses of links that were followed from a folder, with a code page. Pages of a
  // folder have most of their links in common.
  std::unordered_set<std::string> followed_;
  std::string followed_from_;
  std::unordered_set<std::size_t> graphics_;
  std::optional<AutoContents> auto_contents_;  // while they are to be made
};

void FileCompiler::Compile() {
  facts_.postings.LeaveOut(sources_.stop_words);
  PageLoader loader(context_.files, context_.code_page, project_.full_text_search,
                    context_.request.threads);
  std::deque<std::size_t> loading;
  while (true) {
    while (loader.Waiting() < kAhead) {
      const std::size_t number = sources_.list.TakeNext();
      if (number == SourceList::kNone) break;
      loading.push_back(number);
      const SourceList::File& file = sources_.list.At(number);
      loader.Submit(file.found.disk_path, file.kind);
    }
    if (loading.empty()) break;
    sources_.list.Loaded(loading.front());
    Store(loading.front(), loader.Take());
    loading.pop_front();
    if (writer_.Status() != ContainerStatus::kOk || context_.Stops()) return;
  }
  if (auto_contents_ && !auto_contents_->Empty()) StoreAutoContents();
  context_.result.graphics = graphics_.size();
}

void FileCompiler::Store(std::size_t number, const LoadedFile& file) {
  const SourceList::File source = sources_.list.At(number);  // a copy: links add to the list
  const FoundFile& found = source.found;
  if (found.archive_path.size() >= kMaxEntryName) return context_.ReportTooLong(found.address);
  if (file.readable && project_.display_progress) {
    context_.listener.File(SystemSlashes(found.address));
  }
  const Sitemap* sitemap = nullptr;
  if (number == sources_.contents) {
    sitemap = &sources_.contents_map;
  } else if (number == sources_.index) {
    sitemap = &sources_.index_map;
  }
  if (!file.readable ||
      !(sitemap ? StoreSitemap(found, file, *sitemap) : StoreBytes(found, file))) {
    context_.ReportNotCompiled(found.address,
                               file.error ? file.error.message() : "it cannot be read to its end");
    return;
  }
  if (source.kind == FileKind::kPage) AddPage(found, file);
  if (source.kind == FileKind::kStyleSheet) FollowLinks(found, file.links, file);
}

bool FileCompiler::StoreBytes(const FoundFile& found, const LoadedFile& file) {
  writer_.StartEntry("/" + found.archive_path);
  if (file.rest == nullptr) {
    writer_.Append(AsBytes(file.bytes));
    context_.result.input_size += file.bytes.size();
    return true;
  }
  constexpr std::uint64_t kPiece = 1 << 20;
  std::vector<std::uint8_t> piece;
  const std::uint64_t size = file.rest->Size();
  for (std::uint64_t at = 0; at < size && !context_.Stops(); at += kPiece) {
    piece.resize(static_cast<std::size_t>(std::min(kPiece, size - at)));
    if (!file.rest->ReadAt(at, piece)) return false;
    writer_.Append(piece);
  }
  context_.result.input_size += size;
  return true;
}

void FileCompiler::AddPage(const FoundFile& found, const LoadedFile& file) {
  const PageScan& page = file.page;
  const std::uint32_t topic = facts_.topics.Add(context_.Address(found.address));
  ++context_.result.topics;
  if (!page.title.empty()) facts_.titles[topic] = page.title;
  for (const std::string& keyword : page.keywords) facts_.keywords.emplace_back(topic, keyword);
  for (const std::string& name : page.associations) facts_.associations.AddJoined(name, topic);
  if (project_.full_text_search) facts_.postings.AddPage(topic, file.words);
  if (auto_contents_) auto_contents_->AddPage(found.address, page.headings);
  ReportBadTags(found, page.bad_tags, file.Text(), page.code_page);
  FollowLinks(found, page.links, file);
}

bool FileCompiler::StoreSitemap(const FoundFile& found, const LoadedFile& file,
                                const Sitemap& sitemap) {
  std::string bytes = file.bytes;
  if (file.rest != nullptr && !ReadText(*file.rest, &bytes)) return false;
  const auto for_viewers = SitemapForViewers(bytes, context_.code_page, &context_.lost_characters);
  writer_.StartEntry("/" + found.archive_path);
  writer_.Append(AsBytes(for_viewers ? *for_viewers : bytes));
  context_.result.input_size += 2 * bytes.size();  // counted twice, as the original compiler does
  const auto utf8 = Utf16AsUtf8(bytes);
  ReportBadTags(found, sitemap.bad_tags, utf8 ? *utf8 : bytes, sitemap.code_page);
  if (!sources_.sitemaps_are_topics) return true;
  facts_.topics.Add(context_.Address(found.address));
  ++context_.result.topics;
  return true;
}

void FileCompiler::ReportBadTags(const FoundFile& found, const std::vector<BadTag>& tags,
                                 std::string_view text, int code_page) {
  LineCounter lines(text);
  for (const BadTag& tag : tags) {
    context_.Report(
        tag.is_closed ? MessageCode::kTagWithoutName : MessageCode::kTagWithoutEnd,
        {SystemSlashes(found.address), lines.LineOf(tag.offset), ShownTag(text, tag, code_page)});
  }
}

void FileCompiler::FollowLinks(const FoundFile& found, const std::vector<PageLink>& links,
                               const LoadedFile& file) {
  std::string folder = FolderOf(found.tree_path);
  bool base_is_elsewhere = false;
  if (!file.page.base.empty()) {
    const Reference base = TakeApart(file.page.base);
    base_is_elsewhere = base.external;
    folder = NormalPath(folder + "/" + FolderOf(base.path));
  }
  const int code_page = file.page.code_page == 0 ? context_.code_page : file.page.code_page;
  const std::string from = std::to_string(code_page) + " " + folder;
  if (followed_from_ != from) {
    followed_.clear();
    followed_from_ = from;
  }
  std::string key;
  LineCounter lines(file.Text());
  for (const PageLink& link : links) {
    const Reference reference = TakeApart(link.address);
    if (reference.external || base_is_elsewhere) {
      if (link.kind == LinkKind::kAnchor && reference.web) ++context_.result.internet_links;
      continue;
    }
    if (link.kind == LinkKind::kAnchor) ++context_.result.local_links;
    if (reference.path.empty()) continue;
    key.assign(1, static_cast<char>(link.kind)).append(reference.path);
    if (!followed_.insert(key).second) continue;
    bool is_withheld = false;
    if (const auto target = context_.tree.Find(reference.path, folder, code_page, &is_withheld)) {
      const std::size_t number = sources_.list.AddLinked(*target, link.kind);
      if (link.kind == LinkKind::kImage) graphics_.insert(number);
    } else if (!is_withheld && missing_.insert(folder + "/" + std::string(reference.path)).second) {
      context_.Report(MessageCode::kLinkBroken,
                      {SystemSlashes(found.address), lines.LineOf(link.offset),
                       SystemSlashes(WithSlashes(ToUtf8(reference.path, code_page)))});
    }
  }
}

// Contents that the project wants made of the pages' headings go into the help file only: a file of
// the author's is never written.
void FileCompiler::StoreAutoContents() {
  std::string name = WithSlashes(context_.Text(sources_.contents_name));
  if (name.empty() || name.starts_with('/') || name.find("..") != std::string::npos) {
    name = context_.OutputStem().append(".hhc");
  }
  while (sources_.list.Find(name) != SourceList::kNone) name = std::string("_").append(name);
  const std::string text = auto_contents_->Write(context_.code_page, &context_.lost_characters);
  sources_.contents_map = ReadSitemap(text, context_.code_page, Undefined::kKept);
  FoundFile made;
  made.archive_path = made.address = made.tree_path = name;
  sources_.contents = sources_.list.AddNamed(made);
  writer_.AddCompressed("/" + name, AsBytes(text));
  context_.result.input_size += 2 * text.size();
  context_.result.local_links += 2 * sources_.contents_map.items.size();
}

}  // namespace

TopicFacts::TopicFacts(const CompileContext& context)
    : words_file(SystemPath(context.result.output + ".words")),
      words_space(&words_file, context.request.word_memory) {
  postings.SpillTo(&words_space);
}

void CompileFiles(CompileContext* context, ProjectSources* sources, ContainerWriter* writer,
                  TopicFacts* facts) {
  FileCompiler(context, sources, writer, facts).Compile();
}

}  // namespace scrivo

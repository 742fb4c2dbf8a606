#include <algorithm>
#include <span>

#include "hhc/compile_run.h"
#include "hhc/window_stream.h"
#include "html/charset.h"
#include "search/search_alphabet.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// Files loaded ahead of the one that is being stored.
constexpr std::size_t kAhead = 64;

std::span<const std::uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string WithBackslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

}  // namespace

CompileRun::CompileRun(const CompileRequest& request, const SourceFiles& files, Project project,
                       std::string project_folder, CompileListener* listener, CompileResult* result)
    : request_(request),
      files_(files),
      project_(std::move(project)),
      listener_(listener),
      result_(*result),
      code_page_(CodePageOfLanguage(project_.language)),
      tree_(files, std::move(project_folder), code_page_, project_.flat),
      words_file_(SystemPath(std::string(result->output).append(".words"))),
      words_space_(&words_file_, request.word_memory) {
  postings_.SpillTo(&words_space_);
}

void CompileRun::Report(int code, Severity severity, std::string text) {
  if (severity == Severity::kWarning) ++result_.warnings;
  if (severity == Severity::kError) ++result_.errors;
  if (severity == Severity::kNote && !project_.display_notes) return;
  listener_->Message({code, severity, std::move(text)});
}

std::string CompileRun::Text(std::string_view project_bytes) const {
  return DecodeGuessing(project_bytes, code_page_);
}

std::string CompileRun::Encoded(std::string_view utf8) const {
  return FromUtf8(utf8, code_page_, &lost_characters_);
}

// Titles that lose a character are still readable; an address that does leads nowhere, so it keeps
// its UTF-8 bytes, which the viewer finds in the directory.
std::string CompileRun::Address(std::string_view utf8) const {
  std::size_t lost = 0;
  std::string encoded = FromUtf8(utf8, code_page_, &lost);
  return lost == 0 ? encoded : std::string(utf8);
}

void CompileRun::ReportProject() {
  for (const ProjectLine& line : project_.lines_without_equals) {
    Report(4003, Severity::kWarning,
           "The following option line does not contain an '=' character separating the option and "
           "its value: " +
               Text(line.text));
  }
  for (const ProjectLine& key : project_.unknown_options) {
    Report(4004, Severity::kWarning,
           "Line " + std::to_string(key.line) + " of the project: the option \"" + Text(key.text) +
               "\" is not known and is ignored.");
  }
  for (const ProjectLine& name : project_.unknown_sections) {
    Report(4005, Severity::kWarning,
           "Line " + std::to_string(name.line) + " of the project: the section [" +
               Text(name.text) + "] is not known and is ignored.");
  }
  for (const ProjectLine& key : project_.unsupported) {
    Report(4007, Severity::kWarning,
           "Line " + std::to_string(key.line) + " of the project: the option \"" + Text(key.text) +
               "\" is not supported; the help file is made without it.");
  }
  for (const ProjectLine& name : project_.unsupported_sections) {
    Report(4007, Severity::kWarning,
           "Line " + std::to_string(name.line) + " of the project: the section [" +
               Text(name.text) + "] is not supported; the help file is made without it.");
  }
}

void CompileRun::CompileFiles(ContainerWriter* writer) {
  writer_ = writer;
  CollectListed();
  CollectNamed();
  CollectAliases();
  CollectSitemaps();
  LoadStopWords();
  PageLoader loader(files_, code_page_, project_.full_text_search, request_.threads);
  while (true) {
    while (loader.Waiting() < kAhead) {
      const std::size_t number = NextToLoad();
      if (number == kNone) break;
      loading_.push_back(number);
      loader.Submit(stored_[number].found.disk_path, stored_[number].kind);
    }
    if (loading_.empty()) break;
    const std::size_t number = loading_.front();
    loading_.pop_front();
    Store(number, loader.Take());
    if (writer->Status() != ContainerStatus::kOk) return;
  }
  if (auto_contents_ && !auto_contents_->Empty()) StoreAutoContents();
}

void CompileRun::CollectListed() {
  for (const ProjectLine& line : project_.files) ListFile(line);
}

void CompileRun::ListFile(const ProjectLine& line) {
  if (line.text.find_first_of("*?") != std::string::npos) {
    for (const FoundFile& found : tree_.FindMatching(line.text)) {
      stored_[Enqueue(found, kPages)].listed = true;
    }
    return;
  }
  const auto found = tree_.FindListed(line.text);
  if (!found) {
    std::string name = Text(line.text);
    Report(5003, Severity::kError, "Compilation failed while compiling " + name + ".");
    result_.not_compiled.push_back(WithBackslashes(std::move(name)));
    return;
  }
  StoredFile& stored = stored_[Enqueue(*found, kPages)];
  if (stored.listed) {
    Report(4006, Severity::kWarning,
           "The file \"" + Text(line.text) +
               "\" is already listed in the [FILES] section of the project file.");
  }
  stored.listed = true;
}

// The contents and index files and what the project names outside [FILES].
void CompileRun::CollectNamed() {
  for (std::size_t i = 0; i < project_.windows.size(); ++i) {
    if (EqualsIgnoringCase(project_.windows[i].name, project_.default_window)) default_window_ = i;
  }
  if (project_.auto_toc > 0) auto_contents_.emplace(project_.auto_toc);
  contents_ = ContentsOrIndex(project_.contents_file, window_argument::kContentsFile);
  index_ = ContentsOrIndex(project_.index_file, window_argument::kIndexFile);
  CollectWindowFiles();
  if (!project_.default_topic.empty()) {
    const Reference reference = TakeApart(project_.default_topic);
    if (!reference.external) {
      if (const auto found = tree_.FindListed(reference.path)) {
        Enqueue(*found, kPages);
      } else {
        Report(3016, Severity::kWarning,
               "The default topic \"" + Text(project_.default_topic) + "\" does not exist.");
      }
    }
  }
  for (const ProjectLine& popup : project_.text_popups) {
    if (const auto found = tree_.FindListed(popup.text)) {
      if (AsciiLowered(found->archive_path).ends_with(".txt")) Enqueue(*found, kPages);
    } else {
      Report(5003, Severity::kError,
             "Compilation failed while compiling " + Text(popup.text) + ".");
      result_.not_compiled.push_back(WithBackslashes(Text(popup.text)));
    }
  }
}

std::size_t CompileRun::ContentsOrIndex(const std::string& option, std::size_t argument) {
  const std::string name = NamedSitemap(option, argument);
  const bool may_be_made = auto_contents_ && argument == window_argument::kContentsFile;
  if (name.empty()) return kNone;
  const auto found = tree_.FindListed(name);
  if (found) {
    if (may_be_made) {
      auto_contents_.reset();
      Report(4008, Severity::kWarning,
             "The contents file \"" + Text(name) +
                 "\" is there and is used as it is; \"Auto TOC\" adds nothing to it.");
    }
    return Enqueue(*found, kPages);
  }
  if (may_be_made) return kNone;
  Report(5003, Severity::kError, "Compilation failed while compiling " + Text(name) + ".");
  result_.not_compiled.push_back(WithBackslashes(Text(name)));
  return kNone;
}

std::string CompileRun::NamedSitemap(const std::string& option, std::size_t argument) const {
  std::string name = option;
  for (std::size_t i = 0; name.empty() && i < project_.windows.size(); ++i) {
    if (default_window_ == kNone || default_window_ == i) {
      name = WindowArgument(project_.windows[i], argument);
    }
  }
  return name;
}

// Contents that the project wants made of the pages' headings go into the help file only: a file of
// the author's is never written.
void CompileRun::StoreAutoContents() {
  std::string name = Text(NamedSitemap(project_.contents_file, window_argument::kContentsFile));
  std::replace(name.begin(), name.end(), '\\', '/');
  if (name.empty() || name.starts_with('/') || name.find("..") != std::string::npos) {
    name = OutputStem().append(".hhc");
  }
  while (by_path_.contains(AsciiLowered(name))) name = std::string("_").append(name);
  const std::string text = auto_contents_->Write(code_page_, &lost_characters_);
  contents_map_ = ReadSitemap(text, code_page_);
  FoundFile made;
  made.archive_path = made.address = made.tree_path = name;
  contents_ = Enqueue(made, kPages);
  writer_->AddCompressed("/" + name, AsBytes(text));
  result_.input_size += 2 * text.size();
  result_.local_links += 2 * contents_map_.items.size();
}

void CompileRun::CollectWindowFiles() {
  using namespace window_argument;
  for (const ProjectWindow& window : project_.windows) {
    for (const std::size_t argument :
         {kContentsFile, kIndexFile, kDefaultFile, kHomeFile, kJump1Target, kJump2Target}) {
      const std::string name = WindowArgument(window, argument);
      const Reference reference = TakeApart(name);
      if (reference.external || reference.path.empty()) continue;
      const auto found = tree_.FindListed(reference.path);
      if (!found) continue;
      const std::size_t number = Enqueue(*found, kPages);
      if (argument == kContentsFile || argument == kIndexFile) {
        sitemaps_are_topics_ = sitemaps_are_topics_ || number == contents_ || number == index_;
      }
    }
  }
}

void CompileRun::CollectAliases() {
  LoadMapFiles();
  for (const ProjectAlias& alias : aliases_) {
    const auto found = tree_.FindListed(alias.target);
    if (found) {
      Enqueue(*found, kPages);
    } else {
      Report(3015, Severity::kWarning,
             "An alias has been created to \"" + Text(alias.target) +
                 "\" but the file does not exist.");
    }
  }
}

std::optional<std::string> CompileRun::ReadListed(const std::string& name, std::string_view what) {
  std::string text;
  std::error_code error;
  if (const auto found = tree_.FindListed(name)) {
    const auto source = files_.Open(found->disk_path, &error);
    if (source != nullptr && ReadText(*source, &text)) return text;
  }
  Report(3017, Severity::kWarning,
         "The " + std::string(what) + " \"" + Text(name) + "\" cannot be read.");
  return std::nullopt;
}

void CompileRun::LoadMapFiles() {
  aliases_ = project_.aliases;
  map_ = project_.map;
  for (const ProjectLine& include : project_.alias_includes) {
    if (const auto text = ReadListed(include.text, "file of aliases")) {
      for (ProjectAlias& alias : ReadAliasFile(*text)) aliases_.push_back(std::move(alias));
    }
  }
  for (const ProjectLine& include : project_.map_includes) {
    if (const auto text = ReadListed(include.text, "header of context numbers")) {
      for (ProjectMapEntry& entry : ReadMapHeader(*text)) map_.push_back(std::move(entry));
    }
  }
}

void CompileRun::LoadStopWords() {
  if (!project_.full_text_search || project_.stop_list_file.empty()) return;
  const auto text = ReadListed(project_.stop_list_file, "stop list");
  if (!text) return;
  std::string_view rest = *text;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = Trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    std::string word;
    for (const char c : line.substr(0, kMaxWordLength)) {
      word.push_back(static_cast<char>(kSearchAlphabet[static_cast<unsigned char>(c)].folded));
    }
    if (!word.empty()) stop_words_.push_back(std::move(word));
  }
  postings_.LeaveOut(stop_words_);
}

std::size_t CompileRun::Enqueue(const FoundFile& found, Queue queue) {
  const auto [known, added] =
      by_path_.try_emplace(AsciiLowered(found.archive_path), stored_.size());
  if (added) {
    queues_[queue].push_back(stored_.size());
    stored_.push_back({found, KindOfFile(found.archive_path), queue, false, std::nullopt});
  }
  return known->second;
}

CompileRun::Queue CompileRun::QueueOf(const FoundFile& found, LinkKind kind) const {
  switch (KindOfFile(found.archive_path)) {
    case FileKind::kPage:
      return kPages;
    case FileKind::kStyleSheet:
      return kParts;
    case FileKind::kOther:
      break;
  }
  return kind == LinkKind::kPart ? kParts : kImages;
}

std::size_t CompileRun::NextToLoad() {
  for (int queue = kPages; queue < kQueues; ++queue) {
    if (next_[queue] < queues_[queue].size()) {
      // What a page shows comes after all pages, and those still being loaded may name more.
      if (queue != kPages && pages_loading_ > 0) return kNone;
      const std::size_t number = queues_[queue][next_[queue]++];
      if (queue == kPages) ++pages_loading_;
      return number;
    }
  }
  return kNone;
}

void CompileRun::NotCompiled(const StoredFile& stored) {
  Report(5003, Severity::kError,
         "Compilation failed while compiling " + stored.found.address + ".");
  result_.not_compiled.push_back(WithBackslashes(stored.found.address));
}

void CompileRun::Store(std::size_t number, LoadedFile file) {
  const StoredFile stored = stored_[number];  // a copy: links add to stored_
  if (stored.queue == kPages) --pages_loading_;
  if (!file.readable) {
    NotCompiled(stored);
    return;
  }
  if (project_.display_progress) listener_->File(WithBackslashes(stored.found.address));
  if (!StoreBytes(stored, file)) {
    NotCompiled(stored);
    return;
  }
  if (number == contents_ || number == index_) StoreSitemap(number, file);
  if (stored.kind == FileKind::kPage) StorePage(number, file);
  if (stored.kind == FileKind::kStyleSheet) {
    FollowLinks(number, file.links, file.page, file.Text());
  }
}

bool CompileRun::StoreBytes(const StoredFile& stored, const LoadedFile& file) {
  writer_->StartEntry("/" + stored.found.archive_path);
  if (file.rest == nullptr) {
    writer_->Append(AsBytes(file.bytes));
    result_.input_size += file.bytes.size();
    return true;
  }
  constexpr std::uint64_t kPiece = 1 << 20;
  std::vector<std::uint8_t> piece;
  const std::uint64_t size = file.rest->Size();
  for (std::uint64_t at = 0; at < size; at += kPiece) {
    piece.resize(static_cast<std::size_t>(std::min(kPiece, size - at)));
    if (!file.rest->ReadAt(at, piece)) return false;
    writer_->Append(piece);
  }
  result_.input_size += size;
  return true;
}

void CompileRun::StorePage(std::size_t number, const LoadedFile& file) {
  const std::uint32_t topic = topics_.Add(Address(stored_[number].found.address));
  stored_[number].topic = topic;
  ++result_.topics;
  if (!file.page.title.empty()) titles_[topic] = file.page.title;
  for (const std::string& keyword : file.page.keywords) page_keywords_.emplace_back(topic, keyword);
  for (const std::string& name : file.page.associations) associations_.AddJoined(name, topic);
  if (project_.full_text_search) postings_.AddPage(topic, file.words);
  if (auto_contents_) auto_contents_->AddPage(stored_[number].found.address, file.page.headings);
  ReportBadTags(number, file.page.bad_tags, file.Text(), file.page.code_page);
  FollowLinks(number, file.page.links, file.page, file.Text());
}

void CompileRun::ReportBadTags(std::size_t number, const std::vector<BadTag>& tags,
                               std::string_view bytes, int code_page) {
  const std::string& address = stored_[number].found.address;
  std::ptrdiff_t line = 1, line_offset = 0;
  for (const BadTag& tag : tags) {
    const auto offset = static_cast<std::ptrdiff_t>(tag.offset);
    line += std::count(bytes.begin() + line_offset, bytes.begin() + offset, '\n');
    line_offset = offset;
    Report(tag.is_closed ? 3004 : 3002, Severity::kWarning,
           address + "(" + std::to_string(line) + ") : The HTML tag \"" +
               ShownTag(bytes, tag, code_page) + "\" is not a valid HTML tag (" +
               (tag.is_closed ? "it does not begin with an alphanumeric character"
                              : "it has no \">\" at its end") +
               ").");
  }
}

void CompileRun::FollowLinks(std::size_t number, const std::vector<PageLink>& links,
                             const PageScan& page, std::string_view bytes) {
  std::string folder = FolderOf(stored_[number].found.tree_path);
  const std::string referrer = stored_[number].found.address;
  bool base_is_elsewhere = false;
  if (!page.base.empty()) {
    const Reference base = TakeApart(page.base);
    base_is_elsewhere = base.external;
    folder = NormalPath(folder + "/" + FolderOf(base.path));
  }
  const int code_page = page.code_page == 0 ? code_page_ : page.code_page;
  for (const PageLink& link : links) {
    const Reference reference = TakeApart(link.address);
    if (reference.external || base_is_elsewhere) {
      if (link.kind == LinkKind::kAnchor && reference.web) ++result_.internet_links;
      continue;
    }
    if (link.kind == LinkKind::kAnchor) ++result_.local_links;
    if (!reference.path.empty()) FollowLink(link, folder, code_page, referrer, bytes);
  }
}

void CompileRun::FollowLink(const PageLink& link, const std::string& folder, int code_page,
                            const std::string& referrer, std::string_view bytes) {
  const std::string_view path = TakeApart(link.address).path;
  const auto found = tree_.Find(path, folder, code_page);
  if (found) {
    const std::size_t target = Enqueue(*found, QueueOf(*found, link.kind));
    if (link.kind == LinkKind::kImage) graphics_.insert(target);
    return;
  }
  if (!missing_.insert(folder + "/" + std::string(path)).second) return;
  const auto line =
      1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(link.offset), '\n');
  Report(3010, Severity::kWarning,
         referrer + "(" + std::to_string(line) + ") : The file \"" + ToUtf8(path, code_page) +
             "\" that is linked here does not exist.");
}

// The pages of contents and index come before those that only links lead to, and in their spelling.
void CompileRun::CollectSitemaps() {
  for (const auto& [number, sitemap] :
       {std::pair(contents_, &contents_map_), std::pair(index_, &index_map_)}) {
    if (number == kNone) continue;
    std::string text;
    std::error_code error;
    const auto source = files_.Open(stored_[number].found.disk_path, &error);
    if (source == nullptr || !ReadText(*source, &text)) continue;  // reported when it is stored
    *sitemap = ReadSitemap(text, code_page_);
    const std::string folder = FolderOf(stored_[number].found.tree_path);
    for (const SitemapItem& item : sitemap->items) {
      for (const SitemapTarget& target : item.targets) {
        const Reference reference = TakeApart(target.local);
        if (reference.external) continue;
        result_.local_links += 2;
        if (const auto found = tree_.Find(reference.path, folder, code_page_)) {
          Enqueue(*found, QueueOf(*found, LinkKind::kPage));
        }
      }
    }
  }
}

void CompileRun::StoreSitemap(std::size_t number, const LoadedFile& file) {
  result_.input_size += file.bytes.size();  // counted twice, as the original does
  const Sitemap& sitemap = number == contents_ ? contents_map_ : index_map_;
  ReportBadTags(number, sitemap.bad_tags, file.bytes, sitemap.code_page);
  if (!sitemaps_are_topics_) return;
  stored_[number].topic = topics_.Add(Address(stored_[number].found.address));
  ++result_.topics;
}

}  // namespace scrivo

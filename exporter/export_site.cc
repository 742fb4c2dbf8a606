#include "exporter/export_site.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>

#include "exporter/binary_lists.h"
#include "exporter/book_topics.h"
#include "exporter/digest.h"
#include "exporter/help_book.h"
#include "exporter/language_tag.h"
#include "exporter/page_rewriter.h"
#include "exporter/script_text.h"
#include "exporter/search_writer.h"
#include "exporter/site_lists.h"
#include "reader/reader_files.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

std::string WithEntities(std::string_view text) {
  std::string html;
  AppendHtmlText(text, &html);
  return html;
}

std::string Filled(std::string_view form,
                   const std::vector<std::pair<std::string_view, std::string_view>>& fields) {
  std::string filled;
  while (!form.empty()) {
    const std::size_t open = std::min(form.find("{{"), form.size());
    filled.append(form.substr(0, open));
    form.remove_prefix(open);
    for (const auto& [name, value] : fields) {
      const std::string mark = "{{" + std::string(name) + "}}";
      if (!form.starts_with(mark)) continue;
      filled.append(value);
      form.remove_prefix(mark.size());
      break;
    }
  }
  return filled;
}

class Exporter {
 public:
  Exporter(ChmReader& reader, const ExportOptions& options, SiteOutput& folder)
      : reader_(reader),
        options_(options),
        folder_(folder),
        book_(OpenHelpBook(reader)),
        names_(options.file_name),
        search_([this](const std::string& name, const std::string& value) { Data(name, value); }) {
    result_.problems = book_.problems;
  }

  ExportResult Export();

 private:
  struct File {
    const Entry* entry;
    std::string name, place;
    bool is_page, is_script;
  };
  struct Page {
    std::string title, place;
  };

  void PlaceFiles();
  void MakeHead();
  void AddFile(const File& file);
  void AddPage(const File& file, std::string bytes);
  void NoteKeywords(const RewrittenPage& page, const std::string& title, const std::string& place);
  void AddKeywords(const Sitemap& index, std::vector<KeywordEntry>* keywords) const;
  void WriteLists();
  std::vector<ContentsEntry> Contents() const;
  std::string Home(const std::vector<ContentsEntry>& contents) const;
  std::string TitleAt(std::string_view address) const;
  void Data(const std::string& name, const std::string& value) {
    folder_.Create("data/" + name + ".js", "scrivo.put(\"" + name + "\"," + value + ");\n");
  }

  ChmReader& reader_;
  const ExportOptions& options_;
  SiteOutput& folder_;
  HelpBook book_;
  SiteNames names_;
  SearchWriter search_;
  RewriteRules rules_;
  BookTopics topics_;
  std::vector<File> files_;
  std::vector<Page> pages_;
  std::unordered_map<std::string, std::size_t> page_at_;  // by address
  std::vector<KeywordEntry> page_keywords_;
  std::vector<const File*> waiting_;  // pages that ask for topics of pages still to come
  bool all_known_ = false;
  ExportResult result_;
};

ExportResult Exporter::Export() {
  PlaceFiles();
  MakeHead();
  std::size_t done = 0;
  for (const File& file : files_) {
    if (options_.on_progress) options_.on_progress(done++, files_.size());
    AddFile(file);
  }
  topics_.AddIndex(book_, names_);
  all_known_ = true;
  for (const File* file : waiting_) AddFile(*file);
  if (pages_.empty()) throw std::runtime_error("the help file has no pages to export");
  search_.Finish();
  WriteLists();
  for (const ReaderFile& file : ReaderFiles()) {
    if (file.name.ends_with(".html")) continue;  // forms, which are filled in
    folder_.Create("reader/" + std::string(file.name), file.content);
  }
  folder_.Finish();
  result_.pages = pages_.size();
  return std::move(result_);
}

void Exporter::PlaceFiles() {
  for (const HelpBook::File& file : book_.files) {
    const std::string name = ToUtf8(file.entry->name, kUtf8CodePage);
    const bool is_script = EqualsIgnoringCase(
        std::string_view(name).substr(std::min(name.rfind('.'), name.size())), ".js");
    std::string place = names_.Add(name, file.is_page);
    if (place.empty()) {
      result_.problems.push_back(name + ": left out: the name leads out of the folder");
      continue;
    }
    files_.push_back({file.entry, name, std::move(place), file.is_page, is_script});
  }
}

// Only the site's own script runs in a page: it alone has the word that the page's policy asks for.
// The word comes from the whole help file, so that nothing within it can know the word beforehand.
void Exporter::MakeHead() {
  rules_.keep_scripts = options_.keep_scripts;
  rules_.head = "<meta charset=\"utf-8\"/>";
  std::string attribute;
  if (!options_.keep_scripts) {
    Digest digest;
    std::vector<std::uint8_t> buffer(1 << 20);
    const ByteSource& source = reader_.Source();
    for (std::uint64_t at = 0; at < source.Size(); at += buffer.size()) {
      const std::uint64_t count = std::min<std::uint64_t>(buffer.size(), source.Size() - at);
      const std::span<std::uint8_t> part(buffer.data(), static_cast<std::size_t>(count));
      if (source.ReadAt(at, part)) digest.Add(part);
    }
    const std::string word = digest.Finish().substr(0, 32);
    rules_.head += "<meta http-equiv=\"Content-Security-Policy\" content=\"script-src 'nonce-" +
                   word + "'\"/>";
    attribute = " nonce=\"" + word + "\"";
  }
  rules_.head += "<script src=\"{up}../reader/page.js\"" + attribute + "></script>";
}

void Exporter::AddFile(const File& file) {
  if (file.is_script && !options_.keep_scripts) return;
  const std::size_t problems = result_.problems.size();
  std::string bytes = BytesOf(reader_, *file.entry, &result_.problems);
  if (result_.problems.size() > problems) return;
  if (file.is_page) {
    AddPage(file, std::move(bytes));
    return;
  }
  const std::string_view place = file.place;
  const auto has_extension = [&](std::string_view extension) {
    return place.size() > extension.size() &&
           EqualsIgnoringCase(place.substr(place.size() - extension.size()), extension);
  };
  if (has_extension(".css")) {
    bytes = RewriteStyleSheet(bytes, file.name, place, names_);
  } else if ((has_extension(".svg") || has_extension(".xml")) && !options_.keep_scripts) {
    // A picture with scripts in it would run them when it is opened by itself.
    RewriteRules rules;
    bytes = RewritePage(bytes, file.name, place, names_, topics_.Topics(), rules).html;
  }
  folder_.Create("pages/" + file.place, bytes);
}

void Exporter::AddPage(const File& file, std::string bytes) {
  bytes = PageInUtf8(std::move(bytes), book_.code_page);
  const RewrittenPage page =
      RewritePage(bytes, file.name, file.place, names_, topics_.Topics(), rules_);
  std::string title = page.content.title;
  if (title.empty()) title = file.place.substr(file.place.rfind('/') + 1);
  if (!all_known_) {
    topics_.AddPage(page, title, file.place);
    NoteKeywords(page, title, file.place);
    if (AsksForTopics(bytes)) {
      waiting_.push_back(&file);
      return;
    }
  }
  folder_.Create("pages/" + file.place, page.html);
  std::string address;
  AppendAddress(file.place, &address);
  search_.AddPage(address, title, page.content);
  page_at_.emplace(address, pages_.size());
  pages_.push_back({std::move(title), file.place});
}

void Exporter::NoteKeywords(const RewrittenPage& page, const std::string& title,
                            const std::string& place) {
  for (const std::string& word : page.keywords) {
    std::string address;
    AppendAddress(place, &address);
    page_keywords_.push_back({0, word, {{title, std::move(address)}}, ""});
  }
}

std::string Exporter::TitleAt(std::string_view address) const {
  const auto found = page_at_.find(std::string(address.substr(0, address.find_first_of("?#"))));
  return found == page_at_.end() ? std::string() : pages_[found->second].title;
}

std::vector<ContentsEntry> Exporter::Contents() const {
  std::vector<ContentsEntry> contents;
  for (const SitemapItem& item : book_.contents.items) {
    ContentsEntry entry;
    entry.level = std::min(item.level, contents.empty() ? 0 : contents.back().level + 1);
    entry.title = item.name;
    for (const SitemapTarget& target : item.targets) {
      if (entry.address.empty()) entry.address = SiteAddress(target, names_, book_.contents_name);
    }
    if (entry.title.empty()) entry.title = TitleAt(entry.address);
    if (entry.title.empty() && !item.targets.empty()) entry.title = item.targets[0].title;
    if (entry.title.empty()) continue;
    contents.push_back(std::move(entry));
  }
  if (!contents.empty()) return contents;
  // A help file without contents gets its pages by their titles.
  for (const auto& [address, page] : page_at_) contents.push_back({0, pages_[page].title, address});
  std::sort(contents.begin(), contents.end(), [](const ContentsEntry& a, const ContentsEntry& b) {
    return a.title != b.title ? a.title < b.title : a.address < b.address;
  });
  return contents;
}

std::string Exporter::Home(const std::vector<ContentsEntry>& contents) const {
  SitemapTarget target;
  target.local = book_.default_topic;
  std::string home = SiteAddress(target, names_, "/");
  const auto is_page = [&](const std::string& address) {
    return !address.empty() && !TitleAt(address).empty();
  };
  if (is_page(home)) return home;
  for (const ContentsEntry& entry : contents) {
    if (is_page(entry.address)) return entry.address;
  }
  AppendAddress(pages_[0].place, &home);
  return home;
}

void Exporter::AddKeywords(const Sitemap& index, std::vector<KeywordEntry>* keywords) const {
  const std::vector<std::string> joined = JoinedNames(index);
  for (std::size_t i = 0; i < joined.size(); ++i) {
    const SitemapItem& item = index.items[i];
    KeywordEntry entry{item.level, item.name, {}, item.see_also};
    // One that refers to itself is a heading for those below it.
    if (entry.see == joined[i]) entry.see.clear();
    for (const SitemapTarget& target : item.targets) {
      const std::string address = SiteAddress(target, names_, book_.index_name);
      if (address.empty()) continue;
      std::string title = target.title.empty() ? TitleAt(address) : target.title;
      entry.topics.emplace_back(title.empty() ? address : title, address);
    }
    if (!entry.word.empty()) keywords->push_back(std::move(entry));
  }
}

void Exporter::WriteLists() {
  const std::vector<ContentsEntry> contents = Contents();
  std::vector<KeywordEntry> keywords = std::move(page_keywords_);
  AddKeywords(book_.index, &keywords);
  AddKeywords(book_.more_keywords, &keywords);
  keywords = SortedKeywords(std::move(keywords));
  result_.contents_entries = contents.size();
  result_.keywords = keywords.size();
  Data("contents", ContentsScript(contents, Home(contents)));
  Data("keywords", KeywordsScript(keywords));

  const std::string title = WithEntities(book_.title.empty() ? options_.file_name : book_.title);
  const std::string_view language = LanguageTag(book_.language);
  folder_.Create(
      "index.html",
      Filled(ReaderFileContent("index.html"),
             {{"title", title}, {"language", language}, {"list", ContentsList(contents)}}));
  folder_.Create(
      "keywords.html",
      Filled(ReaderFileContent("keywords.html"),
             {{"title", title}, {"language", language}, {"list", KeywordsList(keywords)}}));
}

}  // namespace

ExportResult ExportSite(ChmReader& reader, const ExportOptions& options, SiteOutput& folder) {
  return Exporter(reader, options, folder).Export();
}

}  // namespace scrivo

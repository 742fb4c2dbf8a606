#include "exporter/help_book.h"

#include <algorithm>
#include <optional>
#include <set>

#include "chm/problem.h"
#include "chm/system_info.h"
#include "exporter/binary_lists.h"
#include "html/charset.h"
#include "text/ascii_text.h"

namespace scrivo {

bool IsPageName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos) return false;
  constexpr std::string_view kPages[] = {"htm", "html", "xhtml", "xht", "shtml", "shtm",
                                         "stm", "asp",  "aspx",  "php", "jsp",   "hta"};
  return std::any_of(std::begin(kPages), std::end(kPages), [&](std::string_view extension) {
    return EqualsIgnoringCase(name.substr(dot + 1), extension);
  });
}

namespace {

class BookReader {
 public:
  BookReader(ChmReader& reader, HelpBook* book) : reader_(reader), book_(*book) {}

  void ReadLists() {
    book_.contents = ListFile(book_.contents_name);
    book_.index = ListFile(book_.index_name);
    const std::vector<std::uint8_t> contents =
        book_.contents.items.empty() ? Stream("/#TOCIDX") : std::vector<std::uint8_t>();
    const std::vector<std::uint8_t> keywords = Stream("/$WWKeywordLinks/BTree");
    const std::vector<std::uint8_t> associations = Stream("/$WWAssociativeLinks/BTree");
    if (contents.empty() && keywords.empty() && associations.empty()) return;
    const TopicBytes topics{Stream("/#TOPICS"), Stream("/#URLTBL"), Stream("/#URLSTR"),
                            Stream("/#STRINGS")};
    if (!contents.empty()) book_.contents = ReadBinaryContents(contents, topics, book_.code_page);
    AddKeywords(ReadBinaryIndex(keywords, topics, book_.code_page));
    book_.associations = ReadBinaryIndex(associations, topics, book_.code_page);
    const std::vector<std::string> names = JoinedNames(book_.associations);
    for (std::size_t i = 0; i < names.size(); ++i) book_.associations.items[i].name = names[i];
  }

 private:
  Sitemap ListFile(const std::string& name) {
    const Entry* entry = name.empty() ? nullptr : reader_.Find(name);
    if (entry == nullptr) return {};
    Sitemap sitemap = ReadSitemap(BytesOf(reader_, *entry, &book_.problems), book_.code_page);
    for (SitemapItem& item : sitemap.items) {
      for (SitemapTarget& target : item.targets) {
        target.local = DecodeGuessing(target.local, sitemap.code_page);
      }
    }
    return sitemap;
  }

  std::vector<std::uint8_t> Stream(std::string_view name) {
    const Entry* entry = reader_.Find(name);
    if (entry == nullptr) return {};
    const std::string bytes = BytesOf(reader_, *entry, &book_.problems);
    return {bytes.begin(), bytes.end()};
  }

  // A tree that lacks a keyword of the file is in a code page that could not hold them all: what
  // else it has would be the file's keywords again, misspelt.
  void AddKeywords(Sitemap tree) {
    if (book_.index.items.empty()) {
      book_.index = std::move(tree);
      return;
    }
    const std::vector<std::string> names = JoinedNames(tree);
    const std::set<std::string_view> in_tree(names.begin(), names.end());
    const std::vector<std::string> own = JoinedNames(book_.index);
    const bool has_all = std::all_of(
        own.begin(), own.end(), [&](const std::string& name) { return in_tree.contains(name); });
    if (has_all) book_.more_keywords = std::move(tree);
  }

  ChmReader& reader_;
  HelpBook& book_;
};

// Whether the file is the page that a compile of a web adds for the sake of the pictures it names.
bool IsPageOfDerivedImages(ChmReader& reader, const Entry& entry) {
  constexpr std::string_view kEnding = ".tmp.htm";
  constexpr std::string_view kStart =
      "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n<img src=\"_derived/";
  const std::string_view name = entry.name;
  if (!name.ends_with(kEnding) || name.rfind('/') != 0) return false;
  std::vector<std::string> told_when_it_is_exported;
  return BytesOf(reader, entry, &told_when_it_is_exported).starts_with(kStart);
}

}  // namespace

HelpBook OpenHelpBook(ChmReader& reader) {
  HelpBook book;
  const std::optional<SystemInfo> info = ReadSystemInfo(reader);
  if (info) {
    book.title = info->title.empty() ? info->window_title : info->title;
    book.code_page = info->code_page;
    book.default_topic = info->default_topic;
    book.contents_name = info->contents_file;
    book.index_name = info->index_file;
    if (info->language) book.language = *info->language;
  }
  BookReader(reader, &book).ReadLists();
  for (const Entry& entry : reader.Entries()) {
    if (KindOf(entry.name) != EntryKind::kUser) continue;
    if (EqualsIgnoringCase(entry.name, book.contents_name) ||
        EqualsIgnoringCase(entry.name, book.index_name)) {
      continue;
    }
    if (IsPageOfDerivedImages(reader, entry)) continue;
    book.files.push_back({&entry, IsPageName(entry.name)});
  }
  // One after the other, no part of the compressed content is decoded twice.
  std::stable_sort(
      book.files.begin(), book.files.end(), [](const HelpBook::File& a, const HelpBook::File& b) {
        return a.entry->section != b.entry->section ? a.entry->section < b.entry->section
                                                    : a.entry->offset < b.entry->offset;
      });
  return book;
}

std::string BytesOf(ChmReader& reader, const Entry& entry, std::vector<std::string>* problems) {
  std::optional<ProblemKind> problem = reader.Check(entry);
  std::string bytes;
  if (!problem) {
    bytes.resize(entry.length);
    problem = reader.Read(entry, 0, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()});
  }
  if (problem) {
    problems->push_back(Describe({*problem, entry.section, 0, std::string(entry.name)}));
    return "";
  }
  return bytes;
}

}  // namespace scrivo

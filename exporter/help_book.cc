#include "exporter/help_book.h"

#include <algorithm>
#include <optional>

#include "chm/problem.h"
#include "chm/system_info.h"
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
  std::vector<std::string> ignored;
  const auto read = [&](const std::string& name) {
    const Entry* entry = name.empty() ? nullptr : reader.Find(name);
    if (entry == nullptr) return Sitemap{};
    Sitemap sitemap = ReadSitemap(BytesOf(reader, *entry, &ignored), book.code_page);
    for (SitemapItem& item : sitemap.items) {
      for (SitemapTarget& target : item.targets) {
        target.local = DecodeGuessing(target.local, sitemap.code_page);
      }
    }
    return sitemap;
  };
  book.contents = read(book.contents_name);
  book.index = read(book.index_name);
  for (const Entry& entry : reader.Entries()) {
    if (KindOf(entry.name) != EntryKind::kUser) continue;
    if (EqualsIgnoringCase(entry.name, book.contents_name) ||
        EqualsIgnoringCase(entry.name, book.index_name)) {
      continue;
    }
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

#include "cli/run_summary.h"

#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "chm/system_info.h"
#include "cli/disk_path.h"
#include "cli/help_file.h"
#include "html/page_kind.h"
#include "project/sitemap.h"
#include "system/error.h"
#include "system/interruption.h"
#include "text/ascii_text.h"
#include "writers/index.h"

namespace scrivo {
namespace {

// The entries of a contents or index file; none when `name` is "".
std::size_t EntriesIn(const std::string& name, int code_page, ChmReader& reader) {
  const auto bytes = name.empty() ? std::nullopt : reader.ReadWhole(*reader.Find(name));
  if (!bytes) return 0;
  const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  return ReadSitemap(text, code_page).items.size();
}

}  // namespace

std::string Counted(std::size_t number, const std::string& one, const std::string& several) {
  if (number == 0) return "no " + several;
  return std::to_string(number) + " " + (number == 1 ? one : several);
}

WebCounts CountWeb(SiteWeb& web, bool with_index,
                   const std::function<void(std::size_t done, std::size_t all)>& on_file) {
  WebCounts counts;
  const SiteFiles files = AllFiles(web);
  counts.files = files.size();
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
    on_file(i, files.size());
    if (with_index) counts.index_entries += CountKeywords(*files[i]);
  }
  return counts;
}

std::string SizeText(std::uint64_t bytes) {
  if (bytes < 1000) return std::to_string(bytes) + " bytes";
  const char* const units[] = {"kB", "MB", "GB", "TB"};
  double size = static_cast<double>(bytes) / 1000;
  std::size_t unit = 0;
  while (size >= 999.5 && unit + 1 < std::size(units)) {
    size /= 1000;
    ++unit;
  }
  char text[32];
  std::snprintf(text, sizeof text, size < 9.95 ? "%.1f %s" : "%.0f %s", size, units[unit]);
  return text;
}

std::string WhatIsInside(const std::string& path) {
  constexpr std::string_view kDerivedPage = ".tmp.htm";
  const HelpFile file = OpenHelpFile(PortablePathOf(path));
  if (file.reader == nullptr) return "";
  const auto info = ReadSystemInfo(*file.reader);
  if (!info) return "";
  const std::string stem = info->contents_file.substr(0, info->contents_file.rfind('.'));
  std::size_t pages = 0, others = 0;
  for (const Entry& entry : file.reader->Entries()) {
    if (KindOf(entry.name) != EntryKind::kUser || entry.name == info->contents_file ||
        entry.name == info->index_file ||
        EqualsIgnoringCase(entry.name, std::string(stem).append(kDerivedPage))) {
      continue;
    }
    const PageKind kind = KindOfPage(entry.name);
    ++(kind == PageKind::kPlain || kind == PageKind::kVariant ? pages : others);
  }
  return Counted(pages, "page", "pages") + ", " + Counted(others, "other file", "other files") +
         ", " +
         Counted(EntriesIn(info->contents_file, info->code_page, *file.reader), "contents entry",
                 "contents entries") +
         ", " +
         Counted(EntriesIn(info->index_file, info->code_page, *file.reader), "index entry",
                 "index entries");
}

}  // namespace scrivo

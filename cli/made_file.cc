#include "cli/made_file.h"

#include <cstddef>
#include <string_view>

#include "chm/system_info.h"
#include "cli/disk_path.h"
#include "cli/help_file.h"
#include "cli/run_summary.h"
#include "html/page_kind.h"
#include "project/sitemap.h"
#include "text/ascii_text.h"

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

#include "cli/help_commands.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <ostream>
#include <string_view>

#include "chm/problem.h"
#include "chm/system_info.h"
#include "cli/help_file.h"
#include "html/charset.h"
#include "project/sitemap.h"
#include "text/languages.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

// Deeper levels are shown at this one, so that a line stays readable whatever the file holds.
constexpr int kDeepest = 40;

void PrintField(std::string_view label, const std::string& value, std::ostream& out) {
  out << std::left << std::setw(16) << label << (value.empty() ? "-" : PrintableName(value))
      << '\n';
}

std::string LanguageText(const SystemInfo& info) {
  if (!info.language) return {};
  return LanguageOption(*info.language) + ", code page " + std::to_string(info.code_page);
}

void PrintContents(const Sitemap& contents, std::ostream& out) {
  for (const SitemapItem& item : contents.items) {
    out << std::string(static_cast<std::size_t>(2 * std::min(item.level + 1, kDeepest)), ' ')
        << PrintableName(item.name);
    if (!item.targets.empty() && !item.targets.front().local.empty()) {
      out << "  [" << PrintableName(DecodeGuessing(item.targets.front().local, contents.code_page))
          << ']';
    }
    out << '\n';
  }
}

// Returns whether there was nothing to complain about.
bool PrintContentsFile(const SystemInfo& info, ChmReader& reader, std::ostream& out,
                       std::ostream& err) {
  PrintField("Contents:", info.contents_file, out);
  if (info.contents_file.empty()) return true;
  const auto bytes = reader.ReadWhole(*reader.Find(info.contents_file));
  if (!bytes) {
    err << "scrivo: error: " << PrintableName(info.contents_file) << ": cannot be read\n";
    return false;
  }
  const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  PrintContents(ReadSitemap(text, info.code_page), out);
  return true;
}

}  // namespace

int RunList(const std::string& path, bool internal, std::ostream& out, std::ostream& err) {
  const HelpFile file = OpenHelpFile(path);
  for (const std::string& complaint : file.complaints)
    err << "scrivo: error: " << complaint << '\n';
  if (file.reader == nullptr) return 1;

  int status = file.complaints.empty() ? 0 : 1;
  std::uint64_t total = 0;
  std::size_t count = 0;
  for (const Entry& entry : file.reader->Entries()) {
    const EntryKind kind = KindOf(entry.name);
    const bool shown = kind == EntryKind::kUser ||
                       (internal && kind == EntryKind::kInternal && !entry.name.ends_with('/'));
    if (!shown) continue;
    out << std::setw(12) << entry.length << "  " << PrintableName(entry.name) << '\n';
    if (const auto problem = file.reader->Check(entry)) {
      err << "scrivo: error: " << Describe({*problem, entry.section, 0, std::string(entry.name)})
          << '\n';
      status = 1;
      continue;
    }
    ++count;
    total += entry.length;
  }
  out << std::setw(12) << total << "  in " << count << (count == 1 ? " file" : " files") << '\n';
  return status;
}

int RunInfo(const std::string& path, std::ostream& out, std::ostream& err) {
  const HelpFile file = OpenHelpFile(path);
  for (const std::string& complaint : file.complaints)
    err << "scrivo: error: " << complaint << '\n';
  if (file.reader == nullptr) return 1;
  const auto info = ReadSystemInfo(*file.reader);
  if (!info) {
    err << "scrivo: error: " << PrintableName(path) << ": /#SYSTEM is missing or damaged\n";
    return 1;
  }
  const auto& entries = file.reader->Entries();
  const auto files = std::count_if(entries.begin(), entries.end(), [](const Entry& entry) {
    return KindOf(entry.name) == EntryKind::kUser;
  });
  PrintField("Title:", info->title, out);
  PrintField("Default topic:", info->default_topic, out);
  PrintField("Language:", LanguageText(*info), out);
  PrintField("Window:", info->window, out);
  PrintField("Window title:", info->window_title, out);
  PrintField("Compiler:", info->compiler, out);
  PrintField("Files:", std::to_string(files), out);
  PrintField("Index:", info->index_file, out);
  const bool complete = PrintContentsFile(*info, *file.reader, out, err);
  return file.complaints.empty() && complete ? 0 : 1;
}

}  // namespace scrivo

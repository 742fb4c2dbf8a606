#include "cli/web_sources.h"

#include <algorithm>
#include <utility>

#include "cli/disk_path.h"
#include "cli/run_summary.h"
#include "html/charset.h"
#include "html/page_bars.h"
#include "html/page_kind.h"
#include "platform/paths.h"
#include "text/ascii_text.h"
#include "webs/hidden_files.h"
#include "webs/page_head.h"

namespace scrivo {
namespace {

const SourceFiles& EitherOf(bool first, const SourceFiles& a, const SourceFiles& b) {
  return first ? a : b;
}

}  // namespace

OverlayFiles::OverlayFiles(const SourceFiles& below, std::string folder,
                           std::map<std::string, std::string> files)
    : below_(below), folder_(std::move(folder)), files_(std::move(files)) {}

std::vector<SourceEntry> OverlayFiles::List(const std::string& folder) const {
  std::vector<SourceEntry> entries = below_.List(folder);
  if (folder != folder_) return entries;
  std::erase_if(entries, [&](const SourceEntry& entry) {
    return std::any_of(files_.begin(), files_.end(), [&](const auto& file) {
      return EqualsIgnoringCase(entry.name, file.first);
    });
  });
  for (const auto& [name, text] : files_) entries.push_back({name, false, false});
  return entries;
}

std::unique_ptr<ByteSource> OverlayFiles::Open(const std::string& path,
                                               std::error_code* error) const {
  const std::size_t slash = path.rfind('/');
  if (slash != std::string::npos && path.compare(0, slash, folder_) == 0) {
    const auto file = files_.find(path.substr(slash + 1));
    if (file != files_.end()) {
      return std::make_unique<MemorySource>(
          std::vector<std::uint8_t>(file->second.begin(), file->second.end()));
    }
  }
  return below_.Open(path, error);
}

WithheldFiles::WithheldFiles(const SourceFiles& below, std::string folder, bool with_hidden)
    : below_(below), folder_(std::move(folder)), with_hidden_(with_hidden) {}

std::vector<SourceEntry> WithheldFiles::List(const std::string& folder) const {
  std::vector<SourceEntry> entries = below_.List(folder);
  if (with_hidden_) return entries;
  if (folder != folder_ && !folder.starts_with(folder_ + "/")) return entries;
  for (SourceEntry& entry : entries) entry.is_withheld = IsHiddenName(entry.name);
  return entries;
}

std::unique_ptr<ByteSource> WithheldFiles::Open(const std::string& path,
                                                std::error_code* error) const {
  return below_.Open(path, error);
}

std::unique_ptr<ByteSource> ChangedPages::Open(const std::string& path,
                                               std::error_code* error) const {
  std::unique_ptr<ByteSource> source = below_.Open(path, error);
  if (source == nullptr || KindOfPage(path) == PageKind::kNone || source->Size() > kLongestPage) {
    return source;
  }
  std::string text;
  if (!ReadText(*source, &text)) return source;  // the reader meets the same failure and tells it
  std::optional<std::string> changed = change_(text);
  const Page page = {changed.has_value(), text.size(), changed ? changed->size() : text.size()};
  if (changed) text = std::move(*changed);
  {
    const std::lock_guard lock(mutex_);
    pages_[path] = page;
  }
  return std::make_unique<MemorySource>(std::vector<std::uint8_t>(text.begin(), text.end()));
}

ChangedPages::Sum ChangedPages::Total() const {
  const std::lock_guard lock(mutex_);
  Sum sum;
  for (const auto& [path, page] : pages_) {
    if (page.changed && sum.changed++ == 0) sum.first = path;
    sum.bytes_before += page.bytes_before;
    sum.bytes_after += page.bytes_after;
  }
  return sum;
}

WebSources::WebSources(const HelpProject& project, const CompileJob& job)
    : folder_(PortablePathOf(project.folder)),
      without_bars_(job.without_bars),
      keep_charsets_(job.keep_charsets),
      taken_(disk_, folder_, job.with_hidden),
      bare_(taken_, WithoutBars),
      declared_(EitherOf(without_bars_, bare_, taken_), WithUtf8Declared),
      all_(EitherOf(!keep_charsets_, declared_, EitherOf(without_bars_, bare_, taken_)), folder_,
           project.files) {}

void WebSources::TellChanges(Console& console) const {
  if (without_bars_) TellBars(console);
  TellCharsets(console);
}

void WebSources::TellBars(Console& console) const {
  const ChangedPages::Sum sum = bare_.Total();
  if (sum.changed == 0) {
    console.Remark("No page has bars that --without-bars could leave out.");
    return;
  }
  const std::uint64_t bar_bytes = sum.bytes_before - sum.bytes_after;
  const std::uint64_t percent = (200 * bar_bytes / sum.bytes_before + 1) / 2;
  console.Remark("Left the bars out of " + Counted(sum.changed, "page", "pages") + ": " +
                 std::to_string(percent) + " % of the bytes of all pages.");
}

void WebSources::TellCharsets(Console& console) const {
  const ChangedPages::Sum sum = declared_.Total();
  if (sum.changed == 0) return;
  console.Remark("Corrected the declared charset to UTF-8 in " +
                 Counted(sum.changed, "page", "pages") + ", first in " +
                 NameText(sum.first.substr(folder_.size() + 1)) +
                 ". To keep the pages as they are, add --keep-charsets.");
}

}  // namespace scrivo

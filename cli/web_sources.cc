#include "cli/web_sources.h"

#include "cli/disk_path.h"
#include "cli/run_summary.h"
#include "html/charset.h"
#include "html/page_bars.h"
#include "platform/ansi_names.h"

namespace scrivo {
namespace {

const SourceFiles& OneOf(bool first, const SourceFiles& a, const SourceFiles& b) {
  return first ? a : b;
}

}  // namespace

WebSources::WebSources(const HelpProject& project, const CompileJob& job)
    : folder_(PortablePathOf(project.folder)),
      without_bars_(job.without_bars),
      keep_charsets_(job.keep_charsets),
      taken_(disk_, folder_, job.with_hidden),
      bare_(taken_, WithoutBars),
      declared_(OneOf(without_bars_, bare_, taken_), WithUtf8Declared),
      all_(OneOf(!keep_charsets_, declared_, OneOf(without_bars_, bare_, taken_)), folder_,
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

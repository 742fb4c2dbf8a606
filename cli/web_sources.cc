#include "cli/web_sources.h"

#include "cli/disk_path.h"

namespace scrivo {

WebSources::WebSources(const HelpProject& project, const CompileJob& job)
    : folder_(PortablePathOf(project.folder)),
      without_bars_(job.without_bars),
      taken_(disk_, folder_, job.with_hidden),
      bare_(taken_),
      all_(without_bars_ ? static_cast<const SourceFiles&>(bare_) : taken_, folder_,
           project.files) {}

void WebSources::TellBars(Console& console) const {
  if (!without_bars_) return;
  const BarlessFiles::Sum sum = bare_.Total();
  if (sum.pages == 0) {
    console.Remark("No page has bars that --without-bars could leave out.");
    return;
  }
  const std::uint64_t percent = (200 * sum.bar_bytes / sum.page_bytes + 1) / 2;
  console.Remark("Left the bars out of " + std::to_string(sum.pages) +
                 (sum.pages == 1 ? " page: " : " pages: ") + std::to_string(percent) +
                 " % of the bytes of all pages.");
}

}  // namespace scrivo

#include "cli/run_summary.h"

#include <cstdio>
#include <iterator>

#include "system/error.h"
#include "system/interruption.h"
#include "writers/index.h"

namespace scrivo {

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

}  // namespace scrivo

#include "cli/barless_files.h"

#include <utility>

#include "html/page_bars.h"
#include "html/page_kind.h"

namespace scrivo {

std::unique_ptr<ByteSource> BarlessFiles::Open(const std::string& path,
                                               std::error_code* error) const {
  std::unique_ptr<ByteSource> source = below_.Open(path, error);
  if (source == nullptr || KindOfPage(path) == PageKind::kNone) return source;
  std::string text;
  if (!ReadText(*source, &text)) return source;  // the reader meets the same failure and tells it
  const std::optional<std::string> bare = WithoutBars(text);
  {
    const std::lock_guard lock(mutex_);
    pages_[path] = {text.size(), bare ? text.size() - bare->size() : 0};
  }
  if (!bare) return source;
  return std::make_unique<MemorySource>(std::vector<std::uint8_t>(bare->begin(), bare->end()));
}

BarlessFiles::Sum BarlessFiles::Total() const {
  const std::lock_guard lock(mutex_);
  Sum sum;
  for (const auto& [path, page] : pages_) {
    if (page.bar_bytes > 0) ++sum.pages;
    sum.page_bytes += page.bytes;
    sum.bar_bytes += page.bar_bytes;
  }
  return sum;
}

}  // namespace scrivo

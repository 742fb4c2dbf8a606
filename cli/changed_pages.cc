#include "cli/changed_pages.h"

#include <utility>

#include "html/page_kind.h"

namespace scrivo {
namespace {

// Nobody wrote a page that goes on past this size; the compiler stores one as it is.
constexpr std::uint64_t kLongestPage = std::uint64_t{64} << 20;

}  // namespace

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

}  // namespace scrivo

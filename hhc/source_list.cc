#include "hhc/source_list.h"

#include "text/ascii_text.h"

namespace scrivo {

std::size_t SourceList::Add(const FoundFile& found, Queue queue) {
  const auto [known, added] = by_path_.try_emplace(AsciiLowered(found.archive_path), files_.size());
  if (added) {
    queues_[queue].push_back(files_.size());
    files_.push_back({found, KindOfFile(found.archive_path), queue});
  }
  return known->second;
}

std::size_t SourceList::AddLinked(const FoundFile& found, LinkKind kind) {
  switch (KindOfFile(found.archive_path)) {
    case FileKind::kPage:
      return Add(found, kPages);
    case FileKind::kStyleSheet:
      return Add(found, kParts);
    case FileKind::kOther:
      break;
  }
  return Add(found, kind == LinkKind::kPart ? kParts : kImages);
}

std::size_t SourceList::Find(std::string_view archive_path) const {
  const auto known = by_path_.find(AsciiLowered(archive_path));
  return known == by_path_.end() ? kNone : known->second;
}

std::size_t SourceList::TakeNext() {
  for (int queue = kPages; queue < kQueues; ++queue) {
    if (next_[queue] == queues_[queue].size()) continue;
    if (queue != kPages && pages_loading_ > 0) return kNone;
    if (queue == kPages) ++pages_loading_;
    return queues_[queue][next_[queue]++];
  }
  return kNone;
}

void SourceList::Loaded(std::size_t number) {
  if (files_[number].queue == kPages) --pages_loading_;
}

}  // namespace scrivo

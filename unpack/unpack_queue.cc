#include "unpack/unpack_queue.h"

#include <algorithm>

#include "chm/container_format.h"

namespace scrivo {
namespace {

constexpr std::size_t kBatch = 32;

}  // namespace

UnpackQueue::UnpackQueue(std::span<const PlannedFile> files, std::uint64_t interval,
                         std::size_t intervals, std::size_t run)
    : files_(files), interval_(interval), intervals_(intervals), run_(run) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    const Entry& entry = *files[i].entry;
    const bool decoded = entry.section == kSectionCompressed && entry.length != 0;
    (decoded ? compressed_ : plain_).push_back(i);
  }
}

std::optional<UnpackJob> UnpackQueue::Next() {
  const std::lock_guard lock(mutex_);
  if (next_plain_ < plain_.size()) return NextBatch();
  if (next_compressed_ < compressed_.size() || !open_.empty()) return NextRun();
  return std::nullopt;
}

UnpackJob UnpackQueue::NextBatch() {
  const std::size_t count = std::min(kBatch, plain_.size() - next_plain_);
  const auto first = plain_.begin() + static_cast<std::ptrdiff_t>(next_plain_);
  next_plain_ += count;
  return {{first, first + static_cast<std::ptrdiff_t>(count)}, 0, 0};
}

UnpackJob UnpackQueue::NextRun() {
  if (open_.empty()) {
    const Entry& next = *files_[compressed_[next_compressed_]].entry;
    next_interval_ = static_cast<std::size_t>(next.offset / interval_);
  }
  UnpackJob job;
  job.first_interval = next_interval_;
  job.interval_count = std::min(run_, intervals_ - next_interval_);
  next_interval_ += job.interval_count;
  const std::uint64_t end = next_interval_ * interval_;

  job.files = open_;
  while (next_compressed_ < compressed_.size() &&
         files_[compressed_[next_compressed_]].entry->offset < end) {
    job.files.push_back(compressed_[next_compressed_++]);
  }
  open_.clear();
  std::copy_if(job.files.begin(), job.files.end(), std::back_inserter(open_),
               [this, end](std::size_t file) {
                 const Entry& entry = *files_[file].entry;
                 return entry.offset + entry.length > end;
               });
  return job;
}

}  // namespace scrivo

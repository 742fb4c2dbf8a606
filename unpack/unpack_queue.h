#pragma once

// Cuts the work of unpacking into jobs that threads can do side by side.

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "unpack/unpack_plan.h"

namespace scrivo {

// A job is either a batch of files that need no decoding (interval_count is 0), or a run of reset
// intervals with the files that have a part in it.
struct UnpackJob {
  std::vector<std::size_t> files;  // places in the plan
  std::size_t first_interval = 0;
  std::size_t interval_count = 0;
};

// Jobs come in the order of the content. They are made when asked for: entries of a damaged help
// file may overlap, and then all jobs together would be out of proportion to it.
class UnpackQueue {
 public:
  // `files` in the order that PlanUnpacking() gives; must outlive the queue. `interval` in bytes,
  // `run` in intervals; files must not reach beyond `intervals`.
  UnpackQueue(std::span<const PlannedFile> files, std::uint64_t interval, std::size_t intervals,
              std::size_t run);

  // The next job; nothing when all are given out. From any thread.
  std::optional<UnpackJob> Next();

 private:
  UnpackJob NextBatch();
  UnpackJob NextRun();

  std::span<const PlannedFile> files_;
  std::uint64_t interval_;
  std::size_t intervals_;
  std::size_t run_;
  std::vector<std::size_t> plain_;       // need no decoding
  std::vector<std::size_t> compressed_;  // by offset

  std::mutex mutex_;
  std::size_t next_plain_ = 0;
  std::size_t next_compressed_ = 0;
  std::size_t next_interval_ = 0;
  std::vector<std::size_t> open_;  // files that go on into the next run
};

}  // namespace scrivo

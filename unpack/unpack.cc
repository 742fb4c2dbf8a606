#include "unpack/unpack.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "chm/container_format.h"
#include "unpack/unpack_queue.h"

namespace scrivo {
namespace {

// What a thread decodes in one go: enough that few files lie across two runs and that threads
// seldom make files in the same folder, where they would wait for each other; little enough that it
// is still in the cache when it is written.
constexpr std::size_t kRunBytes = 0x100000;
// What all threads together may hold.
constexpr std::size_t kMemory = 40 << 20;
// Runs for every thread, so that they end at about the same time.
constexpr std::size_t kRunsPerThread = 4;
// Uncompressed files are copied in pieces of this size.
constexpr std::size_t kPiece = 0x40000;

// How the threads share the work.
struct Split {
  std::size_t run = 1;  // intervals
  std::size_t threads = 1;
};

Split SplitWork(const CompressedSection* section, unsigned most_threads) {
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  std::size_t threads = most_threads == 0 ? cores : most_threads;
  if (section == nullptr) return {1, 1};
  const auto interval = static_cast<std::size_t>(section->interval);
  const std::size_t per_run = std::max<std::size_t>(1, kRunBytes / interval);
  const std::size_t per_thread = per_run * interval + 2 * interval + kPiece;
  threads = std::clamp<std::size_t>(kMemory / per_thread, 1, threads);
  const std::size_t share = section->starts.size() / (threads * kRunsPerThread);
  const std::size_t run = threads == 1 ? per_run : std::clamp<std::size_t>(share, 1, per_run);
  const std::size_t runs = (section->starts.size() + run - 1) / run;
  return {run, std::clamp<std::size_t>(runs, 1, threads)};
}

ProblemKind ProblemOf(WriteOutcome outcome) {
  switch (outcome) {
    case WriteOutcome::kLinkInTheWay:
      return ProblemKind::kLinkInTheWay;
    case WriteOutcome::kFileInTheWay:
      return ProblemKind::kFileInTheWay;
    case WriteOutcome::kFolderInTheWay:
      return ProblemKind::kFolderInTheWay;
    case WriteOutcome::kDone:
    case WriteOutcome::kFailed:
    case WriteOutcome::kDiskFailed:
      break;
  }
  return ProblemKind::kWriteFailed;
}

enum class FileState : std::uint8_t { kPending, kWritten, kDamaged, kUnreadable, kNotWritten };

class Unpacker {
 public:
  Unpacker(const ChmReader& reader, OutputFolder& folder, std::span<const PlannedFile> files,
           const Split& split, UnpackListener& listener)
      : reader_(reader),
        folder_(folder),
        files_(files),
        listener_(listener),
        section_(reader.Compressed()),
        queue_(files, section_ != nullptr ? section_->interval : kLzxUsualInterval,
               section_ != nullptr ? section_->starts.size() : 0, split.run),
        threads_(split.threads),
        states_(files.size()) {
    for (const PlannedFile& file : files) total_ += file.entry->length;
  }

  UnpackResult Run();

 private:
  // A file that lies across runs, while it is not complete.
  struct Spanning {
    std::uint64_t missing = 0;
    bool started = false;
    FileState state = FileState::kWritten;
  };

  // What a thread keeps from job to job.
  struct Worker {
    std::optional<IntervalDecoder> decoder;
    std::vector<std::uint8_t> buffer;
    std::vector<std::size_t> right;  // bytes of each interval in the buffer that are right
  };

  void Work(bool reports);
  void Do(const UnpackJob& job, Worker* worker);
  void CopyPlain(std::size_t file, Worker* worker);
  void Decode(const UnpackJob& job, Worker* worker);
  void WriteFile(const UnpackJob& job, std::size_t file, const Worker& worker);
  void WriteSpanning(std::size_t file, std::uint64_t offset, std::span<const std::uint8_t> part,
                     bool right);
  FileState Judge(std::size_t file, const WriteResult& result);
  FileState JudgeLocked(std::size_t file, const WriteResult& result);
  void Finish(std::size_t file, FileState state);
  bool IsOver();
  void GiveUpSpanning();
  void Report();
  void ReportFile(std::size_t file);
  void ReportRest();

  const ChmReader& reader_;
  OutputFolder& folder_;
  std::span<const PlannedFile> files_;
  UnpackListener& listener_;
  const CompressedSection* section_;
  UnpackQueue queue_;
  std::size_t threads_;
  std::uint64_t total_ = 0;
  std::atomic<std::uint64_t> done_ = 0;
  std::atomic<bool> over_ = false;  // nobody goes on
  std::atomic<bool> stopped_ = false, disk_failed_ = false;
  std::vector<std::atomic<FileState>> states_;
  std::size_t reported_ = 0;
  UnpackResult result_;

  std::mutex mutex_;  // guards what follows
  std::map<std::size_t, WriteResult> failures_;
  std::map<std::size_t, Spanning> spanning_;
  std::exception_ptr exception_;
  std::pair<std::size_t, std::error_code> disk_failure_;  // the file that showed it, and why
};

UnpackResult Unpacker::Run() {
  std::vector<std::thread> helpers;
  for (std::size_t i = 1; i < threads_; ++i) {
    try {
      helpers.emplace_back([this] { Work(false); });
    } catch (...) {
      break;  // fewer will do
    }
  }
  Work(true);
  for (std::thread& helper : helpers) helper.join();
  if (over_) GiveUpSpanning();
  if (exception_) std::rethrow_exception(exception_);
  result_.stopped = stopped_;
  if (stopped_) return result_;
  Report();
  if (disk_failed_) {
    ReportRest();
  } else {
    listener_.OnProgress(total_, total_);
  }
  return result_;
}

void Unpacker::Work(bool reports) {
  try {
    Worker worker;
    if (section_ != nullptr) worker.decoder.emplace(reader_.Source(), *section_);
    while (!IsOver()) {
      const auto job = queue_.Next();
      if (!job) return;
      Do(*job, &worker);
      if (reports && !IsOver()) {
        Report();
        listener_.OnProgress(done_, total_);
      }
    }
  } catch (...) {
    const std::lock_guard lock(mutex_);
    exception_ = std::current_exception();
    over_ = true;
  }
}

// Whether to begin nothing any more.
bool Unpacker::IsOver() {
  if (!over_ && listener_.StopWanted()) stopped_ = over_ = true;
  return over_;
}

void Unpacker::GiveUpSpanning() {
  for (const auto& [file, spanning] : spanning_) {
    if (spanning.started) folder_.GiveUp(files_[file].path);
  }
}

void Unpacker::Do(const UnpackJob& job, Worker* worker) {
  if (job.interval_count == 0) {
    for (const std::size_t file : job.files) {
      if (IsOver()) return;
      CopyPlain(file, worker);
    }
    return;
  }
  Decode(job, worker);
  for (const std::size_t file : job.files) {
    if (IsOver()) return;
    WriteFile(job, file, *worker);
  }
}

void Unpacker::CopyPlain(std::size_t file, Worker* worker) {
  const auto& [entry, path] = files_[file];
  if (entry->length == 0) return Finish(file, Judge(file, folder_.Create(path, {})));
  const bool in_parts = entry->length > kPiece;
  FileState state = FileState::kWritten;
  if (in_parts) state = Judge(file, folder_.Start(path));
  if (state != FileState::kWritten) return Finish(file, state);
  std::uint64_t at = 0;
  do {
    worker->buffer.resize(
        static_cast<std::size_t>(std::min<std::uint64_t>(entry->length - at, kPiece)));
    if (!reader_.Source().ReadAt(reader_.ContentOffset() + entry->offset + at, worker->buffer)) {
      state = FileState::kUnreadable;
      break;
    }
    state = Judge(file, in_parts ? folder_.WritePart(path, at, worker->buffer)
                                 : folder_.Create(path, worker->buffer));
    at += worker->buffer.size();
    done_ += worker->buffer.size();
  } while (state == FileState::kWritten && at < entry->length && !IsOver());
  const bool complete = state == FileState::kWritten && at == entry->length;
  if (in_parts && complete) state = Judge(file, folder_.Finish(path));
  if (in_parts && !complete) folder_.GiveUp(path);
  if (complete || state != FileState::kWritten) Finish(file, state);
}

void Unpacker::Decode(const UnpackJob& job, Worker* worker) {
  const std::uint64_t start = job.first_interval * section_->interval;
  std::vector<bool> wanted(job.interval_count);
  for (const std::size_t file : job.files) {
    const Entry& entry = *files_[file].entry;
    const std::uint64_t first = std::max(entry.offset, start) - start;
    const std::uint64_t last = entry.offset + entry.length - 1 - start;
    for (std::uint64_t i = first / section_->interval;
         i <= last / section_->interval && i < wanted.size(); ++i) {
      wanted[static_cast<std::size_t>(i)] = true;
    }
  }
  const auto interval = static_cast<std::size_t>(section_->interval);
  worker->buffer.resize(job.interval_count * interval);
  worker->right.assign(job.interval_count, 0);
  for (std::size_t i = 0; i < job.interval_count; ++i) {
    if (!wanted[i]) continue;
    const std::size_t index = job.first_interval + i;
    const std::span<std::uint8_t> output =
        std::span(worker->buffer).subspan(i * interval, section_->PaddedLength(index));
    worker->right[i] = worker->decoder->Decode(index, output);
  }
}

void Unpacker::WriteFile(const UnpackJob& job, std::size_t file, const Worker& worker) {
  const auto& [entry, path] = files_[file];
  const std::uint64_t run_start = job.first_interval * section_->interval;
  const std::uint64_t run_end = run_start + worker.buffer.size();
  const std::uint64_t from = std::max(entry->offset, run_start);
  const std::uint64_t to = std::min(entry->offset + entry->length, run_end);
  const auto within = static_cast<std::size_t>(from - run_start);
  const auto size = static_cast<std::size_t>(to - from);
  const auto interval = static_cast<std::size_t>(section_->interval);
  bool right = true;
  for (std::size_t i = within / interval; i * interval < within + size; ++i) {
    right = right && worker.right[i] >= std::min(interval, within + size - i * interval);
  }
  const std::span<const std::uint8_t> part = std::span(worker.buffer).subspan(within, size);
  if (size != entry->length) {
    WriteSpanning(file, from - entry->offset, part, right);
  } else if (right) {
    Finish(file, Judge(file, folder_.Create(path, part)));
  } else {
    Finish(file, FileState::kDamaged);
  }
  done_ += size;
}

void Unpacker::WriteSpanning(std::size_t file, std::uint64_t offset,
                             std::span<const std::uint8_t> part, bool right) {
  const auto& [entry, path] = files_[file];
  bool write = false;
  {
    const std::lock_guard lock(mutex_);
    Spanning& spanning = spanning_.try_emplace(file, Spanning{entry->length}).first->second;
    if (!right) spanning.state = FileState::kDamaged;
    if (spanning.state == FileState::kWritten && !spanning.started) {
      spanning.state = JudgeLocked(file, folder_.Start(path));
      spanning.started = spanning.state == FileState::kWritten;
    }
    write = spanning.state == FileState::kWritten;
  }
  WriteResult result;
  if (write) result = folder_.WritePart(path, offset, part);

  const std::lock_guard lock(mutex_);
  Spanning& spanning = spanning_[file];
  if (const FileState state = JudgeLocked(file, result); state != FileState::kWritten) {
    spanning.state = state;
  }
  spanning.missing -= part.size();
  if (spanning.missing != 0) return;
  if (spanning.started && spanning.state != FileState::kWritten) folder_.GiveUp(path);
  if (spanning.state == FileState::kWritten) {
    spanning.state = JudgeLocked(file, folder_.Finish(path));
  }
  Finish(file, spanning.state);
  spanning_.erase(file);
}

FileState Unpacker::Judge(std::size_t file, const WriteResult& result) {
  if (result.outcome == WriteOutcome::kDone) return FileState::kWritten;
  const std::lock_guard lock(mutex_);
  return JudgeLocked(file, result);
}

FileState Unpacker::JudgeLocked(std::size_t file, const WriteResult& result) {
  if (result.outcome == WriteOutcome::kDone) return FileState::kWritten;
  if (result.outcome == WriteOutcome::kDiskFailed) {
    if (!disk_failed_) disk_failure_ = {file, result.error};
    disk_failed_ = over_ = true;
  }
  failures_[file] = result;
  return FileState::kNotWritten;
}

void Unpacker::Finish(std::size_t file, FileState state) { states_[file] = state; }

void Unpacker::Report() {
  while (!disk_failed_ && reported_ < files_.size() && states_[reported_] != FileState::kPending) {
    ReportFile(reported_++);
  }
}

void Unpacker::ReportFile(std::size_t file) {
  const FileState state = states_[file];
  if (state == FileState::kWritten) {
    ++result_.written;
    return listener_.OnFile(files_[file]);
  }
  Problem problem{ProblemKind::kDamaged, 0, 0, std::string(files_[file].entry->name)};
  if (state == FileState::kUnreadable) problem.kind = ProblemKind::kUnreadable;
  if (state == FileState::kNotWritten) {
    const std::lock_guard lock(mutex_);
    const WriteResult& failure = failures_[file];
    problem.kind = ProblemOf(failure.outcome);
    if (failure.error) problem.detail = failure.error.message();
  }
  ++result_.problems;
  listener_.OnProblem(problem);
}

// What is left to tell when the disk has failed.
void Unpacker::ReportRest() {
  std::uint64_t missing = 0;
  for (; reported_ < files_.size(); ++reported_) {
    if (states_[reported_] == FileState::kWritten) {
      ReportFile(reported_);
    } else {
      ++missing;
    }
  }
  result_.problems += static_cast<std::size_t>(missing);
  const auto& [file, error] = disk_failure_;
  listener_.OnProblem(
      {ProblemKind::kWriteFailed, 0, 0, std::string(files_[file].entry->name), error.message()});
  if (missing > 1) listener_.OnProblem({ProblemKind::kMoreNotWritten, missing - 1});
}

}  // namespace

UnpackResult Unpack(const ChmReader& reader, OutputFolder& folder, const UnpackOptions& options,
                    UnpackListener& listener) {
  Problems problems;
  const std::vector<PlannedFile> files =
      PlanUnpacking(reader, folder.Rules(), options.internal, &problems);
  // Whatever ends the unpacking early, an exception of the listener too.
  struct Cleaner {
    ~Cleaner() {
      if (!all_unpacked) folder.RemoveEmptyFolders();
    }
    OutputFolder& folder;
    bool all_unpacked = false;
  } cleaner{folder};
  for (const Problem& problem : problems) listener.OnProblem(problem);
  Unpacker unpacker(reader, folder, files, SplitWork(reader.Compressed(), options.threads),
                    listener);
  UnpackResult result = unpacker.Run();
  result.problems += problems.size();
  cleaner.all_unpacked = result.problems == 0 && !result.stopped;
  return result;
}

}  // namespace scrivo

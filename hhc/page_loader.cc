#include "hhc/page_loader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "html/charset.h"
#include "html/links.h"
#include "html/page_kind.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

// Bytes that may be read ahead. More would only help when single files take long.
constexpr std::uint64_t kMostBytes = std::uint64_t{48} << 20;
// Other files past this size are not read whole, nor are pages that nobody can have written.
constexpr std::uint64_t kLargeFile = std::uint64_t{8} << 20, kLargePage = std::uint64_t{64} << 20;

}  // namespace

FileKind KindOfFile(std::string_view path) {
  switch (KindOfPage(path)) {
    case PageKind::kPlain:
    case PageKind::kVariant:
      return FileKind::kPage;
    case PageKind::kByServer:
    case PageKind::kNone:
      break;
  }
  return AsciiLowered(path).ends_with(".css") ? FileKind::kStyleSheet : FileKind::kOther;
}

PageLoader::PageLoader(const SourceFiles& files, int code_page, bool words, int threads)
    : files_(files), code_page_(code_page), words_(words) {
  threads = std::max(1, threads);
  threads_.reserve(static_cast<std::size_t>(threads));
  try {
    for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { Work(); });
  } catch (...) {
    if (threads_.empty()) throw;  // fewer threads than wanted will do, none will not
  }
}

PageLoader::~PageLoader() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  work_ready_.notify_all();
  room_ready_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void PageLoader::Submit(std::string disk_path, FileKind kind) {
  auto job = std::make_unique<Job>();
  job->path = std::move(disk_path);
  job->kind = kind;
  {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
  }
  ++waiting_;
  work_ready_.notify_one();
}

LoadedFile PageLoader::Take() {
  std::unique_ptr<Job> job;
  {
    std::unique_lock lock(mutex_);
    result_ready_.wait(lock, [this] { return jobs_.front()->done; });
    job = std::move(jobs_.front());
    jobs_.pop_front();
    --started_;
    bytes_ -= job->size;
  }
  --waiting_;
  room_ready_.notify_all();
  if (job->exception) std::rethrow_exception(job->exception);
  return std::move(job->result);
}

void PageLoader::Work() {
  std::optional<WordCollector> collector;
  while (true) {
    Job* job = nullptr;
    {
      std::unique_lock lock(mutex_);
      work_ready_.wait(lock, [this] { return stopping_ || started_ < jobs_.size(); });
      if (stopping_) return;
      job = jobs_[started_++].get();
    }
    try {
      if (!collector) collector.emplace();
      Load(job, &*collector);
    } catch (...) {  // out of memory: for the thread that takes the file to deal with
      job->exception = std::current_exception();
      collector.reset();
    }
    {
      const std::lock_guard lock(mutex_);
      job->done = true;
    }
    result_ready_.notify_one();
  }
}

// Waits until the bytes fit; the oldest job never waits, or nobody would get on.
void PageLoader::Reserve(Job* job, std::uint64_t size) {
  std::unique_lock lock(mutex_);
  room_ready_.wait(
      lock, [&] { return stopping_ || jobs_.front().get() == job || bytes_ + size <= kMostBytes; });
  bytes_ += size;
  job->size = size;
}

void PageLoader::Load(Job* job, WordCollector* collector) {
  LoadedFile& result = job->result;
  std::unique_ptr<ByteSource> source = files_.Open(job->path, &result.error);
  if (source == nullptr) return;
  const std::uint64_t size = source->Size();
  if (size > (job->kind == FileKind::kOther ? kLargeFile : kLargePage)) {
    result.readable = true;
    result.rest = std::move(source);
    return;
  }
  Reserve(job, size);
  if (!ReadText(*source, &result.bytes)) {
    result.error = std::make_error_code(std::errc::io_error);
    return;
  }
  result.readable = true;
  if (job->kind == FileKind::kOther) return;
  if (auto utf8 = Utf16AsUtf8(result.bytes)) result.decoded = std::move(*utf8);
  if (job->kind == FileKind::kPage) {
    result.page = ScanPage(result.Text(), code_page_, words_ ? collector : nullptr);
    if (words_) result.words = collector->Finish();
  } else {
    for (const CssLink& link : FindCssLinks(result.Text())) {
      result.links.push_back({LinkKind::kPart, std::string(link.address), link.offset});
    }
  }
}

}  // namespace scrivo

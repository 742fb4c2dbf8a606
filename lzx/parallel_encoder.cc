#include "lzx/parallel_encoder.h"

#include <algorithm>
#include <utility>

namespace scrivo {
namespace {

// Enough for the compressing threads to go on while the caller reads and scans some files; more
// only takes memory.
constexpr std::size_t kSlotsPerThread = 6;

}  // namespace

ParallelEncoder::ParallelEncoder(std::size_t interval, int threads, Consumer consumer)
    : interval_(interval),
      consumer_(std::move(consumer)),
      slots_(kSlotsPerThread * static_cast<std::size_t>(threads)) {
  for (int i = 0; i < threads; ++i) encoders_.emplace_back(interval);
  for (Slot& slot : slots_) {
    slot.input.reserve(interval);
  }
  threads_.reserve(encoders_.size());
  try {
    for (LzxEncoder& encoder : encoders_) {
      threads_.emplace_back([this, &encoder] { Work(encoder); });
    }
  } catch (...) {
    if (threads_.empty()) throw;  // fewer threads than wanted will do, none will not
  }
}

ParallelEncoder::~ParallelEncoder() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  work_ready_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void ParallelEncoder::Append(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    std::vector<std::uint8_t>& input = slots_[filling_ % slots_.size()].input;
    const std::size_t size = std::min(bytes.size(), interval_ - input.size());
    input.insert(input.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    bytes = bytes.subspan(size);
    if (input.size() == interval_) SubmitFilling();
  }
}

void ParallelEncoder::Finish() {
  if (!slots_[filling_ % slots_.size()].input.empty()) SubmitFilling();
  while (oldest_ < filling_) ConsumeOldest();
}

void ParallelEncoder::SubmitFilling() {
  {
    const std::lock_guard lock(mutex_);
    slots_[filling_ % slots_.size()].state = Slot::State::kWaiting;
    submitted_ = ++filling_;
  }
  work_ready_.notify_one();
  if (filling_ - oldest_ == slots_.size()) ConsumeOldest();
}

void ParallelEncoder::ConsumeOldest() {
  Slot& slot = slots_[oldest_ % slots_.size()];
  {
    std::unique_lock lock(mutex_);
    result_ready_.wait(lock, [&slot] { return slot.state == Slot::State::kDone; });
  }
  if (slot.exception) std::rethrow_exception(slot.exception);
  consumer_(slot.result);
  slot.state = Slot::State::kFilling;
  slot.input.clear();
  ++oldest_;
}

void ParallelEncoder::Work(LzxEncoder& encoder) {
  std::unique_lock lock(mutex_);
  for (;;) {
    work_ready_.wait(lock, [this] { return stopping_ || taken_ < submitted_; });
    if (stopping_) return;
    Slot& slot = slots_[taken_++ % slots_.size()];
    lock.unlock();
    try {
      encoder.Encode(slot.input, slot.result);
    } catch (...) {  // out of memory: for the thread that wants the result to deal with
      slot.exception = std::current_exception();
    }
    lock.lock();
    slot.state = Slot::State::kDone;
    result_ready_.notify_one();
  }
}

}  // namespace scrivo

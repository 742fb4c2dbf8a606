#pragma once

// Compresses a stream interval by interval on several threads, and gives the results in order.

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

#include "lzx/encoder.h"

namespace scrivo {

// Bytes go in with Append and come out, compressed, through the consumer, which is only ever called
// from within Append and Finish, on the caller's thread, one interval after another. The result is
// the same for any number of threads. Memory is bounded: some twenty times the interval for each
// thread, taken by the constructor; Append waits while that is full.
class ParallelEncoder {
 public:
  using Consumer = std::function<void(const LzxInterval&)>;

  // `interval` is the size of an interval, as for LzxEncoder; `threads` the number of threads that
  // compress beside the caller's, 1 or more.
  ParallelEncoder(std::size_t interval, int threads, Consumer consumer);

  // Drops what has not come out yet and ends the threads.
  ~ParallelEncoder();

  ParallelEncoder(const ParallelEncoder&) = delete;
  ParallelEncoder& operator=(const ParallelEncoder&) = delete;

  void Append(std::span<const std::uint8_t> bytes);

  // Brings out the rest; a last interval that is not full is compressed as it is. Call it once,
  // after the last Append.
  void Finish();

 private:
  // An interval on its way. Slots form a ring in the order of the stream.
  struct Slot {
    enum class State { kFilling, kWaiting, kDone };
    State state = State::kFilling;
    std::vector<std::uint8_t> input;
    LzxInterval result;
    std::exception_ptr exception;  // there is no result
  };

  void SubmitFilling();
  void ConsumeOldest();
  void Work(LzxEncoder& encoder);

  std::size_t interval_;
  Consumer consumer_;
  std::vector<Slot> slots_;
  std::vector<LzxEncoder> encoders_;

  // Counts of slots since the start; a count modulo the ring's size is the slot's place.
  // filling_ and oldest_ belong to the caller's thread.
  std::size_t filling_ = 0;
  std::size_t oldest_ = 0;

  std::mutex mutex_;  // guards the slots' states and the members below
  std::condition_variable work_ready_;
  std::condition_variable result_ready_;
  std::size_t submitted_ = 0;
  std::size_t taken_ = 0;
  bool stopping_ = false;

  std::vector<std::thread> threads_;
};

}  // namespace scrivo

#include "search/spilled_words.h"

#include <algorithm>
#include <cstring>

namespace scrivo {
namespace {

constexpr std::size_t kWriteBuffer = std::size_t{1} << 20;
// For each run while merging; runs have some hundred times as much.
constexpr std::size_t kReadBuffer = std::size_t{1} << 18;

// The numbers of a word in a run, in this machine's order: no other machine reads them.
struct Numbers {
  std::uint64_t occurrences, list_bytes;
  std::uint32_t topics, first_topic, last_topic;
  std::uint8_t length, in_title;
};

std::span<const std::uint8_t> AsBytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

void SpilledWords::StartRun() {
  runs_.emplace_back();
  runs_.back().start = space_.Size();
}

void SpilledWords::Flush() {
  if (!out_.empty()) space_.Append(AsBytes(out_));
  out_.clear();
}

void SpilledWords::Add(const SpilledWord& word, std::string_view list) {
  const Numbers numbers{word.occurrences,
                        list.size(),
                        word.topics,
                        word.first_topic,
                        word.last_topic,
                        static_cast<std::uint8_t>(word.word.size()),
                        word.in_title ? std::uint8_t{1} : std::uint8_t{0}};
  out_.append(reinterpret_cast<const char*>(&numbers), sizeof numbers);
  out_.append(word.word);
  out_.append(list);
  if (out_.size() >= kWriteBuffer) Flush();
}

void SpilledWords::EndRun() {
  Flush();
  out_.shrink_to_fit();
  runs_.back().end = space_.Size();
}

void SpilledWords::StartMerge() {
  for (Run& run : runs_) {
    run.next = run.start;
    run.buffer.clear();
    run.used = 0;
    run.list_left = 0;
    ReadHead(&run);
  }
  parts_.clear();
  part_runs_.clear();
}

void SpilledWords::Read(Run* run, std::size_t count, std::string* out) {
  while (count > 0) {
    if (run->used == run->buffer.size()) {
      const auto size =
          static_cast<std::size_t>(std::min<std::uint64_t>(kReadBuffer, run->end - run->next));
      if (size == 0 || !space_.Good()) {
        out->append(count, '\0');  // only behind a failure
        return;
      }
      run->buffer.resize(size);
      space_.ReadAt(run->next, {reinterpret_cast<std::uint8_t*>(run->buffer.data()), size});
      run->next += size;
      run->used = 0;
    }
    const std::size_t part = std::min(count, run->buffer.size() - run->used);
    out->append(run->buffer, run->used, part);
    run->used += part;
    count -= part;
  }
}

void SpilledWords::Skip(Run* run, std::uint64_t count) {
  const std::uint64_t buffered = std::min<std::uint64_t>(count, run->buffer.size() - run->used);
  run->used += static_cast<std::size_t>(buffered);
  run->next += count - buffered;
}

void SpilledWords::ReadHead(Run* run) {
  Skip(run, run->list_left);
  run->list_left = 0;
  run->has_head = space_.Good() && run->next - (run->buffer.size() - run->used) < run->end;
  if (!run->has_head) return;
  Numbers numbers;
  std::string bytes;
  Read(run, sizeof numbers, &bytes);
  std::memcpy(&numbers, bytes.data(), sizeof numbers);
  SpilledWord& head = run->head;
  head.word.clear();
  Read(run, numbers.length, &head.word);
  head.in_title = numbers.in_title != 0;
  head.topics = numbers.topics;
  head.first_topic = numbers.first_topic;
  head.last_topic = numbers.last_topic;
  head.occurrences = numbers.occurrences;
  head.list_bytes = run->list_left = numbers.list_bytes;
}

const std::vector<SpilledWord>& SpilledWords::NextParts() {
  for (const std::size_t number : part_runs_) ReadHead(&runs_[number]);
  part_runs_.clear();
  parts_.clear();
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    if (!runs_[i].has_head) continue;
    if (!part_runs_.empty()) {
      const SpilledWord& first = runs_[part_runs_[0]].head;
      if (ComesBefore(first, runs_[i].head)) continue;
      if (ComesBefore(runs_[i].head, first)) part_runs_.clear();
    }
    part_runs_.push_back(i);
  }
  for (const std::size_t number : part_runs_) parts_.push_back(runs_[number].head);
  return parts_;
}

void SpilledWords::TakeList(std::size_t part, std::string* list) {
  Run& run = runs_[part_runs_[part]];
  Read(&run, static_cast<std::size_t>(run.list_left), list);
  run.list_left = 0;
}

}  // namespace scrivo

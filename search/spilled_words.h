#pragma once

// Words that went from memory to a SpillSpace in sorted runs, and come back merged.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bytes/spilled_bytes.h"

namespace scrivo {

// What a run knows of one word.
struct SpilledWord {
  std::string word;
  bool in_title = false;
  std::uint32_t topics = 0, first_topic = 0, last_topic = 0;
  std::uint64_t occurrences = 0;
  std::uint64_t list_bytes = 0;
};

// By bytes, body before title.
inline bool ComesBefore(const SpilledWord& a, const SpilledWord& b) {
  const int order = a.word.compare(b.word);
  return order != 0 ? order < 0 : a.in_title < b.in_title;
}

class SpilledWords {
 public:
  explicit SpilledWords(SpillSpace* space) : space_(*space) {}

  // Starts a run; its words follow with Add in their order, each with its list.
  void StartRun();
  void Add(const SpilledWord& word, std::string_view list);
  void EndRun();

  std::size_t Runs() const { return runs_.size(); }

  // Makes ready to hand out the words from the first on. After the last run; may be called again.
  void StartMerge();

  // The parts of the next word in the order of their runs, or nothing at the end.
  const std::vector<SpilledWord>& NextParts();

  // Adds to `*list` the list of part `part` of the word that NextParts gave last. Parts must be
  // taken in order; those that are not taken are passed over.
  void TakeList(std::size_t part, std::string* list);

 private:
  struct Run {
    std::uint64_t start = 0, end = 0;
    // While merging.
    std::uint64_t next = 0;  // what is not in the buffer yet
    std::string buffer;
    std::size_t used = 0;
    SpilledWord head;
    bool has_head = false;
    std::uint64_t list_left = 0;
  };

  void Flush();
  void Read(Run* run, std::size_t count, std::string* out);
  void Skip(Run* run, std::uint64_t count);
  void ReadHead(Run* run);

  SpillSpace& space_;
  std::vector<Run> runs_;
  std::string out_;  // written and not in the space yet
  std::vector<SpilledWord> parts_;
  std::vector<std::size_t> part_runs_;
};

}  // namespace scrivo

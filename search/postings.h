#pragma once

// The words of all pages on their way into the search index: for each word the topics that hold it
// and the positions in each.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "bytes/spilled_bytes.h"
#include "search/scale_root.h"
#include "search/spilled_words.h"
#include "search/word_collector.h"

namespace scrivo {

// One word of the index. `encoded` holds for each topic: varint of the topic number less the one
// before (the first: less 0), varint number of positions, varint bytes, the positions as in
// PageWords.
struct WordPostings {
  std::string word;
  bool in_title = false;
  std::uint32_t topics = 0;
  std::uint64_t occurrences = 0;
  std::string encoded;
};

class Postings {
 public:
  Postings();

  // Leaves these words out of the index; their places still count. Before the first AddPage.
  void LeaveOut(const std::vector<std::string>& words);

  // Puts what is more than the space's `memory` there; otherwise all stays in memory. Before the
  // first AddPage; the space must outlive this and takes bytes from nobody else before Finish. Its
  // failures are its own to tell.
  void SpillTo(SpillSpace* space);

  // Adds a page's words. Topic numbers ascend from call to call.
  void AddPage(std::uint32_t topic, const PageWords& words);

  // Call it once, after the last AddPage: what follows is for afterwards.
  void Finish();

  std::uint32_t Pages() const { return pages_; }
  std::uint32_t LastTopic() const { return last_topic_; }
  const BitLengths& TopicBits() const { return topic_bits_; }
  const BitLengths& CountBits() const { return count_bits_; }
  const BitLengths& PositionBits() const { return position_bits_; }

  // Hands out word after word in the order of the index: by bytes, body before title; false when
  // there are no more.
  bool Next(WordPostings* word);

 private:
  // A list grows in blocks that get larger; the first four bytes of a block hold the place of the
  // next one, then its room in two bytes.
  struct Term {
    std::uint32_t hash;
    std::uint32_t text;  // in texts_
    std::uint32_t topics = 0, first_topic = 0, last_topic = 0;
    std::uint64_t occurrences = 0;
    std::uint32_t first_block = 0, block = 0;  // places; 0: none
    std::uint16_t used = 0, room = 0;          // of the last block, without its head
    std::uint8_t length;
    bool in_title;
  };

  std::uint32_t FindOrAdd(std::string_view word, bool in_title);
  void Grow();
  void Append(Term* term, std::string_view bytes);
  void StartBlock(Term* term);
  char* BlockAt(std::uint32_t place) const;
  void Collect(const Term& term, std::string* out) const;
  std::size_t MemoryUsed() const;
  void Sort();
  void Spill();
  void CountStepsBetweenRuns();
  bool NextMerged(WordPostings* word);
  std::string_view Text(const Term& term) const {
    return std::string_view(texts_).substr(term.text, term.length);
  }

  SpillSpace* space_ = nullptr;
  std::optional<SpilledWords> spilled_;
  std::unordered_set<std::string> left_out_;
  std::vector<std::uint32_t> slots_;
  std::vector<Term> terms_;
  std::string texts_;
  std::vector<std::unique_ptr<char[]>> slabs_;
  std::uint32_t slabs_used_ = 0;
  std::vector<std::uint32_t> sorted_;
  std::size_t next_ = 0;
  std::uint32_t pages_ = 0, last_topic_ = 0;
  BitLengths topic_bits_{}, count_bits_{}, position_bits_{};
};

}  // namespace scrivo

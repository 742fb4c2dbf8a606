#include "search/postings.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace scrivo {
namespace {

constexpr std::size_t kFirstTermSlots = 1 << 16;
constexpr std::uint32_t kSlabSize = 1 << 20;
constexpr std::uint32_t kBlockHead = 6;
constexpr std::uint16_t kFirstRoom = 10, kLargestRoom = 4090;

}  // namespace

Postings::Postings() : slots_(kFirstTermSlots) {
  // Place 0 means "none", so the first block is never there.
  slabs_.push_back(std::make_unique<char[]>(kSlabSize));
  slabs_used_ = kBlockHead;
}

void Postings::LeaveOut(const std::vector<std::string>& words) {
  left_out_.insert(words.begin(), words.end());
}

void Postings::SpillTo(SpillSpace* space) { space_ = space; }

void Postings::AddPage(std::uint32_t topic, const PageWords& words) {
  if (words.word_count == 0) return;
  ++pages_;
  last_topic_ = std::max(last_topic_, topic);
  for (std::size_t i = 0; i < words.count_bits.size(); ++i) {
    count_bits_[i] += words.count_bits[i];
    position_bits_[i] += words.position_bits[i];
  }
  std::string_view rest = words.encoded;
  std::string head;
  while (!rest.empty()) {
    const std::size_t length = static_cast<unsigned char>(rest[0]);
    const std::string_view word = rest.substr(1, length);
    const bool in_title = rest[length + 1] != 0;
    rest.remove_prefix(length + 2);
    const std::uint64_t count = TakeVarint(&rest);
    const std::uint64_t bytes = TakeVarint(&rest);
    if (!left_out_.empty() && left_out_.contains(std::string(word))) {
      rest.remove_prefix(bytes);
      continue;
    }

    Term& term = terms_[FindOrAdd(word, in_title)];
    const std::uint32_t step = topic - term.last_topic;
    if (term.topics == 0) term.first_topic = topic;
    term.last_topic = topic;
    ++term.topics;
    term.occurrences += count;
    ++topic_bits_[static_cast<std::size_t>(std::bit_width(step))];
    head.clear();
    AppendVarint(step, &head);
    AppendVarint(count, &head);
    AppendVarint(bytes, &head);
    Append(&term, head);
    Append(&term, rest.substr(0, bytes));
    rest.remove_prefix(bytes);
  }
  if (space_ != nullptr && MemoryUsed() > space_->Memory()) Spill();
}

std::uint32_t Postings::FindOrAdd(std::string_view word, bool in_title) {
  const std::uint32_t hash = WordHash(word, in_title);
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (slots_[slot] != 0) {
    const Term& term = terms_[slots_[slot] - 1];
    if (term.hash == hash && term.in_title == in_title && Text(term) == word) {
      return slots_[slot] - 1;
    }
    slot = (slot + 1) & mask;
  }
  Term term{};
  term.hash = hash;
  term.text = static_cast<std::uint32_t>(texts_.size());
  term.length = static_cast<std::uint8_t>(word.size());
  term.in_title = in_title;
  texts_.append(word);
  terms_.push_back(term);
  slots_[slot] = static_cast<std::uint32_t>(terms_.size());
  if (terms_.size() * 2 > slots_.size()) Grow();
  return static_cast<std::uint32_t>(terms_.size() - 1);
}

void Postings::Grow() {
  std::vector<std::uint32_t> slots(slots_.size() * 2);
  const std::size_t mask = slots.size() - 1;
  for (std::uint32_t i = 0; i < terms_.size(); ++i) {
    std::size_t slot = terms_[i].hash & mask;
    while (slots[slot] != 0) slot = (slot + 1) & mask;
    slots[slot] = i + 1;
  }
  slots_ = std::move(slots);
}

char* Postings::BlockAt(std::uint32_t place) const {
  return slabs_[place / kSlabSize].get() + place % kSlabSize;
}

void Postings::StartBlock(Term* term) {
  const std::uint16_t room =
      term->room == 0 ? kFirstRoom
                      : static_cast<std::uint16_t>(std::min<int>(kLargestRoom, 2 * term->room + 6));
  const std::uint32_t size = kBlockHead + room;
  if (slabs_used_ + size > kSlabSize) {
    slabs_.push_back(std::make_unique<char[]>(kSlabSize));
    slabs_used_ = 0;
  }
  const auto place = static_cast<std::uint32_t>((slabs_.size() - 1) * kSlabSize + slabs_used_);
  slabs_used_ += size;
  if (term->block == 0) {
    term->first_block = place;
  } else {
    std::memcpy(BlockAt(term->block), &place, sizeof place);
  }
  std::memcpy(BlockAt(place) + sizeof place, &room, sizeof room);
  term->block = place;
  term->used = 0;
  term->room = room;
}

void Postings::Append(Term* term, std::string_view bytes) {
  while (!bytes.empty()) {
    if (term->used == term->room) StartBlock(term);
    const std::size_t count =
        std::min<std::size_t>(bytes.size(), static_cast<std::size_t>(term->room - term->used));
    std::memcpy(BlockAt(term->block) + kBlockHead + term->used, bytes.data(), count);
    term->used = static_cast<std::uint16_t>(term->used + count);
    bytes.remove_prefix(count);
  }
}

void Postings::Collect(const Term& term, std::string* out) const {
  std::uint32_t place = term.first_block;
  while (place != 0) {
    const char* block = BlockAt(place);
    std::uint32_t next = 0;
    std::uint16_t room = 0;
    std::memcpy(&next, block, sizeof next);
    std::memcpy(&room, block + sizeof next, sizeof room);
    out->append(block + kBlockHead, place == term.block ? term.used : room);
    place = place == term.block ? 0 : next;
  }
}

std::size_t Postings::MemoryUsed() const {
  return slabs_.size() * kSlabSize + terms_.capacity() * sizeof(Term) + texts_.capacity() +
         slots_.capacity() * sizeof(std::uint32_t);
}

void Postings::Sort() {
  sorted_.resize(terms_.size());
  for (std::uint32_t i = 0; i < sorted_.size(); ++i) sorted_[i] = i;
  std::sort(sorted_.begin(), sorted_.end(), [this](std::uint32_t a, std::uint32_t b) {
    const int order = Text(terms_[a]).compare(Text(terms_[b]));
    return order != 0 ? order < 0 : terms_[a].in_title < terms_[b].in_title;
  });
}

void Postings::Spill() {
  Sort();
  if (!spilled_) spilled_.emplace(space_);
  spilled_->StartRun();
  SpilledWord word;
  std::string list;
  for (const std::uint32_t number : sorted_) {
    const Term& term = terms_[number];
    word.word = Text(term);
    word.in_title = term.in_title;
    word.topics = term.topics;
    word.first_topic = term.first_topic;
    word.last_topic = term.last_topic;
    word.occurrences = term.occurrences;
    list.clear();
    Collect(term, &list);
    spilled_->Add(word, list);
  }
  spilled_->EndRun();
  sorted_ = {};
  terms_ = {};
  texts_ = {};
  slots_ = std::vector<std::uint32_t>(kFirstTermSlots);
  slabs_.resize(1);
  slabs_used_ = kBlockHead;
}

void Postings::Finish() {
  if (!spilled_) {
    Sort();
    return;
  }
  if (!terms_.empty()) Spill();
  slabs_.clear();
  CountStepsBetweenRuns();
  spilled_->StartMerge();
}

// In each run the first topic of a word was counted as a step from 0.
void Postings::CountStepsBetweenRuns() {
  spilled_->StartMerge();
  while (true) {
    const std::vector<SpilledWord>& parts = spilled_->NextParts();
    if (parts.empty()) return;
    for (std::size_t i = 1; i < parts.size(); ++i) {
      const std::uint32_t first = parts[i].first_topic;
      --topic_bits_[static_cast<std::size_t>(std::bit_width(first))];
      ++topic_bits_[static_cast<std::size_t>(std::bit_width(first - parts[i - 1].last_topic))];
    }
  }
}

bool Postings::NextMerged(WordPostings* word) {
  const std::vector<SpilledWord>& parts = spilled_->NextParts();
  if (parts.empty()) return false;
  word->word = parts[0].word;
  word->in_title = parts[0].in_title;
  word->topics = 0;
  word->occurrences = 0;
  word->encoded.clear();
  std::string list;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    word->topics += parts[i].topics;
    word->occurrences += parts[i].occurrences;
    if (i == 0) {
      spilled_->TakeList(i, &word->encoded);
      continue;
    }
    list.clear();
    spilled_->TakeList(i, &list);
    std::string_view rest = list;
    TakeVarint(&rest);
    AppendVarint(parts[i].first_topic - parts[i - 1].last_topic, &word->encoded);
    word->encoded.append(rest);
  }
  return true;
}

bool Postings::Next(WordPostings* word) {
  if (spilled_) return NextMerged(word);
  if (next_ >= sorted_.size()) return false;
  const Term& term = terms_[sorted_[next_++]];
  word->word = Text(term);
  word->in_title = term.in_title;
  word->topics = term.topics;
  word->occurrences = term.occurrences;
  word->encoded.clear();
  Collect(term, &word->encoded);
  return true;
}

}  // namespace scrivo

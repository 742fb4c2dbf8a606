#include "search/search_index.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::size_t kHeaderSize = 0x400, kNodeSize = 0x1000;
constexpr std::size_t kLeafHead = 8, kIndexHead = 2;
// The original stops filling a leaf when this many bytes are left: the longest entry fits in them.
constexpr std::size_t kLeafReserve = 127;
// After the list of a word of so many topics come zero bytes, one for each ten of its bytes.
constexpr std::uint32_t kSlackTopics = 3;
constexpr std::size_t kSlackShare = 10;
// The header counts the lengths of words up to this apart from those of longer ones.
constexpr std::uint32_t kShortWord = 2;
constexpr std::uint64_t kLargest = 0xFFFF0000;

std::size_t SharedLength(std::string_view a, std::string_view b) {
  return static_cast<std::size_t>(
      std::mismatch(a.begin(),
                    a.begin() + static_cast<std::ptrdiff_t>(std::min(a.size(), b.size())),
                    b.begin())
          .first -
      a.begin());
}

class IndexWriter {
 public:
  IndexWriter(Postings* postings, std::uint32_t language, SpilledBytes* out,
              const std::function<bool()>& stop_wanted)
      : postings_(*postings),
        language_(language),
        topic_root_(BestRootSize(postings->TopicBits())),
        count_root_(BestRootSize(postings->CountBits())),
        position_root_(BestRootSize(postings->PositionBits())),
        out_(*out),
        stop_wanted_(stop_wanted) {}

  SearchIndexStatus Write();

 private:
  struct Child {
    std::string last_word;
    std::uint32_t offset;
  };

  void AddWord(const WordPostings& word);
  void EncodeList(const WordPostings& word);
  std::string Entry(const WordPostings& word, std::string_view previous,
                    std::uint32_t list_offset) const;
  void CloseLeaf();
  std::vector<Child> IndexLevel(const std::vector<Child>& children);
  void CloseIndexNode(std::string* node);
  void Header(std::uint32_t root, std::size_t depth);
  void Count(const WordPostings& word);

  Postings& postings_;
  std::uint32_t language_;
  int topic_root_, count_root_, position_root_;

  SpilledBytes& out_;
  const std::function<bool()>& stop_wanted_;
  std::string list_;       // of the current word
  std::string leaf_;       // entries of the current leaf
  std::string last_word_;  // in the current leaf
  std::string previous_word_;
  std::uint64_t last_leaf_ = 0;  // offset
  std::vector<Child> leaves_;

  // For the header.
  std::uint32_t longest_ = 0, words_ = 0, distinct_ = 0, long_length_ = 0, short_length_ = 0,
                entry_length_ = 0;
  std::uint32_t unused_ = 0;
  std::uint32_t last_repeated_ = 0;  // the highest position of a word that its topic has twice
  bool has_title_words_ = false;
};

SearchIndexStatus IndexWriter::Write() {
  WordPostings word;
  while (postings_.Next(&word) && out_.Good()) {
    if (stop_wanted_ && stop_wanted_()) return SearchIndexStatus::kStopped;
    if (out_.Size() == 0) out_.PadTo(kHeaderSize);
    AddWord(word);
    // With room for the index nodes: there is one for sixteen leaves at the very most.
    if (out_.Size() + leaves_.size() / 16 * kNodeSize > kLargest)
      return SearchIndexStatus::kTooLarge;
  }
  if (leaf_.empty()) return SearchIndexStatus::kOk;
  CloseLeaf();
  std::vector<Child> level = leaves_;
  std::size_t depth = 1;
  while (level.size() > 1) {
    level = IndexLevel(level);
    ++depth;
  }
  Header(level[0].offset, depth);
  return SearchIndexStatus::kOk;
}

void IndexWriter::AddWord(const WordPostings& word) {
  EncodeList(word);
  const auto list_offset = static_cast<std::uint32_t>(out_.Size());
  std::string entry = Entry(word, last_word_, list_offset);
  if (!leaf_.empty() && kLeafHead + leaf_.size() + entry.size() > kNodeSize - kLeafReserve) {
    CloseLeaf();
    entry = Entry(word, "", static_cast<std::uint32_t>(out_.Size()));
  }
  out_.Put(list_);
  leaf_ += entry;
  last_word_ = word.word;
  Count(word);
}

void IndexWriter::Count(const WordPostings& word) {
  const auto length = static_cast<std::uint32_t>(word.word.size());
  longest_ = std::max(longest_, length);
  words_ += static_cast<std::uint32_t>(word.occurrences);
  (length > kShortWord ? long_length_ : short_length_) +=
      static_cast<std::uint32_t>(word.occurrences) * length;
  entry_length_ += length;
  if (word.word != previous_word_) ++distinct_;
  previous_word_ = word.word;
  has_title_words_ = has_title_words_ || word.in_title;
}

void IndexWriter::EncodeList(const WordPostings& word) {
  list_.clear();
  ScaleRootWriter bits(&list_);
  std::string_view rest = word.encoded;
  while (!rest.empty()) {
    bits.Put(static_cast<std::uint32_t>(TakeVarint(&rest)), topic_root_);
    const std::uint64_t count = TakeVarint(&rest);
    TakeVarint(&rest);  // bytes of the positions
    bits.Put(static_cast<std::uint32_t>(count), count_root_);
    std::uint32_t position = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
      const auto step = static_cast<std::uint32_t>(TakeVarint(&rest));
      bits.Put(step, position_root_);
      position += step;
    }
    if (count > 1) last_repeated_ = std::max(last_repeated_, position);
    bits.Align();
  }
  const std::size_t slack = word.topics < kSlackTopics ? 0 : list_.size() / kSlackShare;
  list_.append(slack, '\0');
  unused_ += static_cast<std::uint32_t>(slack);
}

std::string IndexWriter::Entry(const WordPostings& word, std::string_view previous,
                               std::uint32_t list_offset) const {
  const std::size_t shared = SharedLength(previous, word.word);
  std::string entry;
  entry.push_back(static_cast<char>(word.word.size() - shared + 1));
  entry.push_back(static_cast<char>(shared));
  entry.append(word.word, shared);
  entry.push_back(word.in_title ? 1 : 0);
  AppendVarint(word.topics, &entry);
  for (const int shift : {0, 8, 16, 24}) entry.push_back(static_cast<char>(list_offset >> shift));
  entry.append(2, '\0');
  AppendVarint(list_.size(), &entry);
  return entry;
}

void IndexWriter::CloseLeaf() {
  const std::uint64_t offset = out_.Size();
  if (!leaves_.empty()) out_.Set32(last_leaf_, static_cast<std::uint32_t>(offset));
  const std::size_t free = kNodeSize - kLeafHead - leaf_.size();
  out_.Put32(0);
  out_.Put16(0);
  out_.Put16(static_cast<std::uint16_t>(free));
  out_.Put(leaf_);
  out_.PadTo(offset + kNodeSize);
  unused_ += static_cast<std::uint32_t>(free);
  leaves_.push_back({last_word_, static_cast<std::uint32_t>(offset)});
  last_leaf_ = offset;
  leaf_.clear();
  last_word_.clear();
}

void IndexWriter::CloseIndexNode(std::string* node) {
  const std::size_t free = kNodeSize - kIndexHead - node->size();
  const std::uint64_t offset = out_.Size();
  out_.Put16(static_cast<std::uint16_t>(free));
  out_.Put(*node);
  out_.PadTo(offset + kNodeSize);
  unused_ += static_cast<std::uint32_t>(free);
  node->clear();
}

std::vector<IndexWriter::Child> IndexWriter::IndexLevel(const std::vector<Child>& children) {
  std::vector<Child> level;
  std::string node, previous;
  const auto close = [&] {
    level.push_back({previous, static_cast<std::uint32_t>(out_.Size())});
    CloseIndexNode(&node);
    previous.clear();
  };
  for (const Child& child : children) {
    std::size_t shared = SharedLength(previous, child.last_word);
    constexpr std::size_t kFixed = 8;
    if (kIndexHead + node.size() + kFixed + child.last_word.size() - shared > kNodeSize) {
      close();
      shared = 0;
    }
    node.push_back(static_cast<char>(child.last_word.size() - shared + 1));
    node.push_back(static_cast<char>(shared));
    node.append(child.last_word, shared);
    for (const int shift : {0, 8, 16, 24}) node.push_back(static_cast<char>(child.offset >> shift));
    node.append(2, '\0');
    previous = child.last_word;
  }
  close();
  return level;
}

void IndexWriter::Header(std::uint32_t root, std::size_t depth) {
  out_.Set32(0x00, 0x00280000);
  out_.Set32(0x04, postings_.Pages());
  out_.Set32(0x08, root);
  out_.Set32(0x10, static_cast<std::uint32_t>(leaves_.size()));
  out_.Set32(0x14, root);
  out_.Set16(0x18, static_cast<std::uint16_t>(depth));
  out_.Set32(0x1A, 7);
  constexpr std::uint16_t kScale = 2;
  out_.Set16(0x1E, static_cast<std::uint16_t>(kScale | topic_root_ << 8));
  out_.Set16(0x20, static_cast<std::uint16_t>(kScale | count_root_ << 8));
  out_.Set16(0x22, static_cast<std::uint16_t>(kScale | position_root_ << 8));
  out_.Set32(0x2E, kNodeSize);
  out_.Set32(0x32, has_title_words_ ? 1 : 0);
  out_.Set32(0x36, last_repeated_);
  out_.Set32(0x3E, longest_);
  out_.Set32(0x42, words_);
  out_.Set32(0x46, distinct_);
  out_.Set32(0x4A, long_length_);
  out_.Set32(0x4E, short_length_);
  out_.Set32(0x52, entry_length_);
  out_.Set32(0x56, unused_);
  out_.Set32(0x5E, postings_.LastTopic());
  out_.Set32(0x7A, static_cast<std::uint32_t>(CodePageOfLanguage(language_)));
  out_.Set32(0x7E, language_);
}

}  // namespace

SearchIndexStatus WriteSearchIndex(Postings* postings, std::uint32_t language, SpilledBytes* out,
                                   const std::function<bool()>& stop_wanted) {
  postings->Finish();
  const SearchIndexStatus status = IndexWriter(postings, language, out, stop_wanted).Write();
  return out->Good() ? status : SearchIndexStatus::kNoSpace;
}

}  // namespace scrivo

#include "hhc/keyword_streams.h"

#include <algorithm>

#include "bytes/byte_writer.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::size_t kHeaderSize = 76, kBlockSize = 0x800;
constexpr std::size_t kListingHead = 12;
constexpr std::uint32_t kNoBlock = 0xFFFFFFFF;
constexpr std::uint16_t kSeeAlso = 2;
constexpr std::uint32_t kDataSize = 13;
constexpr std::uint8_t kData[kDataSize] = {0, 0, 0, 0, 5, 0, 0, 0, 0x80, 0, 0, 0, 0};

void PutWide(std::string_view utf8, ByteWriter* out) {
  for (const char16_t unit : ToUtf16(utf8)) out->Put16(unit == 0 ? u' ' : unit);
  out->Put16(0);
}

// The part of an entry that listing and index blocks share.
void PutEntry(const Keyword& keyword, std::size_t topics, ByteWriter* out) {
  PutWide(keyword.text, out);
  const bool see_also = !keyword.see_also.empty();
  out->Put16(see_also ? kSeeAlso : 0);
  out->Put16(static_cast<std::uint16_t>(keyword.level));
  out->Put32(static_cast<std::uint32_t>(keyword.last_component));
  out->Put32(0);
  if (see_also) {
    out->Put32(static_cast<std::uint32_t>(keyword.targets));
    PutWide(keyword.see_also, out);
    return;
  }
  out->Put32(static_cast<std::uint32_t>(topics));
  for (std::size_t i = 0; i < topics; ++i) out->Put32(keyword.topics[i]);
}

class TreeWriter {
 public:
  TreeWriter(const std::vector<Keyword>& keywords, std::uint32_t language,
             std::vector<TruncatedKeyword>* truncated)
      : keywords_(keywords), language_(language), truncated_(truncated) {}

  KeywordStreams Write();

 private:
  struct Child {
    std::size_t keyword;  // the first one below
    std::uint32_t block;
  };

  void Listings();
  std::vector<Child> IndexLevel(const std::vector<Child>& children);
  std::vector<std::uint8_t> Entry(const Keyword& keyword, std::size_t tail);
  std::vector<std::uint8_t> Header(std::uint32_t root, std::uint32_t depth) const;
  void CloseBlock(ByteWriter* block, std::size_t entries);

  const std::vector<Keyword>& keywords_;
  std::uint32_t language_;
  std::vector<TruncatedKeyword>* truncated_;
  std::vector<std::vector<std::uint8_t>> blocks_;
  std::vector<Child> listings_;
};

KeywordStreams TreeWriter::Write() {
  Listings();
  std::vector<Child> level = listings_;
  std::uint32_t depth = 1;
  while (level.size() > 1) {
    level = IndexLevel(level);
    ++depth;
  }
  KeywordStreams streams;
  ByteWriter btree;
  btree.PutBytes(Header(level[0].block, depth));
  for (const auto& block : blocks_) btree.PutBytes(block);
  streams.btree = btree.Take();

  ByteWriter data, map, property;
  for (std::size_t i = 0; i < keywords_.size(); ++i) data.PutBytes(kData);
  map.Put16(static_cast<std::uint16_t>(listings_.size()));
  for (const Child& listing : listings_) {
    map.Put32(static_cast<std::uint32_t>(listing.keyword));
    map.Put32(listing.block);
  }
  for (const std::uint32_t value : {0, 0, 0, 0x0C, 1, 1, 0, 0}) property.Put32(value);
  streams.data = data.Take();
  streams.map = map.Take();
  streams.property = property.Take();
  return streams;
}

// An entry without the last `tail` bytes, which depend on the block; its topics are cut to what a
// block can hold.
std::vector<std::uint8_t> TreeWriter::Entry(const Keyword& keyword, std::size_t tail) {
  std::size_t topics = keyword.topics.size();
  const std::size_t fixed = 2 * (ToUtf16(keyword.text).size() + 1) + 16 + tail;
  const std::size_t room = (kBlockSize - kListingHead - fixed) / 4;
  topics = std::min(topics, room);
  ByteWriter entry;
  PutEntry(keyword, topics, &entry);
  return entry.Take();
}

void TreeWriter::CloseBlock(ByteWriter* block, std::size_t entries) {
  block->Set16(0, static_cast<std::uint16_t>(kBlockSize - block->Size()));
  block->Set16(2, static_cast<std::uint16_t>(entries));
  block->PadTo(kBlockSize);
  blocks_.push_back(block->Take());
}

void TreeWriter::Listings() {
  constexpr std::size_t kTail = 8;
  ByteWriter block;
  std::size_t entries = 0;
  for (std::size_t i = 0; i < keywords_.size(); ++i) {
    const Keyword& keyword = keywords_[i];
    const std::vector<std::uint8_t> entry = Entry(keyword, kTail);
    if (keyword.see_also.empty()) {
      const std::size_t fixed = 2 * (ToUtf16(keyword.text).size() + 1) + 16;
      const std::size_t kept = (entry.size() - fixed) / 4;
      if (kept < keyword.topics.size()) {
        truncated_->push_back({keyword.text, keyword.topics.size() - kept});
      }
    }
    if (block.Size() != 0 && block.Size() + entry.size() + kTail > kBlockSize) {
      CloseBlock(&block, entries);
    }
    if (block.Size() == 0) {
      const auto number = static_cast<std::uint32_t>(blocks_.size());
      listings_.push_back({i, number});
      block.Put32(0);
      block.Put32(number == 0 ? kNoBlock : number - 1);
      block.Put32(number + 1);
      entries = 0;
    }
    block.PutBytes(entry);
    block.Put32(1);
    block.Put32(static_cast<std::uint32_t>(i) * kDataSize);
    ++entries;
  }
  block.Set32(8, kNoBlock);
  CloseBlock(&block, entries);
}

std::vector<TreeWriter::Child> TreeWriter::IndexLevel(const std::vector<Child>& children) {
  constexpr std::size_t kTail = 4;
  std::vector<Child> level;
  ByteWriter block;
  std::size_t entries = 0;
  for (const Child& child : children) {
    const std::vector<std::uint8_t> entry = Entry(keywords_[child.keyword], 8);
    if (block.Size() != 0 && block.Size() + entry.size() + kTail > kBlockSize) {
      CloseBlock(&block, entries);
    }
    if (block.Size() == 0) {
      // The first child of a block needs no entry: it is the leftmost.
      level.push_back({child.keyword, static_cast<std::uint32_t>(blocks_.size())});
      block.Put32(0);
      block.Put32(child.block);
      entries = 0;
      continue;
    }
    block.PutBytes(entry);
    block.Put32(child.block);
    ++entries;
  }
  CloseBlock(&block, entries);
  return level;
}

std::vector<std::uint8_t> TreeWriter::Header(std::uint32_t root, std::uint32_t depth) const {
  ByteWriter out;
  out.PadTo(kHeaderSize);
  out.Set16(0x00, 0x293B);
  out.Set16(0x02, 0x0104);
  out.Set16(0x04, kBlockSize);
  out.SetText(0x06, "X44");
  out.Set32(0x1A, static_cast<std::uint32_t>(listings_.size() - 1));
  out.Set32(0x1E, root);
  out.Set32(0x22, kNoBlock);
  out.Set32(0x26, static_cast<std::uint32_t>(blocks_.size()));
  out.Set16(0x2A, static_cast<std::uint16_t>(depth));
  out.Set32(0x2C, static_cast<std::uint32_t>(keywords_.size()));
  out.Set32(0x30, static_cast<std::uint32_t>(CodePageOfLanguage(language_)));
  out.Set32(0x34, language_);
  out.Set32(0x38, 1);
  out.Set32(0x3C, 0x272F);
  return out.Take();
}

}  // namespace

KeywordStreams WriteKeywords(const std::vector<Keyword>& keywords, std::uint32_t language,
                             std::vector<TruncatedKeyword>* truncated) {
  if (keywords.empty()) {
    KeywordStreams streams;
    streams.property.resize(4);
    return streams;
  }
  return TreeWriter(keywords, language, truncated).Write();
}

}  // namespace scrivo

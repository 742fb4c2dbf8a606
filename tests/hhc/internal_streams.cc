#include "tests/hhc/internal_streams.h"

#include "project/source_files.h"
#include "text/wtf8.h"

namespace scrivo {
namespace {

std::uint32_t At(const std::string& bytes, std::size_t offset, std::size_t size = 4) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size && offset + i < bytes.size(); ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + i])) << 8 * i;
  }
  return value;
}

std::string ZeroEnded(const std::string& bytes, std::size_t offset) {
  if (offset >= bytes.size()) return "<past the end>";
  return bytes.substr(offset, bytes.find('\0', offset) - offset);
}

std::string WideZeroEnded(const std::string& bytes, std::size_t* offset) {
  std::u16string text;
  while (*offset + 1 < bytes.size()) {
    const std::uint32_t unit = At(bytes, *offset, 2);
    *offset += 2;
    if (unit == 0) break;
    text += static_cast<char16_t>(unit);
  }
  return FromWindowsText(text);
}

std::uint32_t Varint(const std::string& bytes, std::size_t* offset) {
  std::uint32_t value = 0;
  for (int shift = 0; *offset < bytes.size(); shift += 7) {
    const std::uint32_t byte = At(bytes, (*offset)++, 1);
    value |= (byte & 0x7F) << shift;
    if (byte < 0x80) break;
  }
  return value;
}

// Numbers of a posting list.
class Bits {
 public:
  explicit Bits(std::string bytes) : bytes_(std::move(bytes)) {}

  std::uint32_t Number(int root) {
    int ones = 0;
    while (Bit() != 0 && ones < 64) ++ones;
    const int count = ones == 0 ? root : root + ones - 1;
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) value = value << 1 | Bit();
    return ones == 0 ? value : value + (std::uint32_t{1} << count);
  }

  void Align() { at_ = (at_ + 7) / 8 * 8; }
  bool Overrun() const { return at_ > bytes_.size() * 8; }

 private:
  std::uint32_t Bit() {
    const std::uint32_t byte = At(bytes_, at_ / 8, 1);
    return byte >> (7 - at_++ % 8) & 1;
  }

  std::string bytes_;
  std::size_t at_ = 0;
};

}  // namespace

std::unique_ptr<InternalStreams> InternalStreams::Open(const std::string& path) {
  std::error_code error;
  auto source = OpenFileSource(SystemPath(path), &error);
  if (source == nullptr) return nullptr;
  Problems problems;
  auto streams = std::unique_ptr<InternalStreams>(new InternalStreams);
  streams->reader_ = ChmReader::Open(std::move(source), &problems);
  if (streams->reader_ == nullptr) return nullptr;
  return streams;
}

std::optional<std::string> InternalStreams::Bytes(const std::string& name) const {
  const Entry* entry = reader_->Find(name);
  if (entry == nullptr) return std::nullopt;
  const auto bytes = reader_->ReadWhole(*entry);
  if (!bytes) return std::nullopt;
  return std::string(bytes->begin(), bytes->end());
}

std::vector<std::string> InternalStreams::Names() const {
  std::vector<std::string> names;
  for (const Entry& entry : reader_->Entries()) names.emplace_back(entry.name);
  return names;
}

std::string InternalStreams::StringAt(std::uint32_t offset) {
  return ZeroEnded(Bytes("/#STRINGS").value_or(""), offset);
}

std::optional<std::vector<ReadTopic>> InternalStreams::Topics() {
  const auto topics = Bytes("/#TOPICS"), urls = Bytes("/#URLTBL"), strings = Bytes("/#URLSTR"),
             titles = Bytes("/#STRINGS");
  if (!topics || !urls || !strings || !titles) return Fail("a stream of the topics is missing");
  std::vector<ReadTopic> all;
  for (std::size_t at = 0; at + 16 <= topics->size(); at += 16) {
    ReadTopic topic;
    topic.contents_entry = At(*topics, at);
    const std::uint32_t title = At(*topics, at + 4);
    if (title != 0xFFFFFFFF) topic.title = ZeroEnded(*titles, title);
    const std::uint32_t url = At(*topics, at + 8);
    if (At(*urls, url + 4) != at / 16) return Fail("#URLTBL names another topic");
    topic.address = ZeroEnded(*strings, At(*urls, url + 8) + 8);
    topic.flags = static_cast<std::uint16_t>(At(*topics, at + 12, 2));
    all.push_back(std::move(topic));
  }
  return all;
}

std::optional<std::vector<ReadKeyword>> InternalStreams::Keywords(const std::string& folder) {
  const auto tree = Bytes(folder + "BTree");
  if (!tree) return Fail("no BTree");
  std::vector<ReadKeyword> keywords;
  std::uint32_t block = 0, previous = 0xFFFFFFFF;
  while (block != 0xFFFFFFFF) {
    const std::size_t start = 76 + std::size_t{block} * 0x800;
    if (start + 0x800 > tree->size()) return Fail("a block lies past the end");
    if (At(*tree, start + 4) != previous) return Fail("the blocks are not chained");
    const std::uint32_t count = At(*tree, start + 2, 2);
    std::size_t at = start + 12;
    for (std::uint32_t i = 0; i < count; ++i) {
      ReadKeyword keyword;
      keyword.text = WideZeroEnded(*tree, &at);
      keyword.see_also = At(*tree, at, 2) == 2;
      keyword.level = static_cast<std::uint16_t>(At(*tree, at + 2, 2));
      keyword.last_component = At(*tree, at + 4);
      const std::uint32_t topics = At(*tree, at + 12);
      at += 16;
      if (keyword.see_also) {
        keyword.target = WideZeroEnded(*tree, &at);
      } else {
        for (std::uint32_t k = 0; k < topics; ++k, at += 4) keyword.topics.push_back(At(*tree, at));
      }
      if (At(*tree, at + 4) != 13 * keywords.size()) return Fail("a data offset is wrong");
      at += 8;
      keywords.push_back(std::move(keyword));
    }
    if (at + At(*tree, start, 2) != start + 0x800) return Fail("a free count is wrong");
    previous = block;
    block = At(*tree, start + 8);
  }
  if (keywords.size() != At(*tree, 0x2C)) return Fail("the number of keywords is wrong");
  return keywords;
}

std::optional<std::vector<ReadContentsEntry>> InternalStreams::Contents() {
  const auto contents = Bytes("/#TOCIDX");
  const auto topics = Topics();
  if (!contents || !topics) return Fail("no binary contents");
  struct Place {
    std::uint32_t offset;
    int level;
  };
  std::vector<ReadContentsEntry> entries;
  std::vector<Place> stack;
  if (contents->size() > 0x1000 && At(*contents, 0x0C) > 0x1000) stack.push_back({0x1000, 0});
  while (!stack.empty()) {
    const Place place = stack.back();
    stack.pop_back();
    if (place.offset + 20 > contents->size()) return Fail("an entry lies past the end");
    ReadContentsEntry entry;
    entry.level = place.level;
    entry.flags = At(*contents, place.offset + 4);
    const std::uint32_t value = At(*contents, place.offset + 8);
    if ((entry.flags & 8) != 0) {
      if (value >= topics->size()) return Fail("an entry names no topic");
      entry.address = (*topics)[value].address;
      entry.title = (*topics)[value].title.value_or("");
    } else {
      entry.title = StringAt(value);
    }
    entries.push_back(entry);
    if (const std::uint32_t next = At(*contents, place.offset + 16)) {
      stack.push_back({next, place.level});
    }
    if ((entry.flags & 4) != 0) {
      const std::uint32_t child = At(*contents, place.offset + 20);
      if (At(*contents, child + 12) != place.offset) return Fail("a child has another parent");
      stack.push_back({child, place.level + 1});
    }
    if (entries.size() > contents->size() / 20) return Fail("the entries go in circles");
  }
  return entries;
}

bool InternalStreams::ReadLeaf(const std::string& index, std::uint32_t offset,
                               ReadSearchIndex* words, std::uint32_t* next) {
  const int roots[3] = {static_cast<int>(At(index, 0x1F, 1)), static_cast<int>(At(index, 0x21, 1)),
                        static_cast<int>(At(index, 0x23, 1))};
  *next = At(index, offset);
  const std::size_t end = offset + 0x1000 - At(index, offset + 6, 2);
  std::string word;
  for (std::size_t at = offset + 8; at < end;) {
    const std::uint32_t length = At(index, at, 1), shared = At(index, at + 1, 1);
    if (length == 0 || shared > word.size()) return false;
    word = word.substr(0, shared) + index.substr(at + 2, length - 1);
    at += 1 + length;
    const bool in_title = At(index, at++, 1) != 0;
    const std::uint32_t topics = Varint(index, &at);
    const std::uint32_t list = At(index, at);
    at += 6;
    const std::uint32_t size = Varint(index, &at);
    if (words->contains({word, in_title})) return false;
    auto& places = (*words)[{word, in_title}];
    Bits bits(index.substr(list, size));
    std::uint32_t topic = 0;
    for (std::uint32_t i = 0; i < topics; ++i) {
      topic += bits.Number(roots[0]);
      const std::uint32_t count = bits.Number(roots[1]);
      std::uint32_t position = 0;
      for (std::uint32_t k = 0; k < count; ++k) {
        position += bits.Number(roots[2]);
        places[topic].push_back(position);
      }
      bits.Align();
    }
    if (bits.Overrun()) return false;
  }
  return true;
}

std::optional<ReadSearchIndex> InternalStreams::Search() {
  const auto index = Bytes("/$FIftiMain");
  if (!index || index->size() < 0x1400) return Fail("no search index");
  std::uint32_t node = At(*index, 8);
  for (std::uint32_t depth = At(*index, 0x18, 2); depth > 1; --depth) {
    const std::uint32_t length = At(*index, node + 2, 1);
    node = At(*index, node + 2 + 1 + length);
  }
  ReadSearchIndex words;
  std::uint32_t leaves = 0;
  for (; node != 0 || leaves == 0; ++leaves) {
    if (node + 0x1000 > index->size() || leaves > index->size() / 0x1000) {
      return Fail("a leaf lies past the end");
    }
    if (!ReadLeaf(*index, node, &words, &node)) return Fail("a leaf is malformed");
  }
  if (leaves != At(*index, 0x10)) return Fail("the number of leaves is wrong");
  return words;
}

std::optional<std::map<std::uint16_t, std::string>> InternalStreams::System() {
  const auto system = Bytes("/#SYSTEM");
  if (!system || At(*system, 0) != 3) return Fail("no #SYSTEM");
  std::map<std::uint16_t, std::string> records;
  std::size_t at = 4;
  while (at + 4 <= system->size()) {
    const std::uint32_t length = At(*system, at + 2, 2);
    records[static_cast<std::uint16_t>(At(*system, at, 2))] = system->substr(at + 4, length);
    at += 4 + length;
  }
  if (at != system->size()) return Fail("the last record of #SYSTEM is cut");
  return records;
}

std::optional<std::map<std::uint32_t, std::string>> InternalStreams::ContextIds() {
  const auto ids = Bytes("/#IVB");
  if (!ids || At(*ids, 0) + 4 != ids->size()) return Fail("no #IVB");
  std::map<std::uint32_t, std::string> all;
  for (std::size_t at = 4; at < ids->size(); at += 8) {
    all[At(*ids, at)] = StringAt(At(*ids, at + 4));
  }
  return all;
}

}  // namespace scrivo

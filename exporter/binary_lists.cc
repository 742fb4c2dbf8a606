#include "exporter/binary_lists.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_set>

#include "bytes/little_endian.h"
#include "html/charset.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint32_t kNone = 0xFFFFFFFF;

// No string crosses a page of its stream.
constexpr std::size_t kLongestString = 0x1000;

// Reads numbers and texts from first to last. Past the end all is zero, and Failed() tells.
class StreamCursor {
 public:
  StreamCursor(Bytes bytes, std::size_t at)
      : rest_(at <= bytes.size() ? bytes.subspan(at) : Bytes()), failed_(at > bytes.size()) {}

  std::uint16_t Next16() {
    const Bytes bytes = Take(2);
    return bytes.empty() ? 0 : LoadLe16(bytes.data());
  }
  std::uint32_t Next32() {
    const Bytes bytes = Take(4);
    return bytes.empty() ? 0 : LoadLe32(bytes.data());
  }
  // A text that ends with a zero byte, or with the bytes.
  std::string NextText() {
    const Bytes room = rest_.first(std::min(rest_.size(), kLongestString));
    const auto end = std::find(room.begin(), room.end(), 0);
    return {room.begin(), end};
  }
  // UTF-16 with a zero at its end.
  std::u16string NextWide() {
    std::u16string text;
    for (char16_t unit = Next16(); unit != 0; unit = Next16()) text.push_back(unit);
    return text;
  }
  std::size_t Left() const { return rest_.size(); }
  bool Failed() const { return failed_; }

 private:
  Bytes Take(std::size_t count) {
    if (rest_.size() < count) {
      failed_ = true;
      rest_ = {};
      return {};
    }
    const Bytes taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return taken;
  }

  Bytes rest_;
  bool failed_;
};

std::string TextOfWide(std::u16string_view wide) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : wide) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return Utf16AsUtf8(bytes).value_or("").substr(kUtf8Mark.size());
}

// The topics of a list. What it gives out for the list stays in proportion to the bytes that it all
// comes from: entries may share a title of any length, but do so in damaged files only.
class KnownTopics {
 public:
  KnownTopics(const TopicBytes& bytes, std::size_t list_size, int code_page)
      : bytes_(bytes),
        code_page_(code_page),
        left_(kMostTextPerByte * (list_size + bytes.topics.size() + bytes.url_table.size() +
                                  bytes.url_strings.size() + bytes.strings.size())) {}

  // What a list's entry for that topic leads to; nothing when there is no such topic.
  std::optional<SitemapTarget> At(std::uint32_t number) {
    constexpr std::size_t kTopicSize = 16, kPlaceInUrlEntry = 8;
    if (number >= bytes_.topics.size() / kTopicSize) return std::nullopt;
    StreamCursor topic(bytes_.topics, number * kTopicSize + 4);
    SitemapTarget target;
    target.title = StringAt(topic.Next32());
    StreamCursor entry(bytes_.url_table, std::size_t{topic.Next32()} + kPlaceInUrlEntry);
    const std::uint32_t place = entry.Next32();
    StreamCursor address(bytes_.url_strings, place);
    const std::uint32_t web_address = address.Next32();
    address.Next32();  // the frame
    if (entry.Failed() || address.Failed()) return std::nullopt;
    target.local = DecodeGuessing(address.NextText(), code_page_);
    const bool is_relative = !target.local.empty() && target.local[0] != '/' &&
                             target.local.find(':') == std::string::npos;
    if (is_relative) target.local.insert(0, 1, '/');
    if (web_address != 0) {
      target.url =
          DecodeGuessing(StreamCursor(bytes_.url_strings, web_address).NextText(), code_page_);
    }
    const std::size_t size = target.title.size() + target.local.size() + target.url.size();
    if (size > left_) return std::nullopt;
    left_ -= size;
    return target;
  }

  // The text at a place of #STRINGS; empty when there is none.
  std::string StringAt(std::uint32_t place) const {
    if (place == 0 || place == kNone) return "";
    return DecodeGuessing(StreamCursor(bytes_.strings, place).NextText(), code_page_);
  }

 private:
  static constexpr std::size_t kMostTextPerByte = 64;
  const TopicBytes& bytes_;
  int code_page_;
  std::size_t left_;
};

// Adds an item, no deeper than right below the one before it.
void AddItem(SitemapItem item, Sitemap* sitemap) {
  if (item.name.empty() && item.targets.empty()) return;
  const int deepest = sitemap->items.empty() ? 0 : sitemap->items.back().level + 1;
  item.level = std::min(item.level, deepest);
  sitemap->items.push_back(std::move(item));
}

}  // namespace

// A header with the place of the first entry, then entries of 20 bytes, or of 28 for one with
// entries below it: group, flags, topic or place of a name, parent, next one beside it, and first
// one below it.
Sitemap ReadBinaryContents(const std::vector<std::uint8_t>& contents, const TopicBytes& topics,
                           int code_page) {
  constexpr std::uint32_t kHasTopic = 8, kHasChildren = 4;
  constexpr std::size_t kEntrySize = 20;
  KnownTopics known(topics, contents.size(), code_page);
  Sitemap sitemap;
  sitemap.code_page = kUtf8CodePage;
  struct Place {
    std::uint32_t offset;
    int level;
  };
  std::vector<Place> waiting = {{StreamCursor(contents, 0).Next32(), 0}};
  std::unordered_set<std::uint32_t> seen;
  while (!waiting.empty() && seen.size() < contents.size() / kEntrySize) {
    const Place place = waiting.back();
    waiting.pop_back();
    if (place.offset == 0 || !seen.insert(place.offset).second) continue;
    StreamCursor entry(contents, place.offset);
    entry.Next32();  // the group
    const std::uint32_t flags = entry.Next32(), value = entry.Next32();
    entry.Next32();  // the parent
    const std::uint32_t next = entry.Next32();
    if (entry.Failed()) continue;
    waiting.push_back({next, place.level});
    if ((flags & kHasChildren) != 0) waiting.push_back({entry.Next32(), place.level + 1});
    SitemapItem item;
    item.level = place.level;
    if ((flags & kHasTopic) == 0) {
      item.name = known.StringAt(value);
    } else if (std::optional<SitemapTarget> target = known.At(value)) {
      // That of a page was cut from the page, perhaps into a code page that lacks half of it.
      if (target->local.find('#') != std::string::npos) item.name = target->title;
      item.targets.push_back(std::move(*target));
    }
    AddItem(std::move(item), &sitemap);
  }
  return sitemap;
}

// docs/formats/keyword-tree.md describes the stream. The listing blocks have all that is in it.
Sitemap ReadBinaryIndex(const std::vector<std::uint8_t>& tree, const TopicBytes& topics,
                        int code_page) {
  constexpr std::size_t kHeaderSize = 76, kBlockSizeField = 4, kLastListingField = 0x1A;
  constexpr std::size_t kSmallestBlock = 0x40;
  constexpr std::uint16_t kSeeAlso = 2;
  KnownTopics known(topics, tree.size(), code_page);
  Sitemap sitemap;
  sitemap.code_page = kUtf8CodePage;
  const std::size_t block_size = StreamCursor(tree, kBlockSizeField).Next16();
  if (block_size < kSmallestBlock || tree.size() < kHeaderSize) return sitemap;
  const std::size_t blocks = (tree.size() - kHeaderSize) / block_size;
  const std::uint32_t last_listing = StreamCursor(tree, kLastListingField).Next32();
  std::uint32_t block = 0;
  for (std::size_t count = 0; count < blocks && block < blocks; ++count) {
    StreamCursor cursor(Bytes(tree).subspan(kHeaderSize + block * block_size, block_size), 0);
    cursor.Next16();  // free bytes
    const std::size_t entries = cursor.Next16();
    cursor.Next32();  // the block before
    // Some compilers call each block its own successor; the listing blocks lie in order.
    const std::uint32_t next = cursor.Next32();
    block = next != block ? next : block < last_listing ? block + 1 : kNone;
    for (std::size_t i = 0; i < entries; ++i) {
      const std::u16string keyword = cursor.NextWide();
      const std::uint16_t kind = cursor.Next16();
      SitemapItem item;
      item.level = cursor.Next16();
      const std::size_t last = cursor.Next32();
      cursor.Next32();
      const std::size_t targets = cursor.Next32();
      if (kind == kSeeAlso) {
        item.see_also = TextOfWide(cursor.NextWide());
      } else {
        for (std::size_t k = 0; k < targets && !cursor.Failed(); ++k) {
          if (auto target = known.At(cursor.Next32())) item.targets.push_back(std::move(*target));
        }
      }
      cursor.Next32();
      cursor.Next32();
      if (cursor.Failed()) break;
      item.name = TextOfWide(std::u16string_view(keyword).substr(std::min(last, keyword.size())));
      AddItem(std::move(item), &sitemap);
    }
  }
  return sitemap;
}

std::vector<std::string> JoinedNames(const Sitemap& index) {
  constexpr std::size_t kLongest = 2000;  // more than a tree can hold
  std::vector<std::string> names;
  std::vector<std::string> above;
  for (const SitemapItem& item : index.items) {
    above.resize(std::min(above.size(), static_cast<std::size_t>(std::max(0, item.level))));
    above.push_back(above.empty() ? item.name : above.back() + ", " + item.name);
    above.back().resize(std::min(above.back().size(), kLongest));
    names.push_back(above.back());
  }
  return names;
}

}  // namespace scrivo

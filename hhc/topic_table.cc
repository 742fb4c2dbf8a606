#include "hhc/topic_table.h"

#include <algorithm>

#include "bytes/byte_writer.h"
#include "hhc/strings_table.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

constexpr std::size_t kUrlEntrySize = 12;
constexpr std::size_t kUrlEntriesPerPage = (kStreamPage - 4) / kUrlEntrySize;
static_assert(kUrlEntriesPerPage == 341);
constexpr std::uint16_t kFlagFile = 2, kFlagInContents = 4;

std::uint32_t UrlEntryOffset(std::size_t index) {
  return static_cast<std::uint32_t>(index / kUrlEntriesPerPage * kStreamPage +
                                    index % kUrlEntriesPerPage * kUrlEntrySize);
}

// Starts a page when `size` more bytes would cross into it.
void KeepOnPage(std::size_t size, ByteWriter* out) {
  const std::size_t left = kStreamPage - out->Size() % kStreamPage;
  if (size > left) out->PadTo(out->Size() + left);
}

std::uint32_t PutLooseString(std::string_view text, ByteWriter* out) {
  if (text.empty()) return 0;
  text = text.substr(0, kStreamPage - 1);
  KeepOnPage(text.size() + 1, out);
  const auto offset = static_cast<std::uint32_t>(out->Size());
  out->PutText(text);
  out->Put8(0);
  return offset;
}

}  // namespace

std::uint32_t AddressHash(std::string_view address) {
  std::uint32_t hash = 0;
  for (char c : address) {
    if (c == '\\') c = '/';
    const int byte = static_cast<unsigned char>(c);
    const int code = byte < 0x80 ? byte : byte - 0x100;
    const int value = c == '/' ? 0x2C : code <= 'Z' ? code - 0x30 : code - 0x50;
    hash = hash * 43 + static_cast<std::uint32_t>(value);
  }
  return hash == 0 ? 1 : hash;
}

std::uint32_t TopicTable::Add(std::string_view address) {
  const auto number = static_cast<std::uint32_t>(topics_.size());
  const auto [found, added] = numbers_.try_emplace(AsciiLowered(address), number);
  if (added) {
    Topic topic;
    topic.address = address;
    topic.is_file = address.find('#') == std::string_view::npos;
    topics_.push_back(std::move(topic));
  }
  return found->second;
}

std::optional<std::uint32_t> TopicTable::Find(std::string_view address) const {
  const auto found = numbers_.find(AsciiLowered(address));
  if (found == numbers_.end()) return std::nullopt;
  return found->second;
}

TopicStreams TopicTable::Write() const {
  ByteWriter strings;
  strings.Put8(0);
  std::vector<std::uint32_t> string_offsets(topics_.size());
  constexpr std::size_t kFixed = 9;  // two offsets and the final zero
  for (std::size_t i = 0; i < topics_.size(); ++i) {
    const Topic& topic = topics_[i];
    const std::uint32_t web = PutLooseString(topic.web_address, &strings);
    const std::uint32_t frame = PutLooseString(topic.frame, &strings);
    const std::string_view address =
        std::string_view(topic.address).substr(0, kStreamPage - kFixed);
    KeepOnPage(kFixed + address.size(), &strings);
    string_offsets[i] = static_cast<std::uint32_t>(strings.Size());
    strings.Put32(web);
    strings.Put32(frame);
    strings.PutText(address);
    strings.Put8(0);
  }

  std::vector<std::pair<std::uint32_t, std::uint32_t>> by_hash;  // hash, topic
  by_hash.reserve(topics_.size());
  for (std::uint32_t i = 0; i < topics_.size(); ++i) {
    by_hash.emplace_back(AddressHash(topics_[i].address), i);
  }
  std::sort(by_hash.begin(), by_hash.end());
  ByteWriter urls;
  std::vector<std::uint32_t> url_offsets(topics_.size());
  for (std::size_t i = 0; i < by_hash.size(); ++i) {
    if (i != 0 && i % kUrlEntriesPerPage == 0) urls.Put32(kStreamPage);
    url_offsets[by_hash[i].second] = UrlEntryOffset(i);
    urls.Put32(by_hash[i].first);
    urls.Put32(by_hash[i].second);
    urls.Put32(string_offsets[by_hash[i].second]);
  }
  if (!by_hash.empty() && by_hash.size() % kUrlEntriesPerPage == 0) urls.Put32(kStreamPage);

  ByteWriter table;
  for (std::size_t i = 0; i < topics_.size(); ++i) {
    const Topic& topic = topics_[i];
    table.Put32(topic.contents_entry);
    table.Put32(topic.title);
    table.Put32(url_offsets[i]);
    table.Put16(static_cast<std::uint16_t>((topic.is_file ? kFlagFile : 0) |
                                           (topic.in_contents ? kFlagInContents : 0)));
    table.Put16(0);
  }
  return {table.Take(), urls.Take(), strings.Take()};
}

}  // namespace scrivo

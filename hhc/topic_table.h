#pragma once

// #TOPICS, #URLTBL and #URLSTR: one topic for each address that contents, index or search can show.
//
// Formats. #TOPICS: 16 bytes a topic: offset of its entry in #TOCIDX or 0, offset of its title in
// #STRINGS or -1, offset of its entry in #URLTBL, flags, 0. #URLTBL: 12 bytes an address, sorted by
// hash: hash, topic number, offset in #URLSTR; pages of 0x1000 bytes hold 341 of them and end with
// their size. #URLSTR: one byte, then for each topic the offset of its web address or 0, of its
// frame's name or 0, and the zero-terminated address; no entry crosses a page.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scrivo {

inline constexpr std::uint32_t kNoString = 0xFFFFFFFF;

struct Topic {
  std::string address;               // in the project's code page, "/" separators, no leading one
  std::string web_address, frame;    // from the contents file; usually empty
  std::uint32_t title = kNoString;   // offset in #STRINGS
  std::uint32_t contents_entry = 0;  // offset in #TOCIDX
  bool in_contents = false;
  bool is_file = true;  // the address has no "#anchor"
};

struct TopicStreams {
  std::vector<std::uint8_t> topics, url_table, url_strings;
};

class TopicTable {
 public:
  // The number of the topic with that address, made on first use. Addresses that differ only in the
  // case of ASCII letters are the same one; the first spelling is kept.
  std::uint32_t Add(std::string_view address);

  std::optional<std::uint32_t> Find(std::string_view address) const;

  Topic& At(std::uint32_t number) { return topics_[number]; }
  const Topic& At(std::uint32_t number) const { return topics_[number]; }
  std::size_t Size() const { return topics_.size(); }

  TopicStreams Write() const;

 private:
  std::vector<Topic> topics_;
  std::unordered_map<std::string, std::uint32_t> numbers_;  // by lower-case address
};

// The hash of an address by which #URLTBL is sorted; #SYSTEM names contents and index by it.
std::uint32_t AddressHash(std::string_view address);

}  // namespace scrivo

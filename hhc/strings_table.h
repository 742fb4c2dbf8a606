#pragma once

// #STRINGS: the strings that the other internal streams point to.
//
// Format: zero-terminated strings; offset 0 holds the empty one. Pages of 0x1000 bytes; a string
// that does not fit on its page starts the next one.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bytes/byte_writer.h"

namespace scrivo {

inline constexpr std::size_t kStreamPage = 0x1000;

class StringsTable {
 public:
  StringsTable() { out_.Put8(0); }

  // Adds a string in the project's code page and gives its offset. The empty string is at 0. A
  // string that cannot fit on a page is cut; zero bytes end it early.
  std::uint32_t Add(std::string_view text) {
    text = text.substr(0, std::min(text.find('\0'), kStreamPage - 1));
    if (text.empty()) return 0;
    const std::size_t left = kStreamPage - out_.Size() % kStreamPage;
    if (text.size() + 1 > left) out_.PadTo(out_.Size() + left);
    const std::uint32_t offset = static_cast<std::uint32_t>(out_.Size());
    out_.PutText(text);
    out_.Put8(0);
    return offset;
  }

  // The same, but a string that Share() got before keeps its place.
  std::uint32_t Share(std::string_view text) {
    const auto [found, added] = shared_.try_emplace(std::string(text), 0);
    if (added) found->second = Add(text);
    return found->second;
  }

  const std::vector<std::uint8_t>& Bytes() const { return out_.Bytes(); }

 private:
  ByteWriter out_;
  std::unordered_map<std::string, std::uint32_t> shared_;
};

}  // namespace scrivo

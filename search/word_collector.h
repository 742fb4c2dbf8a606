#pragma once

// The words of one page and where they stand, gathered while the page is scanned.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo {

// The longest word that the search index holds; further characters of a word are dropped.
inline constexpr std::size_t kMaxWordLength = 99;

// What a word collector hands to the index: for each different word, title words apart from body
// words, in order of first appearance:
//   BYTE length, word, BYTE 1 for a title word, varint number of positions, varint bytes of the
//   positions that follow, each a varint of the difference to the one before (the first to 0).
// A varint has seven bits a byte, lowest first, bit 7 set on all but the last.
struct PageWords {
  std::string encoded;
  std::uint32_t word_count = 0;  // positions in all
  // How many counts and how many position differences have each bit length: what the index needs to
  // choose its coding. Element 0 counts the zeros.
  std::array<std::uint32_t, 33> count_bits{}, position_bits{};
};

// A hash of a word, title words apart from body words.
std::uint32_t WordHash(std::string_view word, bool in_title);

// Puts numbers into such a string and takes them out again.
void AppendVarint(std::uint64_t value, std::string* out);
std::uint64_t TakeVarint(std::string_view* in);

// Collects page after page; one page costs time and memory in proportion to its words. Not for use
// by two threads at once.
class WordCollector {
 public:
  WordCollector();

  // Adds the next word of the page, 1 to kMaxWordLength bytes; its position is the number of words
  // before it.
  void Add(std::string_view word, bool in_title);

  // Hands out the page's words and makes ready for the next page.
  PageWords Finish();

 private:
  struct Entry {
    std::uint32_t hash, text, count;  // text: where it starts in texts_
    std::uint8_t length;
    bool in_title;
  };

  std::uint32_t FindOrAdd(std::string_view word, bool in_title);
  void Grow();

  std::vector<std::uint32_t> slots_;  // entry number + 1, or 0; a power of two long
  std::vector<Entry> entries_;
  std::string texts_;
  std::vector<std::uint32_t> order_;  // the entry of each position
};

}  // namespace scrivo

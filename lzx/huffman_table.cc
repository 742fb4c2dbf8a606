#include "lzx/huffman_table.h"

#include <algorithm>

#include "lzx/constants.h"

namespace scrivo {
namespace {

constexpr int kLongestCode = kLzxMaxCodeLength;
constexpr std::size_t kMostSymbols = kLzxMaxMainSymbols;

// The symbols that have a code, in the order of the codes: by length, then by number.
struct CodeOrder {
  std::array<std::uint16_t, kLongestCode + 2> start{};  // of each length in `symbols`
  std::array<std::uint16_t, kMostSymbols> symbols;
};

void SortSymbols(std::span<const std::uint8_t> lengths, CodeOrder* order) {
  std::array<std::uint16_t, kLongestCode + 1> count{};
  for (const std::uint8_t length : lengths) ++count[length];
  for (int length = 1; length <= kLongestCode; ++length) {
    order->start[length + 1] = static_cast<std::uint16_t>(order->start[length] + count[length]);
  }
  auto next = order->start;
  for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
    if (const std::uint8_t length = lengths[symbol]; length != 0) {
      order->symbols[next[length]++] = static_cast<std::uint16_t>(symbol);
    }
  }
}

// Writes the elements in the order of the codes, which is the order of the table's places too.
class Filler {
 public:
  Filler(int root_bits, int link_bits, std::span<HuffmanElement> table)
      : root_bits_(root_bits),
        link_bits_(link_bits),
        table_(table),
        next_part_(std::size_t{1} << root_bits) {}

  void AddShort(std::uint32_t meaning, int length) {
    const std::size_t places = std::size_t{1} << (root_bits_ - length);
    std::fill_n(table_.begin() + static_cast<std::ptrdiff_t>(root_), places,
                Element(meaning, length));
    root_ += places;
  }

  void AddLong(std::uint32_t meaning, int length) {
    const std::size_t part_size = std::size_t{1} << link_bits_;
    if (in_part_ == 0) {
      table_[root_++] = kHuffmanLink | static_cast<HuffmanElement>(next_part_ << 8);
      next_part_ += part_size;
    }
    const std::size_t places = std::size_t{1} << (root_bits_ + link_bits_ - length);
    const std::size_t from = next_part_ - part_size + in_part_;
    std::fill_n(table_.begin() + static_cast<std::ptrdiff_t>(from), places,
                Element(meaning, length));
    in_part_ = (in_part_ + places) % part_size;
  }

 private:
  static HuffmanElement Element(std::uint32_t meaning, int length) {
    return meaning << 8 | static_cast<HuffmanElement>(length);
  }

  int root_bits_;
  int link_bits_;
  std::span<HuffmanElement> table_;
  std::size_t root_ = 0;     // next place in the root part
  std::size_t next_part_;    // where the next linked part starts
  std::size_t in_part_ = 0;  // next place in the current linked part; 0: none begun
};

}  // namespace

bool BuildHuffmanTable(std::span<const std::uint8_t> lengths,
                       std::span<const std::uint32_t> meanings, int root_bits, int max_length,
                       std::span<HuffmanElement> table, int* link_bits) {
  CodeOrder order;
  SortSymbols(lengths, &order);
  std::uint32_t space = 0;  // taken by the codes, in units of the longest possible code
  int longest = 0;
  for (int length = 1; length <= max_length; ++length) {
    const std::uint32_t count = order.start[length + 1] - order.start[length];
    space += count << (kLongestCode - length);
    if (count != 0) longest = length;
  }
  *link_bits = std::max(longest - root_bits, 0);

  constexpr std::uint32_t kWholeSpace = 1U << kLongestCode;
  const bool complete = space == kWholeSpace;
  const bool lone = order.start[max_length + 1] == 1 && longest == 1;
  if (!complete && !lone && space != 0) return false;
  if (!complete) {
    std::fill_n(table.begin(), std::size_t{1} << root_bits, kHuffmanInvalid);
  }

  Filler filler(root_bits, *link_bits, table);
  for (int length = 1; length <= longest; ++length) {
    for (std::uint32_t i = order.start[length]; i < order.start[length + 1]; ++i) {
      const std::uint32_t meaning = meanings[order.symbols[i]];
      if (length <= root_bits) {
        filler.AddShort(meaning, length);
      } else {
        filler.AddLong(meaning, length);
      }
    }
  }
  return true;
}

}  // namespace scrivo

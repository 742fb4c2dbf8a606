#include "lzx/huffman_code.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace scrivo {
namespace {

constexpr int kMaxLength = 16;

// A leaf while sorting: frequency above, symbol below, so that one comparison orders both.
constexpr int kSymbolBits = 10;
constexpr std::uint32_t kSymbolMask = (1u << kSymbolBits) - 1;
static_assert(kHuffmanMaxSymbols <= 1 << kSymbolBits);

using Leaves = std::array<std::uint32_t, kHuffmanMaxSymbols>;

// Builds the tree over leaf weights that rise, and replaces each weight by the depth of its leaf,
// in the array itself (depths fall). Two rising queues, leaves and inner nodes, make a heap
// unnecessary. Needs count >= 2; gives the largest depth.
std::uint32_t WeightsToDepths(std::span<std::uint32_t> nodes) {
  const std::size_t count = nodes.size();
  // Inner node i is stored at i, where leaf i has been used already; a node that got its parent
  // holds the parent's index in place of its weight.
  std::size_t leaf = 0;
  std::size_t root = 0;
  const auto take = [&](std::size_t inner) -> std::uint32_t {
    if (leaf >= count || (root < inner && nodes[root] < nodes[leaf])) {
      const std::uint32_t weight = nodes[root];
      nodes[root++] = static_cast<std::uint32_t>(inner);
      return weight;
    }
    return nodes[leaf++];
  };
  for (std::size_t inner = 0; inner + 1 < count; ++inner) {
    const std::uint32_t first = take(inner);
    nodes[inner] = first + take(inner);
  }
  nodes[count - 2] = 0;
  for (std::size_t inner = count - 2; inner-- > 0;) nodes[inner] = nodes[nodes[inner]] + 1;

  // Depths of inner nodes to depths of leaves: what is not an inner node at a depth is a leaf.
  std::size_t available = 1;
  std::size_t inner_left = count - 1;
  std::size_t slot = count;
  for (std::uint32_t depth = 0; available > 0; ++depth) {
    std::size_t used = 0;
    while (inner_left > 0 && nodes[inner_left - 1] == depth) {
      ++used;
      --inner_left;
    }
    for (; available > used; --available) nodes[--slot] = depth;
    available = 2 * used;
  }
  return nodes[0];
}

}  // namespace

void HuffmanLengths(std::span<const std::uint32_t> frequencies, int max_length,
                    std::span<std::uint8_t> lengths) {
  std::fill(lengths.begin(), lengths.end(), std::uint8_t{0});
  Leaves sorted;
  std::size_t count = 0;
  for (std::size_t symbol = 0; symbol < frequencies.size(); ++symbol) {
    if (frequencies[symbol] == 0) continue;
    sorted[count++] = frequencies[symbol] << kSymbolBits | static_cast<std::uint32_t>(symbol);
  }
  if (count == 0) return;
  if (count == 1) {
    const std::uint32_t symbol = sorted[0] & kSymbolMask;
    lengths[symbol] = 1;
    lengths[symbol == 0 ? 1 : 0] = 1;
    return;
  }
  std::sort(sorted.begin(), sorted.begin() + count);

  Leaves depths;
  // Too deep a tree is built again from flatter weights. All weights 1 give the smallest depth
  // there is, so this ends; it keeps the order, so the leaves need no second sort.
  for (int flatten = 0;; ++flatten) {
    for (std::size_t i = 0; i < count; ++i) {
      depths[i] = std::max(sorted[i] >> kSymbolBits >> flatten, 1u);
    }
    if (WeightsToDepths({depths.data(), count}) <= static_cast<std::uint32_t>(max_length)) break;
  }
  for (std::size_t i = 0; i < count; ++i) {
    lengths[sorted[i] & kSymbolMask] = static_cast<std::uint8_t>(depths[i]);
  }
}

void CanonicalCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes) {
  std::array<std::uint32_t, kMaxLength + 1> next{};
  for (const std::uint8_t length : lengths) ++next[length];
  next[0] = 0;
  std::uint32_t code = 0;
  for (int length = 1; length <= kMaxLength; ++length) {
    const std::uint32_t count = next[length];
    next[length] = code;
    code = (code + count) << 1;
  }
  for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
    const std::uint8_t length = lengths[symbol];
    codes[symbol] = length == 0 ? std::uint16_t{0} : static_cast<std::uint16_t>(next[length]++);
  }
}

}  // namespace scrivo

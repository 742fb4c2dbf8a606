#include "search/scale_root.h"

namespace scrivo {

int BestRootSize(const BitLengths& lengths) {
  int best = 0;
  std::uint64_t best_bits = ~std::uint64_t{0};
  constexpr int kLargestRoot = 16;
  for (int root = 0; root <= kLargestRoot; ++root) {
    std::uint64_t bits = 0;
    for (int length = 0; length <= 32; ++length) {
      const int cost = length <= root ? 1 + root : 2 * length - root;
      bits += lengths[static_cast<std::size_t>(length)] * static_cast<std::uint64_t>(cost);
    }
    if (bits < best_bits) {
      best_bits = bits;
      best = root;
    }
  }
  return best;
}

}  // namespace scrivo

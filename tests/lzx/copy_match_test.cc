#include "lzx/copy_match.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "lzx/constants.h"

namespace scrivo {
namespace {

TEST(CopyMatchTest, RepeatsWhatLiesBeforeAndStaysInItsRoom) {
  constexpr std::size_t kBefore = 300;
  constexpr std::size_t kBehind = 64;
  for (std::size_t distance = 1; distance <= kBefore; distance += distance < 70 ? 1 : 23) {
    for (std::size_t length = kLzxMinMatch; length <= kLzxMaxMatch; ++length) {
      for (const std::size_t more : {0, 1, 16, 30, 47, 48, 200}) {
        std::vector<std::uint8_t> buffer(kBefore + length + more + kBehind, 0xEE);
        for (std::size_t i = 0; i < kBefore; ++i) buffer[i] = static_cast<std::uint8_t>(i * i / 7);
        std::vector<std::uint8_t> wanted = buffer;
        for (std::size_t i = kBefore; i < kBefore + length; ++i) wanted[i] = wanted[i - distance];
        CopyMatch(buffer.data() + kBefore, distance, length, length + more);
        // What lies behind the match, within its room, may be anything.
        std::fill_n(buffer.begin() + static_cast<std::ptrdiff_t>(kBefore + length), more, 0xEE);
        ASSERT_EQ(buffer, wanted) << distance << ", " << length << ", " << more;
      }
    }
  }
}

}  // namespace
}  // namespace scrivo

#pragma once

// Tells quickly of most names that they are none of a few known ones.

#include <array>
#include <cstdint>
#include <string_view>

#include "text/ascii_text.h"

namespace scrivo {

// Knows the lengths of the names that begin with each letter.
class NameFilter {
 public:
  // `name` begins with a small letter and has fewer than 32 characters.
  constexpr void Add(std::string_view name) {
    lengths_[static_cast<std::size_t>(name[0] - 'a')] |= std::uint32_t{1} << name.size();
  }

  // False when `name`, in any case, is none of those that were added.
  constexpr bool MayBe(std::string_view name) const {
    if (name.empty() || name.size() >= 32 || !IsAsciiLetter(name[0])) return false;
    return lengths_[static_cast<std::size_t>(AsciiLower(name[0]) - 'a')] >> name.size() & 1;
  }

 private:
  std::array<std::uint32_t, 26> lengths_{};
};

}  // namespace scrivo

#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace scrivo {

// Bytes with a lower bound, as automation arrays have one.
struct ByteArray {
  std::vector<std::uint8_t> elements;
  std::int32_t lower_bound = 0;

  // One less than the lower bound when the array is empty.
  std::int32_t UpperBound() const {
    return lower_bound + static_cast<std::int32_t>(elements.size()) - 1;
  }
  bool operator==(const ByteArray&) const = default;
};

// A value on its way into or out of the registry: nothing, a text in the ANSI code page, a 16-bit
// or a 32-bit integer, a truth value, or bytes.
using RegistryValue =
    std::variant<std::monostate, std::string, std::int16_t, std::int32_t, bool, ByteArray>;

}  // namespace scrivo

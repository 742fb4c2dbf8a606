#pragma once

// Prefix codes for a set of symbols: from how often each occurs to the lengths and the bits of its
// code, as the trees of LZX want them.

#include <cstdint>
#include <span>

namespace scrivo {

// Symbols a tree may have at most.
inline constexpr int kHuffmanMaxSymbols = 1024;

// Sets lengths[i] to the code length, 1 to max_length, of every symbol with frequencies[i] > 0, and
// to 0 for all others. The code is complete and of the smallest total size, or close to it where
// max_length forces another one. A single used symbol gets a second one beside it, since readers
// reject a tree of one code; no used symbol at all leaves an empty tree. Both spans have the same
// size, at most kHuffmanMaxSymbols and at most 1 << max_length; the sum of the frequencies is below
// 2^22.
void HuffmanLengths(std::span<const std::uint32_t> frequencies, int max_length,
                    std::span<std::uint8_t> lengths);

// Sets codes[i] to the canonical code of each symbol with lengths[i] > 0: shorter codes first, then
// by symbol, the first code all zeros. Lengths are at most 16. Codes of unused symbols are set to
// 0.
void CanonicalCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes);

}  // namespace scrivo

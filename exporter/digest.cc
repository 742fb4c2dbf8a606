#include "exporter/digest.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace scrivo {
namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::uint32_t kRound[64] = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};

}  // namespace

void Digest::AddBlock(const std::uint8_t* block) {
  std::uint32_t words[64];
  for (int i = 0; i < 16; ++i) {
    words[i] = std::uint32_t{block[4 * i]} << 24 | std::uint32_t{block[4 * i + 1]} << 16 |
               std::uint32_t{block[4 * i + 2]} << 8 | block[4 * i + 3];
  }
  for (int i = 16; i < 64; ++i) {
    const std::uint32_t a = words[i - 15], b = words[i - 2];
    words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ (a >> 3)) + words[i - 7] +
               (std::rotr(b, 17) ^ std::rotr(b, 19) ^ (b >> 10));
  }
  std::uint32_t s[8];
  std::copy(std::begin(state_), std::end(state_), s);
  for (int i = 0; i < 64; ++i) {
    const std::uint32_t first = s[7] +
                                (std::rotr(s[4], 6) ^ std::rotr(s[4], 11) ^ std::rotr(s[4], 25)) +
                                ((s[4] & s[5]) ^ (~s[4] & s[6])) + kRound[i] + words[i];
    const std::uint32_t second = (std::rotr(s[0], 2) ^ std::rotr(s[0], 13) ^ std::rotr(s[0], 22)) +
                                 ((s[0] & s[1]) ^ (s[0] & s[2]) ^ (s[1] & s[2]));
    std::copy_backward(s, s + 7, s + 8);
    s[4] += first;
    s[0] = first + second;
  }
  for (int i = 0; i < 8; ++i) state_[i] += s[i];
}

void Digest::Add(std::span<const std::uint8_t> bytes) {
  size_ += bytes.size();
  while (!bytes.empty()) {
    if (pending_size_ == 0 && bytes.size() >= 64) {
      AddBlock(bytes.data());
      bytes = bytes.subspan(64);
      continue;
    }
    const std::size_t count = std::min(bytes.size(), 64 - pending_size_);
    std::memcpy(pending_ + pending_size_, bytes.data(), count);
    pending_size_ += count;
    bytes = bytes.subspan(count);
    if (pending_size_ == 64) {
      AddBlock(pending_);
      pending_size_ = 0;
    }
  }
}

std::string Digest::Finish() {
  const std::uint64_t bits = size_ * 8;
  const std::uint8_t end = 0x80, zero = 0;
  Add({&end, 1});
  while (pending_size_ != 56) Add({&zero, 1});
  std::uint8_t length[8];
  for (int i = 0; i < 8; ++i) length[i] = static_cast<std::uint8_t>(bits >> (56 - 8 * i));
  Add(length);
  std::string digits;
  for (const std::uint32_t word : state_) {
    for (int shift = 28; shift >= 0; shift -= 4) {
      digits.push_back("0123456789abcdef"[word >> shift & 15]);
    }
  }
  return digits;
}

}  // namespace scrivo

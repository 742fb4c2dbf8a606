#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace scrivo {

// The SHA-256 digest of bytes that come in pieces, as FIPS 180-4 has it.
class Digest {
 public:
  void Add(std::span<const std::uint8_t> bytes);

  // In hexadecimal digits. Nothing can be added afterwards.
  std::string Finish();

 private:
  void AddBlock(const std::uint8_t* block);

  std::uint32_t state_[8] = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                             0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
  std::uint8_t pending_[64];
  std::size_t pending_size_ = 0;
  std::uint64_t size_ = 0;
};

}  // namespace scrivo

#pragma once

// Made-up input for the compressor, the same on every run and machine.

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo {

inline std::vector<std::uint8_t> ToBytes(std::string_view text) {
  return {text.begin(), text.end()};
}

// Bytes that nothing compresses.
inline std::vector<std::uint8_t> RandomBytes(std::size_t size, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::vector<std::uint8_t> bytes(size);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

// Pages of markup and words that repeat themselves now and then.
inline std::vector<std::uint8_t> PageBytes(std::size_t size, std::uint32_t seed) {
  static constexpr std::string_view kWords[] = {"window", "the",    "topic", "of",    "help",
                                                "index",  "a",      "file",  "which", "contents",
                                                "opens",  "option", "and",   "page",  "browser"};
  std::mt19937 random(seed);
  std::string text = "<html><head><title>Page</title></head><body>\r\n";
  while (text.size() < size) {
    text += random() % 5 == 0 ? "<p class=\"note\"><a href=\"topic" : "<p>";
    for (unsigned words = random() % 20 + 1; words > 0; --words) {
      text += kWords[random() % std::size(kWords)];
      text += random() % 9 == 0 ? std::to_string(random() % 1000) + " " : " ";
    }
    text += "</p>\r\n";
  }
  text.resize(size);
  return ToBytes(text);
}

}  // namespace scrivo

#pragma once

#include <string>
#include <string_view>

#include "text/code_page.h"

namespace scrivo {

// UTF-8 text as UTF-16 with a byte order mark.
inline std::string Utf16Text(std::string_view utf8, bool little_endian) {
  std::string bytes;
  for (const char16_t unit : u"\xFEFF" + ToUtf16(utf8)) {
    const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
    bytes.push_back(little_endian ? low : high);
    bytes.push_back(little_endian ? high : low);
  }
  return bytes;
}

}  // namespace scrivo

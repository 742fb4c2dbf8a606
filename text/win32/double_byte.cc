#include "text/double_byte.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#define STRICT
#include <windows.h>

#include "text/code_page.h"

namespace scrivo {
namespace {

// How many bytes the character at the front of `bytes` takes.
std::size_t CharacterLength(std::string_view bytes, int code_page) {
  const unsigned char first = static_cast<unsigned char>(bytes[0]);
  if (first < 0x80) return 1;
  return IsDBCSLeadByteEx(static_cast<UINT>(code_page), first) && bytes.size() >= 2 ? 2 : 1;
}

char32_t Joined(const wchar_t* wide, int count) {
  if (count == 1) return wide[0];
  return 0x10000 + ((static_cast<char32_t>(wide[0]) - 0xD800) << 10) +
         (static_cast<char32_t>(wide[1]) - 0xDC00);
}

}  // namespace

std::string DoubleByteToUtf8(std::string_view bytes, int code_page, Undefined undefined) {
  std::string out;
  out.reserve(bytes.size() * 2);
  while (!bytes.empty()) {
    const std::size_t length = CharacterLength(bytes, code_page);
    if (length == 1 && static_cast<unsigned char>(bytes[0]) < 0x80) {
      out.push_back(bytes[0]);
      bytes.remove_prefix(1);
      continue;
    }
    wchar_t wide[4];
    const int count = MultiByteToWideChar(static_cast<UINT>(code_page), MB_ERR_INVALID_CHARS,
                                          bytes.data(), static_cast<int>(length), wide, 4);
    const bool known = count == 1 || count == 2;
    if (known) {
      AppendUtf8(Joined(wide, count), &out);
    } else {
      AppendUndefined(bytes[0], undefined, &out);
    }
    bytes.remove_prefix(known ? length : 1);
  }
  return out;
}

std::string DoubleByteFromUtf8(std::string_view utf8, int code_page, std::size_t* lost,
                               Undefined undefined) {
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    const char32_t character = NextUtf8(&utf8);
    if (character < 0x80) {
      out.push_back(static_cast<char>(character));
      continue;
    }
    if (const auto byte = KeptByte(character); byte && undefined == Undefined::kKept) {
      out.push_back(*byte);
      continue;
    }
    wchar_t wide[2] = {static_cast<wchar_t>(character), 0};
    int units = 1;
    if (character >= 0x10000) {
      wide[0] = static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
      wide[1] = static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
      units = 2;
    }
    char bytes[8];
    BOOL replaced = FALSE;
    const int count = WideCharToMultiByte(static_cast<UINT>(code_page), WC_NO_BEST_FIT_CHARS, wide,
                                          units, bytes, 8, nullptr, &replaced);
    if (count > 0 && !replaced && character != 0xFFFD) {
      out.append(bytes, static_cast<std::size_t>(count));
    } else {
      out.push_back('?');
      if (lost != nullptr) ++*lost;
    }
  }
  return out;
}

}  // namespace scrivo

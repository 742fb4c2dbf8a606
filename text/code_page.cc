#include "text/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/double_byte.h"

namespace scrivo {
namespace {

struct SingleByteTable {
  int code_page;
  std::array<char16_t, 128> characters;  // of the bytes 0x80 to 0xFF; U+FFFD: unassigned
};

constexpr SingleByteTable kTables[] = {
#include "text/single_byte_tables.inc"
};

// The way back: characters in ascending order, each with its byte.
struct ReverseTable {
  struct Pair {
    char16_t character = 0;
    unsigned char byte = 0;
  };
  std::array<Pair, 128> pairs;
};

constexpr ReverseTable Reverse(const SingleByteTable& table) {
  ReverseTable reverse;
  for (std::size_t i = 0; i < 128; ++i) {
    reverse.pairs[i] = {table.characters[i], static_cast<unsigned char>(0x80 + i)};
  }
  std::sort(reverse.pairs.begin(), reverse.pairs.end(),
            [](const auto& a, const auto& b) { return a.character < b.character; });
  return reverse;
}

constexpr auto kReverseTables = [] {
  std::array<ReverseTable, std::size(kTables)> all;
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = Reverse(kTables[i]);
  return all;
}();

std::size_t TableIndex(int code_page) {
  std::size_t fallback = 0;
  for (std::size_t i = 0; i < std::size(kTables); ++i) {
    if (kTables[i].code_page == code_page) return i;
    if (kTables[i].code_page == 1252) fallback = i;
  }
  return fallback;
}

std::string Utf8Repaired(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  while (!bytes.empty()) AppendUtf8(NextUtf8(&bytes), &out);
  return out;
}

// The characters that stand for the bytes from 0x80 up are in the last private-use plane, where no
// text that anybody has written lies.
constexpr char32_t kKeptBytes = 0x10F700;

}  // namespace

std::optional<char> KeptByte(char32_t character) {
  if (character < kKeptBytes + 0x80 || character > kKeptBytes + 0xFF) return std::nullopt;
  return static_cast<char>(character - kKeptBytes);
}

void AppendUndefined(char byte, Undefined undefined, std::string* utf8) {
  AppendUtf8(undefined == Undefined::kKept ? kKeptBytes + static_cast<unsigned char>(byte)
                                           : kReplacementCharacter,
             utf8);
}

std::string WithoutKeptBytes(std::string_view utf8) {
  // U+10F780 to U+10F7FF; what is no UTF-8, such as a name on disk, stays as it is.
  constexpr std::string_view kLow = "\xF4\x8F\x9E", kHigh = "\xF4\x8F\x9F";
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    if (utf8.starts_with(kLow) || utf8.starts_with(kHigh)) {
      std::string_view rest = utf8;
      if (KeptByte(NextUtf8(&rest))) {
        AppendUtf8(kReplacementCharacter, &out);
        utf8 = rest;
        continue;
      }
    }
    out.push_back(utf8.front());
    utf8.remove_prefix(1);
  }
  return out;
}

bool IsDoubleByte(int code_page) {
  switch (code_page) {
    case 932:
    case 936:
    case 949:
    case 950:
      return true;
    default:
      return false;
  }
}

std::string ToUtf8(std::string_view bytes, int code_page, Undefined undefined) {
  const std::size_t ascii = AsciiPrefix(bytes);
  if (ascii == bytes.size()) return std::string(bytes);
  if (code_page == kUtf8CodePage) {
    return IsUtf8(bytes) ? std::string(bytes) : Utf8Repaired(bytes);
  }
  if (IsDoubleByte(code_page)) return DoubleByteToUtf8(bytes, code_page, undefined);
  const SingleByteTable& table = kTables[TableIndex(code_page)];
  std::string out(bytes.substr(0, ascii));
  out.reserve(bytes.size() * 2);
  for (const char c : bytes.substr(ascii)) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      out.push_back(c);
    } else if (const char16_t character = table.characters[byte - 0x80];
               character != kReplacementCharacter) {
      AppendUtf8(character, &out);
    } else {
      AppendUndefined(c, undefined, &out);
    }
  }
  return out;
}

std::string FromUtf8(std::string_view utf8, int code_page, std::size_t* lost, Undefined undefined) {
  const std::size_t ascii = AsciiPrefix(utf8);
  if (ascii == utf8.size()) return std::string(utf8);
  if (code_page == kUtf8CodePage) return Utf8Repaired(utf8);
  if (IsDoubleByte(code_page)) return DoubleByteFromUtf8(utf8, code_page, lost, undefined);
  const auto& pairs = kReverseTables[TableIndex(code_page)].pairs;
  std::string out(utf8.substr(0, ascii));
  out.reserve(utf8.size());
  utf8.remove_prefix(ascii);
  while (!utf8.empty()) {
    const char32_t character = NextUtf8(&utf8);
    if (character < 0x80) {
      out.push_back(static_cast<char>(character));
      continue;
    }
    const auto found =
        std::lower_bound(pairs.begin(), pairs.end(), character,
                         [](const auto& pair, char32_t wanted) { return pair.character < wanted; });
    if (character != kReplacementCharacter && found != pairs.end() &&
        found->character == character) {
      out.push_back(static_cast<char>(found->byte));
    } else if (const auto byte = KeptByte(character); byte && undefined == Undefined::kKept) {
      out.push_back(*byte);
    } else {
      out.push_back('?');
      if (lost != nullptr) ++*lost;
    }
  }
  return out;
}

}  // namespace scrivo

#include "text/double_byte.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <vector>

#include "text/code_page.h"

namespace scrivo {
namespace {

struct DoubleByteRow {
  int code_page;
  std::uint8_t first;              // 0 for characters of one byte
  std::uint8_t second;             // of the first of the characters
  std::u16string_view characters;  // U+FFFD where there is none
};

struct DoubleByteException {
  int code_page;
  char16_t character;
  std::uint16_t code;
};

// Not the system's conversion: it lies in modules that a small system lacks, and that a program
// without shared libraries cannot load. These tables are the same on every machine.
#include "text/double_byte_tables.inc"

constexpr char16_t kNone = 0xFFFD;

// One code page. A code is both bytes, the first one high, or the only byte.
class DoubleByteTable {
 public:
  explicit DoubleByteTable(int code_page) : codes_(0x10000) {
    for (const DoubleByteRow& row : kRows) {
      if (row.code_page != code_page) continue;
      rows_[row.first] = &row;
      for (std::size_t i = 0; i < row.characters.size(); ++i) {
        std::uint16_t& code = codes_[row.characters[i]];
        if (code == 0) code = static_cast<std::uint16_t>(row.first << 8 | (row.second + i));
      }
    }
    for (const DoubleByteException& exception : kExceptions) {
      if (exception.code_page == code_page) codes_[exception.character] = exception.code;
    }
    codes_[kNone] = 0;
  }

  // The character, kNone when there is none. `first` is 0 for a character of one byte.
  char16_t Character(std::uint8_t first, std::uint8_t second) const {
    const DoubleByteRow* const row = rows_[first];
    if (row == nullptr || second < row->second) return kNone;
    const std::size_t place = second - row->second;
    return place < row->characters.size() ? row->characters[place] : kNone;
  }

  // 0 when the code page lacks the character.
  std::uint16_t Code(char32_t character) const {
    return character < codes_.size() ? codes_[character] : std::uint16_t{0};
  }

 private:
  std::array<const DoubleByteRow*, 256> rows_ = {};
  std::vector<std::uint16_t> codes_;
};

const DoubleByteTable& TableOf(int code_page) {
  static const DoubleByteTable japanese(932), chinese(936), korean(949), taiwanese(950);
  switch (code_page) {
    case 932:
      return japanese;
    case 936:
      return chinese;
    case 949:
      return korean;
    default:
      return taiwanese;
  }
}

// The plain bytes at the front, which need no table.
void TakeAscii(std::string_view* in, std::string* out) {
  const std::size_t n = AsciiPrefix(*in);
  out->append(in->substr(0, n));
  in->remove_prefix(n);
}

}  // namespace

std::string DoubleByteToUtf8(std::string_view bytes, int code_page, Undefined undefined) {
  const DoubleByteTable& table = TableOf(code_page);
  std::string out;
  out.reserve(bytes.size() * 2);
  for (TakeAscii(&bytes, &out); !bytes.empty(); TakeAscii(&bytes, &out)) {
    const auto first = static_cast<std::uint8_t>(bytes[0]);
    std::size_t length = 1;
    char16_t character = table.Character(0, first);
    if (character == kNone && bytes.size() >= 2) {
      length = 2;
      character = table.Character(first, static_cast<std::uint8_t>(bytes[1]));
    }
    if (character == kNone) {
      length = 1;
      AppendUndefined(bytes[0], undefined, &out);
    } else {
      AppendUtf8(character, &out);
    }
    bytes.remove_prefix(length);
  }
  return out;
}

std::string DoubleByteFromUtf8(std::string_view utf8, int code_page, std::size_t* lost,
                               Undefined undefined) {
  const DoubleByteTable& table = TableOf(code_page);
  std::string out;
  out.reserve(utf8.size());
  for (TakeAscii(&utf8, &out); !utf8.empty(); TakeAscii(&utf8, &out)) {
    const char32_t character = NextUtf8(&utf8);
    const std::uint16_t code = table.Code(character);
    const auto byte = KeptByte(character);
    if (code != 0) {
      if (code > 0xFF) out.push_back(static_cast<char>(code >> 8));
      out.push_back(static_cast<char>(code & 0xFF));
    } else if (byte && undefined == Undefined::kKept) {
      out.push_back(*byte);
    } else {
      out.push_back('?');
      if (lost != nullptr) ++*lost;
    }
  }
  return out;
}

}  // namespace scrivo

#include "webs/ansi_text.h"

#include <algorithm>

#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kCharacters = 0x110000;

// The code pages that a system can have for its ANSI text, the commonest first.
constexpr int kAnsiCodePages[] = {1252, 1250, 1251, 1253, 1254, 1257, 1255,
                                  1256, 1258, 874,  932,  936,  949,  950};

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

std::string AnsiText::From(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  if (met_.empty()) met_.resize(kCharacters);
  for (std::string_view rest = utf8; !rest.empty();) met_[NextUtf8(&rest)] = true;
  return FromUtf8(utf8, code_page_, &lost_);
}

std::optional<int> AnsiText::CodePageForAll() const {
  std::string all;
  for (std::size_t c = 0x80; c < met_.size(); ++c) {
    if (met_[c] && c != kReplacement) AppendUtf8(static_cast<char32_t>(c), &all);
  }
  for (const int code_page : kAnsiCodePages) {
    std::size_t lost = 0;
    FromUtf8(all, code_page, &lost);
    if (lost == 0) return code_page;
  }
  return std::nullopt;
}

std::string GuessedUtf8(std::string_view bytes, int code_page) {
  return IsUtf8(bytes) ? std::string(bytes) : ToUtf8(bytes, code_page);
}

}  // namespace scrivo

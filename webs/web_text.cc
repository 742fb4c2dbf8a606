#include "webs/web_text.h"

#include <utility>

#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The code pages that a system can have for its ANSI text, the commonest first.
constexpr int kAnsiCodePages[] = {1252, 1250, 1251, 1253, 1254, 1257, 1255,
                                  1256, 1258, 874,  932,  936,  949,  950};

bool Holds(int code_page, char32_t character) {
  std::string utf8;
  AppendUtf8(character, &utf8);
  std::size_t lost = 0;
  FromUtf8(utf8, code_page, &lost);
  return lost == 0;
}

}  // namespace

std::string WebText::HandOut(std::string utf8) {
  std::string_view rest = utf8;
  for (rest.remove_prefix(AsciiPrefix(rest)); !rest.empty();
       rest.remove_prefix(AsciiPrefix(rest))) {
    ++counts_[NextUtf8(&rest)];
  }
  return utf8;
}

std::size_t WebText::Lost() const {
  std::size_t lost = 0;
  for (const auto& [character, count] : counts_) {
    if (!Holds(code_page_, character)) lost += count;
  }
  return lost;
}

std::optional<int> WebText::CodePageForAll() const {
  std::string all;
  for (const auto& [character, count] : counts_) {
    if (character != kReplacement) AppendUtf8(character, &all);
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

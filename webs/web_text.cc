#include "webs/web_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/code_page.h"

namespace scrivo {
namespace {

bool Holds(int code_page, char32_t character) {
  std::string utf8;
  AppendUtf8(character, &utf8);
  std::size_t lost = 0;
  FromUtf8(utf8, code_page, &lost);
  return lost == 0;
}

// The scripts that tell a code page.
enum class Script { kLatin, kCyrillic, kGreek, kHebrew, kArabic, kThai, kHangul, kKana, kHan };
constexpr std::size_t kScripts = 9;

constexpr struct {
  char32_t first, last;
  Script script;
} kRanges[] = {
    {0xC0, 0xD6, Script::kLatin},      {0xD8, 0xF6, Script::kLatin},
    {0xF8, 0x24F, Script::kLatin},     {0x386, 0x3FF, Script::kGreek},
    {0x400, 0x52F, Script::kCyrillic}, {0x591, 0x5F4, Script::kHebrew},
    {0x60C, 0x6FF, Script::kArabic},   {0xE01, 0xE5B, Script::kThai},
    {0x1100, 0x11FF, Script::kHangul}, {0x1E00, 0x1EFF, Script::kLatin},
    {0x3041, 0x30FF, Script::kKana},   {0x3131, 0x318E, Script::kHangul},
    {0x3400, 0x4DBF, Script::kHan},    {0x4E00, 0x9FFF, Script::kHan},
    {0xAC00, 0xD7A3, Script::kHangul}, {0xF900, 0xFAFF, Script::kHan},
    {0xFF66, 0xFF9F, Script::kKana},   {0x20000, 0x3FFFF, Script::kHan},
};

std::optional<Script> ScriptOf(char32_t character) {
  for (const auto& range : kRanges) {
    if (character >= range.first && character <= range.last) return range.script;
  }
  return std::nullopt;
}

// Whether a character is in GB 2312, which has the simplified forms and those that need none. The
// code page that contains it has the traditional forms too.
bool IsInGb2312(char32_t character) {
  constexpr int kGbk = 936;
  std::string utf8;
  AppendUtf8(character, &utf8);
  const std::string bytes = FromUtf8(utf8, kGbk);
  return bytes.size() == 2 && static_cast<unsigned char>(bytes[0]) >= 0xA1 &&
         static_cast<unsigned char>(bytes[1]) >= 0xA1;
}

}  // namespace

std::string WebText::HandOut(std::string utf8, const std::string& file, std::size_t line) {
  std::string_view rest = utf8;
  for (rest.remove_prefix(AsciiPrefix(rest)); !rest.empty();
       rest.remove_prefix(AsciiPrefix(rest))) {
    const char32_t character = NextUtf8(&rest);
    // A character is looked up when it is first seen, since the first one lost is new too.
    if (++counts_[character] == 1 && first_lost_.empty() && !Holds(help_code_page_, character)) {
      first_lost_ = utf8;
      place_of_first_lost_ = line == 0 ? file : file + ":" + std::to_string(line);
    }
  }
  return utf8;
}

std::size_t WebText::LostIn(int code_page) const {
  std::size_t lost = 0;
  for (const auto& [character, count] : counts_) {
    if (!Holds(code_page, character)) lost += count;
  }
  return lost;
}

int WebText::CodePageOfScript() const {
  std::size_t counts[kScripts] = {};
  std::size_t simplified = 0, traditional = 0;  // of the Chinese characters that tell
  for (const auto& [character, count] : counts_) {
    const auto script = ScriptOf(character);
    if (!script) continue;
    counts[static_cast<std::size_t>(*script)] += count;
    if (*script != Script::kHan) continue;
    constexpr int kBig5 = 950;
    const bool in_gb2312 = IsInGb2312(character), in_big5 = Holds(kBig5, character);
    if (in_gb2312 && !in_big5) simplified += count;
    if (in_big5 && !in_gb2312) traditional += count;
  }
  // Japanese and Korean texts are known by their own letters, however many Chinese ones they have.
  const auto count = [&](Script script) { return counts[static_cast<std::size_t>(script)]; };
  const std::size_t han = std::exchange(counts[static_cast<std::size_t>(Script::kHan)], 0);
  if (count(Script::kKana) > 0) counts[static_cast<std::size_t>(Script::kKana)] += han;
  if (count(Script::kKana) == 0 && count(Script::kHangul) > 0) {
    counts[static_cast<std::size_t>(Script::kHangul)] += han;
  }
  if (count(Script::kKana) == 0 && count(Script::kHangul) == 0) {
    counts[static_cast<std::size_t>(Script::kHan)] = han;
  }
  const auto most = static_cast<Script>(std::max_element(std::begin(counts), std::end(counts)) -
                                        std::begin(counts));
  switch (most) {
    case Script::kCyrillic:
      return 1251;
    case Script::kGreek:
      return 1253;
    case Script::kHebrew:
      return 1255;
    case Script::kArabic:
      return 1256;
    case Script::kThai:
      return 874;
    case Script::kHangul:
      return 949;
    case Script::kKana:
      return 932;
    case Script::kHan:
      return traditional > simplified ? 950 : 936;
    case Script::kLatin:
      break;
  }
  // The Latin code pages, the commonest first: the one that lacks the least.
  constexpr int kLatin[] = {1252, 1250, 1254, 1257, 1258};
  return *std::min_element(std::begin(kLatin), std::end(kLatin),
                           [this](int a, int b) { return LostIn(a) < LostIn(b); });
}

std::string GuessedUtf8(std::string_view bytes, int code_page) {
  return IsUtf8(bytes) ? std::string(bytes) : ToUtf8(bytes, code_page);
}

}  // namespace scrivo

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace scrivo {

// The texts of one web, as UTF-8, and what will be lost of them in a help file, which is ANSI text.
class WebText {
 public:
  // The ANSI code page: also that of texts of which nobody says what they are.
  explicit WebText(int code_page) : code_page_(code_page) {}

  int CodePage() const { return code_page_; }

  // Takes note of the characters of a text that is handed out, and gives it back.
  std::string HandOut(std::string utf8);
  // How many of the characters handed out so far the code page lacks.
  std::size_t Lost() const;
  // The code page that holds every character handed out so far; nothing when none does.
  std::optional<int> CodePageForAll() const;

 private:
  const int code_page_;
  std::unordered_map<char32_t, std::size_t> counts_;  // of the characters past ASCII
};

// Bytes of which nobody says what they are, as UTF-8: they are UTF-8 when they can be, else text
// in `code_page`.
std::string GuessedUtf8(std::string_view bytes, int code_page);

}  // namespace scrivo

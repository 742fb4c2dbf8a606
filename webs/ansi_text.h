#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo {

// Makes the texts of one web into ANSI text, and remembers what was lost on the way.
class AnsiText {
 public:
  explicit AnsiText(int code_page) : code_page_(code_page) {}

  int code_page() const { return code_page_; }

  // UTF-8 text in the code page; "?" stands for each character that it lacks.
  std::string From(std::string_view utf8);
  // The characters that became "?" so far.
  std::size_t lost() const { return lost_; }
  // The code page that holds every character met so far; nothing when none does.
  std::optional<int> CodePageForAll() const;

 private:
  const int code_page_;
  std::size_t lost_ = 0;
  std::vector<bool> met_;  // by character; empty while all was ASCII
};

// Bytes of which nobody says what they are, as UTF-8: they are UTF-8 when they can be, else text
// in `code_page`.
std::string GuessedUtf8(std::string_view bytes, int code_page);

}  // namespace scrivo

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "text/code_page.h"

namespace scrivo {

// The texts of one web, as UTF-8, and what will be lost of them in a help file, whose texts are in
// one code page.
class WebText {
 public:
  // `code_page`: of texts of which nobody says what they are. `help_code_page`: of the help file.
  WebText(int code_page, int help_code_page)
      : code_page_(code_page), help_code_page_(help_code_page) {}

  int CodePage() const { return code_page_; }
  int HelpCodePage() const { return help_code_page_; }

  // Takes note of the characters of a text that is handed out, and gives it back. `file` is where
  // it comes from; `line`, counted from 1, where it stands there, or 0.
  std::string HandOut(std::string utf8, const std::string& file, std::size_t line = 0);
  // How many of the characters handed out so far the help file's code page lacks.
  std::size_t Lost() const { return LostIn(help_code_page_); }
  // The same for any code page.
  std::size_t LostIn(int code_page) const;
  // The code page of the script that most of the characters handed out so far belong to.
  int CodePageOfScript() const;
  // The first text with a character that is lost, and its place: "FILE" or "FILE:LINE".
  const std::string& FirstLost() const { return first_lost_; }
  const std::string& PlaceOfFirstLost() const { return place_of_first_lost_; }

 private:
  const int code_page_;
  const int help_code_page_;
  std::unordered_map<char32_t, std::size_t> counts_;  // of the characters past ASCII
  std::string first_lost_, place_of_first_lost_;
};

// Bytes of which nobody says what they are, as UTF-8: they are UTF-8 when they can be, else text
// in `code_page`.
std::string GuessedUtf8(std::string_view bytes, int code_page);

}  // namespace scrivo

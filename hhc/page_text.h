#pragma once

// The text of a page on its way to the word breaker: character references replaced, the page's code
// page turned into the project's.

#include <string_view>
#include <unordered_map>

#include "search/search_alphabet.h"

namespace scrivo {

class PageText {
 public:
  PageText(int page_code_page, int project_code_page, WordCollector* words);

  // Adds a piece of text between two tags, as written.
  void Add(std::string_view content);

  // The same for text in which "&" is no more than that.
  void AddPlain(std::string_view content);

  // Ends the current word.
  void Break() { breaker_.Break(); }

  // Whether the words from here on stand in the title.
  void SetInTitle(bool in_title) { in_title_ = in_title; }

 private:
  void AddBytes(std::string_view bytes);
  void AddCharacter(char32_t character);

  int page_code_page_, project_code_page_;
  bool same_;  // the page's bytes are the project's
  bool in_title_ = false;
  WordBreaker breaker_;
  std::unordered_map<char32_t, std::string> known_;  // characters past ASCII in the project's bytes
};

}  // namespace scrivo

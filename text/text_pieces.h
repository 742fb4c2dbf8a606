#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// Text that arrives in pieces cut anywhere, as UTF-8: a character that was cut in two comes whole
// with the piece that ends it.
class TextPieces {
 public:
  // The code page of the pieces, as in code_page.h.
  explicit TextPieces(int code_page) : code_page_(code_page) {}

  // Takes the next piece and gives the characters that are whole by now.
  std::string Take(std::string_view piece);
  // Gives what is left at the end of the text: the beginning of a character, as U+FFFD.
  std::string TakeRest();

 private:
  // How many bytes of `pending_` are whole characters.
  std::size_t WholeBytes() const;

  int code_page_;
  std::string pending_;
};

}  // namespace scrivo

#include "cli/terminal_stream.h"

#include "text/code_page.h"
#include "text/visible_text.h"

namespace scrivo {

TerminalStream::TerminalStream(std::ostream& target, int code_page, bool live)
    : std::ostream(nullptr), buffer_(target, code_page, live) {
  rdbuf(&buffer_);
}

TerminalStream::Buffer::~Buffer() {
  try {
    Buffer::sync();
  } catch (...) {
    // Memory for the last line is missing, and nobody is left to be told.
  }
}

std::streambuf::int_type TerminalStream::Buffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
  line_ += traits_type::to_char_type(character);
  return line_.back() == '\n' && sync() != 0 ? traits_type::eof() : character;
}

int TerminalStream::Buffer::sync() {
  const std::string visible = VisibleText(line_, live_ ? "\t\n\r" : "\t\n");
  line_.clear();
  target_ << (code_page_ == kUtf8CodePage ? visible : FromUtf8(visible, code_page_)) << std::flush;
  const bool is_good = !target_.fail();
  target_.clear();
  return is_good ? 0 : -1;
}

}  // namespace scrivo

#include "cli/code_page_stream.h"

#include "text/code_page.h"

namespace scrivo {

CodePageStream::CodePageStream(std::ostream& target, int code_page)
    : std::ostream(nullptr), buffer_(target, code_page) {
  rdbuf(&buffer_);
}

std::streambuf::int_type CodePageStream::Buffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
  line_ += traits_type::to_char_type(character);
  return line_.back() == '\n' && sync() != 0 ? traits_type::eof() : character;
}

int CodePageStream::Buffer::sync() {
  target_ << FromUtf8(line_, code_page_) << std::flush;
  line_.clear();
  return target_ ? 0 : -1;
}

}  // namespace scrivo

#include "text/text_pieces.h"

#include <utility>

#include "text/code_page.h"

namespace scrivo {
namespace {

unsigned char ByteAt(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// The bytes of the UTF-8 character that begins with `lead`; 1 for a byte that begins none.
std::size_t Utf8Length(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  return lead >= 0xF0 && lead <= 0xF4 ? 4 : 1;
}

// How much of UTF-8 stands before a character whose end is missing.
std::size_t WholeUtf8(const std::string& bytes) {
  constexpr std::size_t kLongest = 4;
  for (std::size_t back = 1; back < kLongest && back <= bytes.size(); ++back) {
    const std::size_t at = bytes.size() - back;
    const bool continues = (ByteAt(bytes, at) & 0xC0) == 0x80;
    if (!continues) return Utf8Length(ByteAt(bytes, at)) > back ? at : bytes.size();
  }
  return bytes.size();
}

bool IsLeadByte(unsigned char byte, int code_page) {
  if (code_page == 932) return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
  return byte >= 0x81 && byte <= 0xFE;
}

}  // namespace

std::size_t TextPieces::WholeBytes() const {
  if (code_page_ == kUtf8CodePage) return WholeUtf8(pending_);
  if (!IsDoubleByte(code_page_)) return pending_.size();
  // A second byte may look like a first one, so the characters are counted off from the front.
  std::size_t at = 0;
  while (at < pending_.size()) {
    const std::size_t length = IsLeadByte(ByteAt(pending_, at), code_page_) ? 2 : 1;
    if (at + length > pending_.size()) break;
    at += length;
  }
  return at;
}

std::string TextPieces::Take(std::string_view piece) {
  pending_ += piece;
  const std::size_t whole = WholeBytes();
  std::string text = ToUtf8(std::string_view(pending_).substr(0, whole), code_page_);
  pending_.erase(0, whole);
  return text;
}

std::string TextPieces::TakeRest() { return ToUtf8(std::exchange(pending_, ""), code_page_); }

}  // namespace scrivo

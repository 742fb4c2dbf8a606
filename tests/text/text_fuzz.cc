// Any bytes as text of each kind that reaches the programs from outside: names of a Windows disk,
// text of every code page, whole or in pieces, references to characters, names of charsets.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "html/charset.h"
#include "text/code_page.h"
#include "text/fold_case.h"
#include "text/html_entities.h"
#include "text/text_pieces.h"
#include "text/wtf8.h"

namespace scrivo {
namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

void CheckCodePages(std::string_view bytes) {
  for (const int code_page : {874, 932, 936, 949, 950, 1251, 1252, 28592, kUtf8CodePage}) {
    const std::string text = ToUtf8(bytes, code_page);
    Require(IsUtf8(text));
    FromUtf8(text, code_page);
    TextPieces pieces(code_page);
    std::string joined;
    for (std::size_t at = 0; at < bytes.size(); at += 3) joined += pieces.Take(bytes.substr(at, 3));
    joined += pieces.TakeRest();
    const bool is_sound = text.find("\xEF\xBF\xBD") == std::string::npos;
    Require(is_sound ? joined == text : IsUtf8(joined));
  }
}

void CheckNames(std::string_view bytes) {
  std::u16string wide;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    wide += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                  static_cast<unsigned char>(bytes[i + 1]));
  }
  Require(ToWindowsText(FromWindowsText(wide)) == wide);
  // What is no name becomes one, which stays the same from then on.
  const std::u16string once = ToWindowsText(bytes);
  Require(ToWindowsText(FromWindowsText(once)) == once);
  Require(!IsUtf8(bytes) || FromWindowsText(once) == bytes);
  const std::string folded = FoldCase(bytes);
  Require(IsUtf8(folded) == IsUtf8(bytes));
}

void CheckReferences(std::string_view bytes) {
  const std::string text = ToUtf8(bytes, kUtf8CodePage);
  for (const EntityPlace place : {EntityPlace::kText, EntityPlace::kAttribute}) {
    Require(IsUtf8(DecodeEntities(text, place)));
    DecodeEntities(bytes, place);
  }
}

}  // namespace
}  // namespace scrivo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  CheckCodePages(bytes);
  CheckNames(bytes);
  CheckReferences(bytes);
  CodePageFromName(bytes);
  CodePageOfPage(bytes);
  DeclaredCodePage(bytes);
  Require(IsUtf8(DecodeGuessing(bytes, 1251)));
  if (const auto text = Utf16AsUtf8(bytes)) Require(IsUtf8(*text));
  return 0;
}

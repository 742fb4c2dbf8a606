#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace scrivo {

// Text in code pages and in UTF-8.
//
// A code page is named by its Windows number. Known are the single-byte ones 866, 874, 1250 to
// 1258, 10000, 10007, 20866, 21866, 28592 to 28597, 28600 and 28603 to 28606, the double-byte ones
// 932, 936, 949 and 950, and UTF-8 itself. Any other number is treated as 1252, as viewers do with
// a page whose charset they do not know.
inline constexpr int kUtf8CodePage = 65001;

// What a character that cannot be read becomes.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// The code page of a charset name as pages and projects write it ("windows-1251", "ISO-8859-1",
// "utf8", "x-gbk"), in any case, surrounding blanks and quotes ignored. Nothing for a name that is
// unknown.
std::optional<int> CodePageFromName(std::string_view charset);

// The Windows ANSI code page of a language number (LCID) such as 0x409. A language that has no ANSI
// code page, or is unknown, gives 1252.
int CodePageOfLanguage(unsigned lcid);

// True for the code pages in which a byte from 0x80 up may be the first of two.
bool IsDoubleByte(int code_page);

// What becomes of a byte that has no meaning in its code page: U+FFFD, or a character for private
// use that stands for this very byte, for text that goes back into the same code page.
enum class Undefined { kReplaced, kKept };

// `bytes` as UTF-8. Never fails: what has no meaning in the code page becomes U+FFFD, or is kept.
// From 65001 the text comes back as it is, malformed sequences replaced.
std::string ToUtf8(std::string_view bytes, int code_page,
                   Undefined undefined = Undefined::kReplaced);

// UTF-8 text in `code_page`. A character that the code page lacks becomes '?', and so does each
// malformed sequence; `lost`, unless null, is increased by their number. With kKept, characters
// that stand for bytes become these bytes.
std::string FromUtf8(std::string_view utf8, int code_page, std::size_t* lost = nullptr,
                     Undefined undefined = Undefined::kReplaced);

// The byte that a character of kept text stands for; nothing for any other character.
std::optional<char> KeptByte(char32_t character);

// Appends what stands for a byte that has no meaning.
void AppendUndefined(char byte, Undefined undefined, std::string* utf8);

// `utf8` for people: U+FFFD where a character stands for a byte.
std::string WithoutKeptBytes(std::string_view utf8);

// Whether `bytes` is well-formed UTF-8 (plain ASCII is).
bool IsUtf8(std::string_view bytes);

// How many bytes of plain ASCII `bytes` begins with.
std::size_t AsciiPrefix(std::string_view bytes);

// Appends `character` as UTF-8; a surrogate or a number past 0x10FFFF becomes U+FFFD.
void AppendUtf8(char32_t character, std::string* out);

// Takes the first character off `*utf8` and returns it; a malformed sequence gives U+FFFD and takes
// the bytes that were wrong (at least one). `*utf8` must not be empty.
char32_t NextUtf8(std::string_view* utf8);

// UTF-8 as UTF-16, for the structures that store wide text. A character that stands for a byte
// becomes the one with the byte's number.
std::u16string ToUtf16(std::string_view utf8);

}  // namespace scrivo

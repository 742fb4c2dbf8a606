#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivo {

// Languages by their Windows numbers (LCID).

// The English name of a language, with its country ("German (Austria)" for 0xC07), or without one
// when only the language itself is known; "" for a number that is no known language.
std::string_view LanguageName(std::uint32_t lcid);

// The number of a language by its tag, such as "de", "zh-TW" or "pt_BR", in any case. A country
// that is not known for the language is ignored. 0 for an unknown tag.
std::uint32_t LanguageFromTag(std::string_view tag);

// The tag of a language ("zh-tw"), in small letters; "" when it is not known.
std::string_view TagOfLanguage(std::uint32_t lcid);

// The language that most likely goes with text in an ANSI code page. 0x409 for any other number.
std::uint32_t LanguageOfCodePage(int code_page);

// The ANSI code page in which a system of the same script keeps its text: 1251 for KOI8-R, 1250 for
// ISO 8859-2. An ANSI code page and UTF-8 are returned as they are.
int AnsiCodePageFor(int code_page);

// A language as a project names it: "0x404 Chinese (Taiwan)".
std::string LanguageOption(std::uint32_t lcid);

}  // namespace scrivo

#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// Where the text stood. In an attribute "&copy=1" is the next part of a query, not a copyright
// sign: a name without its ";" counts there only when neither a letter, a digit nor "=" follows.
enum class EntityPlace { kText, kAttribute };

// UTF-8 text with its character references replaced: the names of HTML 4 and "apos", decimal and
// hexadecimal numbers. The numbers 128 to 159 mean the characters of windows-1252, as in browsers;
// 0, surrogates and numbers past 0x10FFFF give U+FFFD. What is not a reference stays as it is. The
// input is not checked to be UTF-8; bytes outside references pass through.
std::string DecodeEntities(std::string_view utf8, EntityPlace place = EntityPlace::kText);

// The one reference at the start of `text`, which begins with '&': its character, with `*length`
// set to the bytes it takes, or 0 when there is none. Costs at most a fixed number of steps.
char32_t ReadEntity(std::string_view text, EntityPlace place, std::size_t* length);

}  // namespace scrivo

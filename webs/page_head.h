#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "system/files.h"

namespace scrivo {

// A named meta tag of a page.
struct MetaTag {
  std::string name;  // in small letters
  std::string content;
};

// What a page says of itself: UTF-8, character references replaced, line ends as they stand.
struct PageHead {
  std::string title;
  std::vector<MetaTag> metas;         // those in front of the body
  std::vector<std::string> headings;  // of <h1> to <h3> that have text
};

enum class Headings { kNo, kYes };

// Finds a page's head in its bytes, in linear time for any input. Without headings it looks no
// further than the page's title and the start of its body. `default_code_page` is asked when the
// page itself does not tell what its bytes are in, and they are not ASCII.
PageHead FindPageHead(std::string_view page, Headings headings,
                      const std::function<int()>& default_code_page);

// Nobody wrote a page that goes on past this size.
inline constexpr std::size_t kLongestPage = 64 * 1024 * 1024;

// The bytes of a file, as far as `longest`. Throws Error when reading fails.
std::string ReadWhole(FileReader& reader, std::size_t longest = kLongestPage);

// The same of the file at `path`; nothing when there is none. A file in a folder that may not be
// entered is one that cannot be read: Error.
std::optional<std::string> ReadIfThere(Files& files, const std::string& path, std::size_t longest);

}  // namespace scrivo

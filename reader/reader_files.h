#pragma once

// The files that run in the browser, compiled into the program.

#include <span>
#include <string_view>

namespace scrivo {

struct ReaderFile {
  std::string_view name;  // of the file in this folder
  std::string_view content;
};

// index.html and keywords.html are forms, with {{title}}, {{language}} and {{list}} to be filled
// in; the others are complete.
std::span<const ReaderFile> ReaderFiles();

// The content of the file of that name, which must be there.
std::string_view ReaderFileContent(std::string_view name);

}  // namespace scrivo

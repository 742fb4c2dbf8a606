#pragma once

// What a help file says about itself: the records of #SYSTEM and its default window.

#include <cstdint>
#include <optional>
#include <string>

#include "chm/chm_reader.h"

namespace scrivo {

// Texts are UTF-8; a text that the file does not give is empty.
struct SystemInfo {
  std::string title;
  std::string default_topic;  // as the project has it, with "/"
  std::string compiler;
  std::string window;         // name of the default window
  std::string window_title;   // its title bar
  std::string contents_file;  // archive name, "/contents.hhc", of a file that is there
  std::string index_file;
  std::optional<std::uint32_t> language;  // LCID
  int code_page = 1252;                   // of that language; the help file's texts are in it
};

// Reads it, as far as it is there: nothing when #SYSTEM is missing or cannot be read. A contents or
// index file that is named nowhere is found by its extension.
std::optional<SystemInfo> ReadSystemInfo(ChmReader& reader);

}  // namespace scrivo

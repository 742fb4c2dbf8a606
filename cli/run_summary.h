#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "site/site.h"

namespace scrivo {

// What a web has for a help file.
struct WebCounts {
  std::size_t files = 0;  // of the whole web
  std::size_t index_entries = 0;
};

// Counts the web's files and, `with_index`, the index entries that an index file gets; for these it
// reads the pages, which a web on disk keeps in mind for those who ask next. `on_file` is told how
// many of the files are done. Throws Error (kUserInterrupt) when the program is to end.
WebCounts CountWeb(SiteWeb& web, bool with_index,
                   const std::function<void(std::size_t done, std::size_t all)>& on_file);

// "46 pages", "1 page", "no pages".
std::string Counted(std::size_t number, const std::string& one, const std::string& several);

// A file's size for people: "812 bytes", "1.4 MB".
std::string SizeText(std::uint64_t bytes);

// What is in the help file at `path`, counted there: "46 pages, 190 other files, 1 contents entry,
// no index entries". What a compiler adds of its own does not count. "" when the file cannot be
// read.
std::string WhatIsInside(const std::string& path);

}  // namespace scrivo

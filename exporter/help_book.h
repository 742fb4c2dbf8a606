#pragma once

// A help file as a book: its pages in the order of its contents, with their titles.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "chm/chm_reader.h"
#include "project/sitemap.h"

namespace scrivo {

struct HelpBook {
  std::string title;  // UTF-8; empty when the help file gives none
  std::uint32_t language = 0x409;
  int code_page = 1252;                   // of what names none
  std::string default_topic;              // an address in the help file, or empty
  std::string contents_name, index_name;  // names of these files in the help file, or empty
  // The contents and index files, or where they are missing the binary forms of them. Addresses are
  // UTF-8.
  Sitemap contents, index;
  // Keywords of the binary index that the index file does not have, as those from pages are; they
  // are sorted in behind the others. And the names by which pages ask for others, whole ones.
  Sitemap more_keywords, associations;
  // What readers may see: no folders, no streams of the help system, not the contents and index
  // files, not the page of derived images of a web; in the order in which they are stored.
  struct File {
    const Entry* entry;
    bool is_page;
  };
  std::vector<File> files;
  // What could not be read of all this, a sentence each that names the stream or file.
  std::vector<std::string> problems;
};

// Whether the extension of a file's name says that it is a page.
bool IsPageName(std::string_view name);

// Reads what `reader` says about its book; the files are not read. Valid as long as the reader.
HelpBook OpenHelpBook(ChmReader& reader);

// The bytes of an entry; empty, with a sentence added to `*problems`, when they cannot be read.
std::string BytesOf(ChmReader& reader, const Entry& entry, std::vector<std::string>* problems);

}  // namespace scrivo

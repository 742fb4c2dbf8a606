#pragma once

// Makes a FrontPage web of a help file: its files, a navigation structure from its contents, and
// what the web needs to be compiled again.

#include <cstddef>
#include <filesystem>
#include <string>

#include "chm/chm_reader.h"
#include "unpack/unpack.h"

namespace scrivo {

struct WebMade {
  bool stopped = false;      // the listener has said so, and there is no web
  std::size_t problems = 0;  // files that could not be had; they have been told
  std::string title, default_page;
  bool lacks_contents = false, lacks_index = false;  // they could not be read
  bool declares_wrongly = false;                     // a page in UTF-8 declares another charset
  std::size_t pages = 0;                             // 0: there is no web
  std::size_t contents_entries = 0;
  // Contents entries that lose something; see WebStructure.
  std::size_t anchors = 0, outside = 0, missing = 0, merged = 0;
  // Index entries: each keyword of each page that was written, and those that no page can hold:
  // names with a comma, a semicolon or a character reference; sub-entries; those that refer to
  // another entry; those whose target is not a page of the web. Some that were written lose their
  // place within the page.
  std::size_t keywords = 0;
  std::size_t separators = 0, sub_entries = 0, see_also = 0, without_page = 0, keyword_anchors = 0;
};

// Makes the web in `folder`, which is made when it is not there and must be empty otherwise. With
// `keywords`, the entries of the index become keywords of the pages. The folder gets the whole web,
// but for files that cannot be read, or nothing. Throws std::runtime_error, with a sentence for the
// user, when there is no web. Without a page that can be read there is none either.
WebMade ExportWeb(ChmReader& reader, const std::filesystem::path& folder, bool keywords,
                  UnpackListener& listener);

}  // namespace scrivo

#pragma once

// The contents file (.hhc) and the index file (.hhk) of a help project: HTML whose list items hold
// OBJECT elements with PARAM name/value pairs.
//
// Read as found in the wild: end tags and lists may be missing, list and object ends swapped,
// attributes in any order, quotes inside a value not escaped. Nothing is an error; what makes no
// sense is left out.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "html/bad_tags.h"
#include "text/code_page.h"

namespace scrivo {

// One page that an item leads to.
struct SitemapTarget {
  std::string title;  // UTF-8; empty: the page's own title serves
  std::string local;  // address as written, character references replaced, bytes not converted
  std::string url;    // the "URL" property that followed, UTF-8
  std::string frame;  // "FrameName", UTF-8
};

struct SitemapItem {
  int level = 0;     // 0 at the top; at most one more than the item before it
  std::string name;  // UTF-8: the caption, or the keyword
  std::vector<SitemapTarget> targets;
  std::string see_also;  // UTF-8; another keyword
  std::string merge;     // help file and contents file to include at run time
  bool is_new = false;
  std::size_t line = 1;  // where the item starts
};

// The "text/site properties" object.
struct SitemapProperties {
  bool present = false;
  bool folder_images = false;  // ImageType is Folder
  std::string image_list, font, frame_name, window_name;
  std::string background, foreground, window_styles, ex_window_styles;  // numbers as written
};

struct Sitemap {
  int code_page = 0;  // of the bytes
  SitemapProperties properties;
  std::vector<SitemapItem> items;
  std::vector<BadTag> bad_tags;
};

// Reads a sitemap. `code_page` is the project's; a byte order mark, a charset in a META element, or
// being well-formed UTF-8 overrides it. One in UTF-16 is read as the UTF-8 that Utf16AsUtf8 makes
// of it, in which the offsets of its bad tags count. In a single-byte code page a reference to a
// character from 128 to 255 means that byte of the code page, as the usual editors of these files
// write it. `undefined`: what becomes of names' bytes that have no meaning in the project's code
// page.
Sitemap ReadSitemap(std::string_view bytes, int code_page,
                    Undefined undefined = Undefined::kReplaced);

}  // namespace scrivo

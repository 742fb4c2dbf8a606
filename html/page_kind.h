#pragma once

#include <string_view>

namespace scrivo {

// What is a page. Only the extension of a file's name counts, in any case.
enum class PageKind {
  kNone,
  kPlain,    // .htm, .html: the pages of a help file
  kVariant,  // .xhtml, .xhtm, .shtml, .shtm, .stm: read as pages where a link or project names them
  kByServer,  // .asp, .aspx, .php: have a title too, but only a web server makes a page of them
};

PageKind KindOfPage(std::string_view file_name);
// The same for an extension without its point.
PageKind KindOfExtension(std::string_view extension);

}  // namespace scrivo

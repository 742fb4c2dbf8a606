#include "html/page_kind.h"

#include <cstddef>

#include "text/ascii_text.h"

namespace scrivo {

PageKind KindOfExtension(std::string_view extension) {
  constexpr struct {
    std::string_view extension;
    PageKind kind;
  } kKinds[] = {
      {"htm", PageKind::kPlain},    {"html", PageKind::kPlain},    {"xhtml", PageKind::kVariant},
      {"xhtm", PageKind::kVariant}, {"shtml", PageKind::kVariant}, {"shtm", PageKind::kVariant},
      {"stm", PageKind::kVariant},  {"asp", PageKind::kByServer},  {"aspx", PageKind::kByServer},
      {"php", PageKind::kByServer},
  };
  for (const auto& known : kKinds) {
    if (EqualsIgnoringCase(extension, known.extension)) return known.kind;
  }
  return PageKind::kNone;
}

PageKind KindOfPage(std::string_view file_name) {
  const std::size_t point = file_name.rfind('.');
  return point == std::string_view::npos ? PageKind::kNone
                                         : KindOfExtension(file_name.substr(point + 1));
}

}  // namespace scrivo

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace scrivo {

// An address that a style sheet names: url(...) or @import "...".
struct CssLink {
  std::string_view address;  // points into the style sheet, without quotes
  std::size_t offset = 0;
};

// All addresses of a style sheet, in order; comments are passed over. Linear in the sheet for any
// input.
std::vector<CssLink> FindCssLinks(std::string_view css);

}  // namespace scrivo

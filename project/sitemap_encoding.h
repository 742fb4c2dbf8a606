#pragma once

// Sitemaps as the viewers of help files read them: in the code page of the project's language,
// whatever they were written in.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace scrivo {

// UTF-8 text in `code_page`. A character that the code page lacks becomes a numeric reference or,
// where sitemaps take such a reference for a byte of the code page, "?". `*lost` is increased by
// the number of both. `undefined`: whether characters that stand for bytes become these.
std::string EncodedWithReferences(std::string_view utf8, int code_page, std::size_t* lost,
                                  Undefined undefined = Undefined::kReplaced);

// A sitemap in UTF-8 or UTF-16 turned into `code_page`, the project's, with the charset that it
// declares corrected. Nothing when it is to stay as it is: it holds ASCII only, or it is in a code
// page of its own, which the viewer's system may happen to share. `*lost` as above.
std::optional<std::string> SitemapForViewers(std::string_view bytes, int code_page,
                                             std::size_t* lost);

}  // namespace scrivo

#pragma once

// The navigation that FrontPage generates into the pages that it saves.

#include <optional>
#include <string>
#include <string_view>

namespace scrivo {

// A page without its bars; nothing when it has none that can be told for certain. All other bytes
// stay as they are. The bars are
// - the shared borders: the tables whose tags stand behind "msnavigation" comments, but for the
//   page's own content, which stands in the middle one; all of them stay when the comments do not
//   come in the order in which they are written, or are missing at the end of a page that is whole;
// - the navigation components: from <!--webbot bot="Navigation" ... startspan --> to the comment
//   with "endspan". A banner, which is such a component too, is the page's heading and stays where
//   it is no part of a border.
// Linear in the page for any input.
std::optional<std::string> WithoutBars(std::string_view page);

}  // namespace scrivo

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "webs/contents_tree.h"
#include "webs/web_listing.h"
#include "webs/web_text.h"
#include "webs/welcome_names.h"

namespace scrivo {

// A key whose byte order puts texts as a person would: in any case, a run of digits by its value
// ("Step 2" before "Step 10").
std::string PersonOrderKey(std::string_view utf8);

// The contents of a web whose author arranged none: each folder that holds pages, itself or
// deeper, is a heading with the folder's welcome page (index.htm, default.htm, …) as its target and
// that page's title as its label, or without a target under the folder's name. Pages and headings
// stand together by label in a person's order; the home page comes first. `title` gives a page's
// title, and is asked once for each page.
ContentsTree BuildFolderTree(const WebListing& listing, const WelcomeNames& welcome,
                             const std::function<std::string(WebListing::Index file)>& title,
                             WebText* web_text);

}  // namespace scrivo

#pragma once

// The index entries of a page as its keywords.

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace scrivo {

// Whether a keyword can stand in a page so that the index of a web gets it back as it is: a comma
// or a semicolon would part it, and a character reference in it would be replaced.
bool CanBeKeyword(const std::string& name);

// A page whose keywords are exactly `keywords`, of those for which CanBeKeyword holds: the one meta
// tag with that name is put in, replaced, or stays where it says so already; more of them, which
// would add to it, go. All other bytes stay. Nothing when the page is in UTF-16, whose bytes are
// not touched, or so broken that the tag would not be read. `code_page` is that of pages that do
// not tell theirs.
std::optional<std::string> WithKeywords(std::string_view page,
                                        const std::set<std::string>& keywords, int code_page);

// The title of a page's TITLE element in UTF-8; empty when it has none.
std::string TitleOfPage(std::string_view page, int code_page);

}  // namespace scrivo

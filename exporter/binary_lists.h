#pragma once

// The contents and the index in their binary form, which a help file may have beside its .hhc and
// .hhk files, or in place of them: #TOCIDX and the keyword trees, whose entries are numbers of
// topics. #TOPICS, #URLTBL, #URLSTR and #STRINGS have the titles and addresses of those.

#include <cstdint>
#include <string>
#include <vector>

#include "project/sitemap.h"

namespace scrivo {

// The streams that tell about topics, whole; any may be empty.
struct TopicBytes {
  std::vector<std::uint8_t> topics, url_table, url_strings, strings;
};

// The contents in #TOCIDX. Addresses are UTF-8 and start from the root of the help file. An entry
// that shows a page has no name but its target's title: the page's own title is its name. Whatever
// the bytes hold is no error: what leads nowhere is left out.
Sitemap ReadBinaryContents(const std::vector<std::uint8_t>& contents, const TopicBytes& topics,
                           int code_page);

// The keywords in a "BTree" stream, in its order and with its levels. As ReadBinaryContents.
Sitemap ReadBinaryIndex(const std::vector<std::uint8_t>& tree, const TopicBytes& topics,
                        int code_page);

// The names of `index` with those above them, as keyword trees and links have them: "cats, tails".
std::vector<std::string> JoinedNames(const Sitemap& index);

}  // namespace scrivo

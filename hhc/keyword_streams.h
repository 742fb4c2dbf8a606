#pragma once

// $WWKeywordLinks and $WWAssociativeLinks: an index in binary form. Four streams.
//
// BTree: a header of 76 bytes, then blocks of 0x800: listing blocks with the keywords in order,
// then the blocks of each index level, the root last. Data: 13 bytes a keyword, always the same.
// Map: for each listing block the number of its first keyword. Property: 8 DWORDs, or a single 0
// when there are no keywords and no other stream.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "hhc/keyword_tree.h"

namespace scrivo {

struct KeywordStreams {
  std::vector<std::uint8_t> btree, data, map, property;  // the first three empty: no keywords
};

// A keyword that leads to more pages than its block can hold.
struct TruncatedKeyword {
  std::string text;
  std::size_t left_out = 0;
};

KeywordStreams WriteKeywords(const std::vector<Keyword>& keywords, std::uint32_t language,
                             std::vector<TruncatedKeyword>* truncated);

}  // namespace scrivo

#pragma once

// $FIftiMain: the index of the full-text search, and $OBJINST, the table that says how its words
// were made.
//
// $FIftiMain is a header of 0x400 bytes; then for each leaf the posting lists of its words,
// directly followed by the leaf; then the index nodes, the root last. Nodes have 0x1000 bytes.
// Leaf: DWORD next leaf, WORD 0, WORD free bytes, entries of BYTE suffix length + 1, BYTE
// characters shared with the word before, suffix, BYTE 1 for a title word, varint topics, DWORD
// list offset, WORD 0, varint list length. Index node: WORD free bytes, entries of BYTE, BYTE,
// suffix as before, DWORD child, WORD 0, where the word is the last one below the child.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "bytes/byte_writer.h"
#include "bytes/spilled_bytes.h"
#include "search/postings.h"

namespace scrivo {

enum class SearchIndexStatus {
  kOk,
  kTooLarge,  // its offsets have 32 bits
  kNoSpace,   // the postings' SpillSpace or that of `out` failed
  kStopped,   // `stop_wanted` has said so; what is in `out` is worthless
};

// Puts the index to `*out`, which is empty; nothing when there is not a single word. Finishes the
// postings and takes their words. `stop_wanted`, where there is one, is asked before each word
// whether to give the index up.
SearchIndexStatus WriteSearchIndex(Postings* postings, std::uint32_t language, SpilledBytes* out,
                                   const std::function<bool()>& stop_wanted = {});

// `stop_words`: words in the project's code page that are not in the index.
std::vector<std::uint8_t> WriteSearchObject(std::uint32_t language,
                                            const std::vector<std::string>& stop_words);

}  // namespace scrivo

#pragma once

// The second stage of a compile: files go into the help file, and pages bring in what they link to.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bytes/spilled_bytes.h"
#include "chm/container_writer.h"
#include "hhc/collect_sources.h"
#include "hhc/compile_context.h"
#include "hhc/keyword_tree.h"
#include "hhc/topic_table.h"
#include "search/postings.h"

namespace scrivo {

// What the pages give to the internal streams.
struct TopicFacts {
  explicit TopicFacts(const CompileContext& context);

  TopicTable topics;
  std::unordered_map<std::uint32_t, std::string> titles;        // UTF-8, of topics that have one
  std::vector<std::pair<std::uint32_t, std::string>> keywords;  // topic, keyword in UTF-8
  KeywordTree associations;
  TemporaryFile words_file;  // words that memory does not hold
  SpillSpace words_space;
  Postings postings;
};

// Stores the files of `sources`, and those that their pages link to, in `writer`. Ends early when
// the writer fails; its status tells why. Contents that are to be made of headings are made, and
// become the contents of `sources`.
void CompileFiles(CompileContext* context, ProjectSources* sources, ContainerWriter* writer,
                  TopicFacts* facts);

}  // namespace scrivo

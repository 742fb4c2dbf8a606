#pragma once

// The first stage of a compile: what a project names.

#include <cstddef>
#include <string>
#include <vector>

#include "hhc/compile_context.h"
#include "hhc/source_list.h"
#include "project/sitemap.h"

namespace scrivo {

struct ProjectSources {
  SourceList list;
  std::size_t contents = SourceList::kNone, index = SourceList::kNone;  // in `list`
  Sitemap contents_map, index_map;
  std::vector<ProjectLine> listed;  // the lines of [FILES], with those of included files
  // What opens where the project names no default topic: the first page that it lists, or kNone.
  std::size_t first_topic = SourceList::kNone;
  bool sitemaps_are_topics = false;  // a window names them
  // Contents are to be made of the pages' headings, under this name (as in the project, or empty).
  bool makes_contents = false;
  std::string contents_name;
  std::vector<ProjectAlias> aliases;  // with those of included files, as are the map's entries
  std::vector<ProjectMapEntry> map;
  std::vector<std::string> stop_words;  // folded
};

// Lists the files that the project, its contents and its index name, in the order of compilation,
// and reports what is odd about the project.
ProjectSources CollectSources(CompileContext* context);

}  // namespace scrivo

#pragma once

#include <string>

#include "site/site.h"
#include "writers/compile_job.h"

namespace scrivo {

// The list of the keywords of `files`, in their order, neither sorted nor merged; "" when there are
// none. A file whose keywords cannot be read has none. `run` runs the other calls of a file.
std::string KeywordList(const SiteFiles& files, const Locator& locate,
                        const StatementRunner& run = RunDirectly);

// The index file (.hhk) around such a list, without its last line end.
std::string IndexFile(const std::string& list);

// How many entries the keywords of one page make.
std::size_t CountKeywords(SiteFile& file);

}  // namespace scrivo

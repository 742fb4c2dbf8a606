#pragma once

#include <string>

#include "site/site.h"
#include "writers/compile_job.h"

namespace scrivo {

// The sitemap files that a project names, by their full paths.
struct SitemapPaths {
  std::string contents;
  std::string index;  // written only when the job has an index
};

// The beginning of a project file (.hhp): its options, its window, and the line "[FILES]".
std::string ProjectSettings(const CompileJob& job, const SitemapPaths& paths, const Locator& locate,
                            const StatementRunner& run = RunDirectly);

// The part behind it: the locations of the pages among `files`, except for the job's own output.
std::string ProjectPages(const CompileJob& job, const SiteFiles& files, const Locator& locate,
                         const StatementRunner& run = RunDirectly);

// The part behind that, the last one: the full path of the derived-image page, without a line end.
std::string ProjectDerivedPage(const std::string& path);

// Whether a file of the web is listed in a project as a page: .htm or .html, in any case.
bool IsProjectPage(SiteFile& file);

}  // namespace scrivo

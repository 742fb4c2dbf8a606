#pragma once

#include <memory>
#include <string>

#include "site/site.h"
#include "writers/compile_job.h"

namespace scrivo {

// The list of the children of `root` and all that is below them; the root itself is not written.
// Linear in the nodes, at any depth. Throws what a node throws.
std::string ContentsList(const std::shared_ptr<SiteNode>& root, const Locator& locate);

// The contents file (.hhc) around such a list, without its last line end.
std::string ContentsFile(const std::string& list);

}  // namespace scrivo

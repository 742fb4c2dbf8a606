#include "generator/site/site.h"

namespace scrivo {
namespace {

/// What is still to visit, next at the back; a stack of our own, so that no depth of a web
/// overflows the program's.
template <typename Items>
void PushReversed(const Items& items, Items* pending) {
  pending->insert(pending->end(), items.rbegin(), items.rend());
}

}  // namespace

SiteFiles AllFiles(SiteWeb& web) {
  SiteFiles files;
  SiteFolders pending{web.BaseFolder()};
  while (!pending.empty()) {
    const std::shared_ptr<SiteFolder> folder = std::move(pending.back());
    pending.pop_back();
    const SiteFiles own = folder->Files();
    files.insert(files.end(), own.begin(), own.end());
    PushReversed(folder->Folders(), &pending);
  }
  return files;
}

SiteNodes AllNodes(SiteWeb& web) {
  SiteNodes nodes;
  SiteNodes pending;
  PushReversed(web.NavigationRoot()->Children(), &pending);
  while (!pending.empty()) {
    nodes.push_back(std::move(pending.back()));
    pending.pop_back();
    const SiteNodes children = nodes.back()->Children();
    if (!children.empty()) PushReversed(children, &pending);
  }
  return nodes;
}

}  // namespace scrivo

#include "site/site.h"

namespace scrivo {
namespace {

// What is still to visit, next at the back; a stack of our own, so that no depth of a web
// overflows the program's.
template <typename Items>
void PushReversed(const Items& items, Items* pending) {
  pending->insert(pending->end(), items.rbegin(), items.rend());
}

template <typename Items>
typename Items::value_type PopBack(Items* pending) {
  typename Items::value_type item = std::move(pending->back());
  pending->pop_back();
  return item;
}

}  // namespace

void RunDirectly(const std::function<void()>& statement) { statement(); }

SiteFiles AllFiles(SiteWeb& web, const StatementRunner& run) {
  SiteFiles files;
  SiteFolders pending;
  run([&] { pending.push_back(web.BaseFolder()); });
  while (!pending.empty()) {
    const std::shared_ptr<SiteFolder> folder = PopBack(&pending);
    run([&] {
      const SiteFiles own = folder->Files();
      files.insert(files.end(), own.begin(), own.end());
    });
    run([&] { PushReversed(folder->Folders(), &pending); });
  }
  return files;
}

SiteNodes AllNodes(SiteWeb& web, const StatementRunner& run) {
  SiteNodes nodes;
  SiteNodes pending;
  run([&] {
    const std::shared_ptr<SiteNode> root = web.NavigationRoot();
    if (root) PushReversed(root->Children(), &pending);
  });
  while (!pending.empty()) {
    const std::shared_ptr<SiteNode> node = PopBack(&pending);
    nodes.push_back(node);
    run([&] { PushReversed(node->Children(), &pending); });
  }
  return nodes;
}

}  // namespace scrivo

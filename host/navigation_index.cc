#include "host/navigation_index.h"

namespace scrivo::host {

NavigationIndex::NavigationIndex(const std::shared_ptr<SiteNode>& root) {
  places_.push_back({root, kNone, 0, {}});
  if (!root) return;
  // A list of what is left to do instead of recursion: a tree may be a thousand levels deep.
  struct Pending {
    std::size_t parent;
    SiteNodes children;
    std::size_t next = 0;
  };
  found_[root.get()] = kRoot;
  std::vector<Pending> pending;
  pending.push_back({kRoot, root->Children()});
  while (!pending.empty()) {
    Pending& level = pending.back();
    if (level.next == level.children.size()) {
      pending.pop_back();
      continue;
    }
    const std::size_t position = level.next++;
    const std::shared_ptr<SiteNode> node = level.children[position];
    const std::size_t place = places_.size();
    places_[level.parent].children.push_back(place);
    places_.push_back({node, level.parent, position, {}});
    found_[node.get()] = place;
    pending.push_back({place, node->Children()});
  }
}

std::size_t NavigationIndex::Find(const SiteNode* node) const {
  const auto found = found_.find(node);
  return found == found_.end() ? kNone : found->second;
}

std::size_t NavigationIndex::Sibling(std::size_t place, int distance) const {
  const Place& here = places_[place];
  if (here.parent == kNone) return kNone;
  const std::vector<std::size_t>& siblings = places_[here.parent].children;
  const auto wanted = static_cast<std::ptrdiff_t>(here.position) + distance;
  if (wanted < 0 || wanted >= static_cast<std::ptrdiff_t>(siblings.size())) return kNone;
  return siblings[static_cast<std::size_t>(wanted)];
}

}  // namespace scrivo::host

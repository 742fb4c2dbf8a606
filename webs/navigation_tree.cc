#include "webs/navigation_tree.h"

#include <cstdint>
#include <unordered_map>

#include "webs/web_text.h"

namespace scrivo {
namespace {

using Place = std::uint32_t;  // of a node in the file
constexpr Place kTop = ~Place{0};

class NavigationBuilder {
 public:
  NavigationBuilder(std::vector<StructureNode> nodes, const WebListing& listing, int code_page,
                    const std::string& file, WebReport& report)
      : nodes_(std::move(nodes)),
        listing_(listing),
        code_page_(code_page),
        file_(file),
        report_(report) {}

  ContentsTree Build() {
    FindParents();
    BreakCycles();
    CountChildren();
    return Lay();
  }

 private:
  void Report(const StructureNode& node, std::string reason) {
    report_.Problem({file_, node.line, std::move(reason)});
  }

  static std::string Named(const StructureNode& node) { return "the entry \"" + node.label + "\""; }

  void FindParents() {
    std::unordered_map<std::uint64_t, Place> by_id;
    by_id.reserve(nodes_.size());
    for (Place place = 0; place < nodes_.size(); ++place) {
      const StructureNode& node = nodes_[place];
      const auto [first, is_new] = by_id.emplace(node.id, place);
      if (!is_new) {
        Report(node, "id " + std::to_string(node.id) + " is already used on line " +
                         std::to_string(nodes_[first->second].line) + "; " + Named(node) +
                         " is kept, but without children");
      }
    }
    parents_.resize(nodes_.size(), kTop);
    for (Place place = 0; place < nodes_.size(); ++place) {
      const StructureNode& node = nodes_[place];
      if (node.parent == 0) continue;
      const auto parent = by_id.find(node.parent);
      if (parent != by_id.end()) {
        parents_[place] = parent->second;
      } else if (!node.IsLinkBar()) {
        Report(node, Named(node) + " has parent " + std::to_string(node.parent) +
                         ", which does not exist; moved to the top level");
      }
    }
  }

  // Follows each node's parents up to one that was followed before; on the way of this same node,
  // that one closes a circle.
  void BreakCycles() {
    std::vector<Place> followed_from(nodes_.size(), kTop);
    for (Place start = 0; start < nodes_.size(); ++start) {
      Place place = start;
      while (place != kTop && followed_from[place] == kTop) {
        followed_from[place] = start;
        place = parents_[place];
      }
      if (place != kTop && followed_from[place] == start) BreakCycle(place);
    }
  }

  // Raises the first node of the circle that is not a link bar: below one it would be lost.
  void BreakCycle(Place member) {
    Place raised = kTop;
    Place place = member;
    do {
      if (!nodes_[place].IsLinkBar() && (raised == kTop || place < raised)) raised = place;
      place = parents_[place];
    } while (place != member);
    if (raised == kTop) raised = member;
    parents_[raised] = kTop;
    Report(nodes_[raised], Named(nodes_[raised]) + " is below itself; moved to the top level");
  }

  // Sorts the nodes by parent, keeping the file's order: the children of slot s stand in
  // children_ from starts_[s] up to starts_[s + 1].
  void CountChildren() {
    starts_.assign(nodes_.size() + 3, 0);
    for (const Place parent : parents_) ++starts_[Slot(parent) + 2];
    for (std::size_t i = 2; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    children_.resize(nodes_.size());
    for (Place place = 0; place < nodes_.size(); ++place) {
      children_[starts_[Slot(parents_[place]) + 1]++] = place;
    }
  }

  static std::size_t Slot(Place parent) {
    return parent == kTop ? 0 : static_cast<std::size_t>(parent) + 1;
  }

  // Writes the tree level by level, so that children stand together.
  ContentsTree Lay() {
    ContentsTree tree;
    tree.nodes.reserve(nodes_.size() + 1);
    std::vector<Place> places{kTop};
    places.reserve(nodes_.size() + 1);
    for (std::size_t i = 0; i < places.size(); ++i) {
      const std::size_t slot = Slot(places[i]);
      tree.nodes[i].first_child = static_cast<std::uint32_t>(tree.nodes.size());
      for (Place c = starts_[slot]; c < starts_[slot + 1]; ++c) {
        StructureNode& node = nodes_[children_[c]];
        if (node.IsLinkBar() || IsLeftOut(children_[c])) continue;
        tree.nodes.push_back(MakeNode(&node));
        places.push_back(children_[c]);
      }
      tree.nodes[i].child_count =
          static_cast<std::uint32_t>(tree.nodes.size()) - tree.nodes[i].first_child;
    }
    return tree;
  }

  // An entry for a page that is left out goes with it, unless others hang below it.
  bool IsLeftOut(Place place) const {
    const StructureNode& node = nodes_[place];
    const std::size_t slot = Slot(place);
    return !node.leaves_web && starts_[slot] == starts_[slot + 1] && listing_.LeavesOut(node.page);
  }

  ContentsNode MakeNode(StructureNode* node) {
    ContentsNode made;
    if (!node->leaves_web && !node->page.empty()) {
      made.file = listing_.Find(node->page);
      if (made.file == WebListing::kNone && !listing_.LeavesOut(node->page)) {
        Report(*node, "the page \"" + node->page + "\" of " + Named(*node) + " does not exist");
      }
    }
    if (made.file == WebListing::kNone && !listing_.LeavesOut(node->page)) {
      made.page = std::move(node->page);
    }
    made.label = GuessedUtf8(node->label, code_page_);
    made.line = static_cast<std::uint32_t>(node->line);
    return made;
  }

  std::vector<StructureNode> nodes_;
  const WebListing& listing_;
  const int code_page_;
  const std::string& file_;
  WebReport& report_;
  std::vector<Place> parents_;
  std::vector<Place> starts_;
  std::vector<Place> children_;
};

}  // namespace

ContentsTree BuildNavigationTree(std::vector<StructureNode> nodes, const WebListing& listing,
                                 int code_page, const std::string& file, WebReport& report) {
  return NavigationBuilder(std::move(nodes), listing, code_page, file, report).Build();
}

}  // namespace scrivo

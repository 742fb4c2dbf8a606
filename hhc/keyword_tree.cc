#include "hhc/keyword_tree.h"

#include <algorithm>

#include "hhc/keyword_order.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::string_view kJoint = ", ";

// A keyword must fit in a block of the index beside its fixed fields.
constexpr std::size_t kLongestKeyword = 488;  // UTF-16 units

}  // namespace

void KeywordTree::Add(int level, std::string_view name, const std::vector<std::uint32_t>& topics,
                      std::string_view see_also) {
  const std::size_t depth = std::min(static_cast<std::size_t>(std::max(0, level)), open_.size());
  open_.resize(depth);
  const std::size_t parent = depth == 0 ? kTop : open_.back();
  bool added = false;
  const std::size_t number = FindOrAdd(parent, name, &added);
  open_.push_back(number);
  Node& node = nodes_[number];
  node.topics.insert(node.topics.end(), topics.begin(), topics.end());
  node.targets += topics.size();
  if (!see_also.empty() && ToUtf16(see_also).size() <= kLongestKeyword) {
    if (node.see_also.empty()) node.see_also = see_also;
    ++node.targets;
  }
}

void KeywordTree::AddJoined(std::string_view keyword, std::uint32_t topic) {
  std::size_t parent = kTop;
  while (true) {
    const std::size_t end = keyword.find(kJoint);
    const bool last = end == std::string_view::npos;
    bool added = false;
    parent = FindOrAdd(parent, keyword.substr(0, end), &added);
    std::vector<std::uint32_t>& topics = nodes_[parent].topics;
    if ((added || last) && std::find(topics.begin(), topics.end(), topic) == topics.end()) {
      topics.push_back(topic);
      ++nodes_[parent].targets;
    }
    if (last) return;
    keyword.remove_prefix(end + kJoint.size());
  }
}

std::size_t KeywordTree::FindOrAdd(std::size_t parent, std::string_view name, bool* added) {
  std::string key = std::to_string(parent);
  key += ' ';
  key += name;
  const auto [found, is_new] = by_name_.try_emplace(std::move(key), nodes_.size());
  *added = is_new;
  if (is_new) {
    std::vector<std::size_t>& siblings = parent == kTop ? top_ : nodes_[parent].children;
    siblings.push_back(nodes_.size());
    nodes_.push_back({std::string(name), parent, {}, {}, {}, 0});
  }
  return found->second;
}

std::vector<std::size_t> KeywordTree::SortedChildren(const std::vector<std::size_t>& children,
                                                     const std::vector<std::string>& keys) const {
  std::vector<std::size_t> sorted = children;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
  return sorted;
}

std::vector<Keyword> KeywordTree::Sorted(std::size_t* too_long) const {
  std::vector<std::string> keys(nodes_.size());
  for (std::size_t i = 0; i < nodes_.size(); ++i) keys[i] = KeywordSortKey(nodes_[i].name);

  struct Open {
    std::size_t node;
    int level;
    std::string prefix;  // the joined text of the levels above, with the joint
    std::size_t prefix_units;
  };
  std::vector<Keyword> sorted;
  std::vector<Open> stack;
  const auto push = [&](const std::vector<std::size_t>& children, int level,
                        const std::string& prefix, std::size_t units) {
    const std::vector<std::size_t> order = SortedChildren(children, keys);
    for (auto i = order.rbegin(); i != order.rend(); ++i) {
      stack.push_back({*i, level, prefix, units});
    }
  };
  push(top_, 0, "", 0);
  while (!stack.empty()) {
    const Open open = std::move(stack.back());
    stack.pop_back();
    const Node& node = nodes_[open.node];
    Keyword keyword;
    keyword.text = open.prefix + node.name;
    const std::size_t units = open.prefix_units + ToUtf16(node.name).size();
    if (units > kLongestKeyword) {
      ++*too_long;
      continue;
    }
    keyword.level = open.level;
    keyword.last_component = open.prefix_units;
    keyword.topics = node.topics;
    keyword.see_also = node.see_also;
    keyword.targets = node.targets;
    push(node.children, open.level + 1, keyword.text + std::string(kJoint), units + kJoint.size());
    sorted.push_back(std::move(keyword));
  }
  return sorted;
}

}  // namespace scrivo

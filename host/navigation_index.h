#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "site/site.h"

namespace scrivo::host {

// A web's navigation tree with the ways up and to the sides, which the site model does not have.
// It stays what it was when it was made.
class NavigationIndex {
 public:
  static constexpr std::size_t kRoot = 0;
  static constexpr std::size_t kNone = SIZE_MAX;

  struct Place {
    std::shared_ptr<SiteNode> node;
    std::size_t parent = kNone;  // kNone for the root
    std::size_t position = 0;    // among its siblings, from 0
    std::vector<std::size_t> children;
  };

  // Reads the tree below `root`, which may be null: then there is only a root without a node.
  explicit NavigationIndex(const std::shared_ptr<SiteNode>& root);

  // The root and then every node before its children.
  const std::vector<Place>& Places() const { return places_; }
  const Place& At(std::size_t place) const { return places_[place]; }
  // Where this very node stands; kNone when it is not in the tree.
  std::size_t Find(const SiteNode* node) const;
  // The sibling so many places on (-1: the one before); kNone when there is none.
  std::size_t Sibling(std::size_t place, int distance) const;

 private:
  std::vector<Place> places_;
  std::map<const SiteNode*, std::size_t> found_;
};

}  // namespace scrivo::host

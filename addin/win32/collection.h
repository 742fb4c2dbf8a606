#pragma once

#include <memory>
#include <vector>

#include "com/win32/dispatch_call.h"

namespace scrivo {

// The objects of one of the host's collections, in its order, read out before anything is done
// with them. No collection has none. An item that is not an object raises Error.
std::vector<LateBound> ItemsOf(const LateBound& collection);

// A collection's item by a key of its own: a name, a caption or a position.
Variant ItemOf(const LateBound& collection, const Variant& key);

// ItemsOf, each as a `Wrapper` behind `Item`.
template <typename Wrapper, typename Item>
std::vector<std::shared_ptr<Item>> WrappedItems(const LateBound& collection) {
  std::vector<std::shared_ptr<Item>> items;
  for (LateBound& object : ItemsOf(collection)) {
    items.push_back(std::make_shared<Wrapper>(std::move(object)));
  }
  return items;
}

}  // namespace scrivo

#pragma once

#include <memory>

#include "system/error.h"

namespace scrivo {

// The object that the host was asked for. Raises Error (kObjectNotSet) where it has given none, as
// some hosts do instead of failing.
template <typename Object>
Object& Needed(const std::shared_ptr<Object>& object) {
  if (!object) throw Error(kObjectNotSet, "Scrivo.Connect", "The host has given no object");
  return *object;
}

}  // namespace scrivo

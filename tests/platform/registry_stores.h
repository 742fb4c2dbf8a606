#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "system/registry_store.h"

namespace scrivo {

// A kind of registry that the suite of CRegistry runs against.
struct RegistryStoreKind {
  std::string name;
  std::function<std::shared_ptr<RegistryStore>()> make;
  // How many keys are open in it; empty where nobody can tell.
  std::function<std::size_t(RegistryStore&)> open_keys;
  // The longest key path that it takes in one call.
  std::size_t longest_path = 10'000;
};

inline void PrintTo(const RegistryStoreKind& kind, std::ostream* out) { *out << kind.name; }

// All kinds that run on this system: one in memory, and its own if it has one.
std::vector<RegistryStoreKind> RegistryStoreKinds();

// Those of them that tell their open keys.
std::vector<RegistryStoreKind> CountingRegistryStoreKinds();

// The name of a kind in the names of its tests.
inline std::string KindName(const testing::TestParamInfo<RegistryStoreKind>& info) {
  return info.param.name;
}

// The system's own registry: one kind, or none.
std::vector<RegistryStoreKind> OwnRegistryStoreKind();

}  // namespace scrivo

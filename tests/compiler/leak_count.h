#pragma once

#include <memory>
#include <string>

#include "system/registry_store.h"

namespace scrivo {

// How many handles or descriptors this process has open.
long OpenHandles();

// Its own memory, in bytes.
long long UsedMemory();

// How much more memory a process may have without a leak after so many calls, in bytes.
long long MemorySlack(int calls);

// How many children the tests start in a row, unless they are to take long.
extern const int kFewChildren;

// How many of so many children the system may fail to start for reasons of its own: an emulated
// Windows loses one now and then, one in ten thousand or so; any other none.
int ChildrenThatMayNotStart(int children);

// How many handles of the system an open key of the registry takes.
extern const long kHandlesOfAKey;

// The system's registry, or what stands for it, kept in `folder`.
std::shared_ptr<RegistryStore> RegistryIn(const std::string& folder);

}  // namespace scrivo

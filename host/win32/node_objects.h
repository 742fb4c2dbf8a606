#pragma once

#include <memory>
#include <vector>

#include "com/win32/variant.h"
#include "host/session.h"

namespace scrivo::host {

class HostWorld;

// NavigationNode and NavigationNodes of an open web, as its tree was when they were asked for.

// No object for NavigationIndex::kNone.
Variant NodeOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                   const std::shared_ptr<const NavigationIndex>& navigation, std::size_t place);
Variant NodesOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                const std::shared_ptr<const NavigationIndex>& navigation,
                std::vector<std::size_t> places);

}  // namespace scrivo::host

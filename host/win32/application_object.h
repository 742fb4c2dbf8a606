#pragma once

#include <memory>

#include "com/win32/variant.h"

namespace scrivo::host {

class HostWorld;

// The Application object of a world.
Variant ApplicationOf(const std::shared_ptr<HostWorld>& world);

}  // namespace scrivo::host

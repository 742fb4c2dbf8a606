#pragma once

#include <memory>

#include "com/win32/variant.h"

namespace scrivo::host {

class HostWorld;
struct Addin;

// COMAddIns; its numbers start at 1.
Variant ComAddInsOf(const std::shared_ptr<HostWorld>& world);
// COMAddIn, also what an add-in is told to be itself.
Variant ComAddInOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Addin>& addin);

}  // namespace scrivo::host

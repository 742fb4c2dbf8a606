#pragma once

#include <memory>

#include "com/win32/variant.h"
#include "host/bar_model.h"

namespace scrivo::host {

class HostWorld;

// CommandBars, CommandBar and CommandBarControls. Their numbers start at 1.

Variant CommandBarsOf(const std::shared_ptr<HostWorld>& world);
Variant CommandBarOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Bar>& bar);
Variant ControlsOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Bar>& bar);

}  // namespace scrivo::host

#pragma once

#include <memory>

#include "addin/addin_host.h"

namespace scrivo {

// The component that looks for a newer version, called by name; null when none is registered under
// `prog_id`. Raises Error when it cannot be created.
std::shared_ptr<VersionChecker> MakeVersionComponent(const char* prog_id);

}  // namespace scrivo

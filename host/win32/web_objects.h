#pragma once

#include <memory>

#include "com/win32/variant.h"
#include "host/session.h"

namespace scrivo::host {

class HostWorld;

// Webs, the open webs.
Variant WebsOf(const std::shared_ptr<HostWorld>& world);

// Web. `web` may be null: then there is no object.
Variant WebOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web);

// Lets the call fail when the web has been closed since.
void RequireOpen(const HostedWeb& web);

}  // namespace scrivo::host

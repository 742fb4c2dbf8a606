#pragma once

#include <string>

#include "site/site.h"

namespace scrivo {

// Where a page lies inside `web`, as the host tells it, with "/" between folder names. Errors are
// the host's; kObjectNotSet when no host is connected.
std::string PageLocation(SiteWeb& web, const std::string& address);

// The same for the web that is open in the host, and never an error: "" when no web is open or the
// host cannot tell.
std::string RelativeLocation(const std::string& address);

}  // namespace scrivo

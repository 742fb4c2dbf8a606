#pragma once

#include <string>

namespace scrivo {

// Where a page lies inside the web that is open in the host, with "/" between folder names. ""
// when the host cannot tell.
std::string RelativeLocation(const std::string& address);

}  // namespace scrivo

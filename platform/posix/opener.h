#pragma once

#include <string>

namespace scrivo {

// Opens an address, a file or a folder in the program that the user's desktop has for it, through
// "xdg-open", without waiting for that program. 0, or an errno value when it cannot be started.
int OpenWithDesktop(const std::string& target);

}  // namespace scrivo

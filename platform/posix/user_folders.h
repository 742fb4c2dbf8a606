#pragma once

#include <string>

namespace scrivo {

// The user's home folder: HOME, else what the user database tells; "/" when nobody knows.
std::string HomeFolder();

// Where programs keep what the user chose: XDG_CONFIG_HOME when it is an absolute path, else
// ".config" in the home folder.
std::string ConfigurationFolder();

}  // namespace scrivo

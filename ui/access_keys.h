#pragma once

#include <string>
#include <vector>

namespace scrivo {

// Gives each caption a letter of its own to press with Alt: "&" is put before the first letter of
// the caption that no caption before it has taken ("Help", "Home" become "&Help", "H&ome"). A
// caption without a free letter stays as it is. An "&" of the caption itself is doubled, as the
// system's controls expect.
std::vector<std::string> WithAccessKeys(const std::vector<std::string>& captions);

}  // namespace scrivo

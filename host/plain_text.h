#pragma once

#include <string>
#include <string_view>

namespace scrivo::host {

// A caption without its access key marks: "&Tools" is "Tools"; "&&" stands for one "&".
std::string WithoutMarks(std::string_view caption);

// Whether two texts differ at most in the case of ASCII letters.
bool IsSameText(std::string_view one, std::string_view other);

}  // namespace scrivo::host

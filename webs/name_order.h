#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// A key whose byte order puts texts as a person would: in any case, a run of digits by its value
// ("Step 2" before "Step 10").
std::string PersonOrderKey(std::string_view utf8);

}  // namespace scrivo

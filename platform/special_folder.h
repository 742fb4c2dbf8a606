#pragma once

#include <cstdint>
#include <string>

#include "system/desktop.h"

namespace scrivo {

constexpr std::int32_t kDocumentsFolder = 5;  // CSIDL_PERSONAL

// The path of one of the shell's special folders, without a separator at its end; "" when there is
// none. `window` is the owner of what the shell may ask. Never raises.
std::string GetSpecialFolder(WindowHandle window, std::int32_t folder_id);

}  // namespace scrivo

#pragma once

#include <string>

#include "system/error.h"

namespace scrivo {

// One line for the user: what failed, and what to do about it where that is known.
std::string ErrorText(const Error& error);

}  // namespace scrivo

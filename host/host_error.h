#pragma once

#include <string>

#include "system/error.h"

namespace scrivo::host {

// E_FAIL, the number of failures that have no better one: those of the authoring application are
// not documented.
constexpr std::int32_t kHostFailure = static_cast<std::int32_t>(0x80004005);

// A failure of the host, as an Error with its source.
inline Error HostError(std::string description, std::int32_t number = kHostFailure) {
  return Error(number, "ScrivoHost", std::move(description));
}

}  // namespace scrivo::host

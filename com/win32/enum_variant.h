#pragma once

#include <vector>

#include "com/win32/variant.h"

namespace scrivo {

// What "for each" asks a collection for (DISPID_NEWENUM): an IEnumVARIANT over these items, as
// VT_UNKNOWN.
Variant EnumeratorOver(std::vector<Variant> items);

}  // namespace scrivo

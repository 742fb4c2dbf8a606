#include "platform/path_style.h"

namespace scrivo {

PathStyle SystemPathStyle() { return PathStyle::kWindows; }

}  // namespace scrivo

#include "platform/globals.h"

namespace scrivo {

GlobalState& Globals() {
  static GlobalState state;
  return state;
}

}  // namespace scrivo

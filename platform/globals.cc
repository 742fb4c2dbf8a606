#include "platform/globals.h"

namespace scrivo {

GlobalState::GlobalState(PathStyle style)
    : compiler_file_name(style == PathStyle::kWindows ? "hhc.exe" : "hhc"),
      decompiler_file_name(style == PathStyle::kWindows ? "hh.exe" : "hh"),
      path_style(style) {}

GlobalState& Globals() {
  static GlobalState state;
  return state;
}

}  // namespace scrivo

#pragma once

namespace scrivo {

// Whose rules a path routine follows. Page locations always use "/", in either style.
enum class PathStyle { kWindows, kPosix };

// The style of the system this program was built for.
PathStyle SystemPathStyle();

// "\" or "/".
constexpr char Separator(PathStyle style) { return style == PathStyle::kWindows ? '\\' : '/'; }

}  // namespace scrivo

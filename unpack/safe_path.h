#pragma once

// Where the file behind a name in a help file may be written: always a place inside the folder that
// it is unpacked into, and one that the system can hold.

#include <string>
#include <string_view>

namespace scrivo {

// Whose file names are meant. What would be a trap on either system is dealt with under both rules,
// so that an unpacked folder can be carried from one to the other; characters and lengths that one
// system merely cannot hold only under its own.
enum class NameRules { kPosix, kWindows };

// How the name of a file ends while it is being written. No safe path ends so.
inline constexpr std::string_view kGrowingEnding = ".scrivo-new";

struct SafePath {
  // Relative, UTF-8 (under kPosix also other bytes), "/" between its parts, no part empty, "." or
  // "..". Empty when the name is refused.
  std::string path;
  // Why the name is refused, as the end of a sentence that starts with the name; else empty.
  std::string refusal;
};

// The place for the entry `name`.
// Refused: no name at all, absolute paths, drive letters, "..", more than 100 folders deep.
// Mapped: "\" to "/"; ":" (alternate streams), control characters and, on Windows, other characters
// that no file name has, to "_"; dots and blanks at the end of a part to "_"; device names (CON,
// NUL.txt) get "_" in front, parts that end like growing files "_" behind; empty parts and "." are
// left out; parts too long are cut before the extension.
SafePath MakeSafePath(std::string_view name, NameRules rules);

// The path with "~number" before the extension of its last part.
std::string NumberedPath(std::string_view path, unsigned number);

}  // namespace scrivo

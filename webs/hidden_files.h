#pragma once

#include <string_view>

namespace scrivo {

// Files that are not for readers: those in folders called _private, where webs keep the results of
// their forms, those of the host and of version control, and all others whose names begin with a
// point.

// Whether a file or folder of this name is one, or all in it are.
bool IsHiddenName(std::string_view name);

// The same for a location in a web: "docs/_private/notes.htm".
bool IsHiddenLocation(std::string_view location);

// Whether a file or folder of this name is what a run makes beside its output until that is whole,
// or what a run has left that was ended: "site.chm.scrivo-new", "site.chm.scrivo-work-2".
bool IsUnfinishedName(std::string_view name);

}  // namespace scrivo

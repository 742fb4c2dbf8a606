#pragma once

#include <string>

namespace scrivo::host {

// Makes the help compiler in `folder`, hhc.exe, the one that the add-in uses ("InstallDir" of HTML
// Help Workshop, for the current user). A compiler that is set already stays, also one that is
// not there any more. True when ours was set; false too when `folder` has no compiler, or a name
// that the registry, in the ANSI code page, cannot hold.
bool SetCompilerWhereNoneIs(const std::string& folder);

}  // namespace scrivo::host

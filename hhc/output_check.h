#pragma once

// Keeps a compile from replacing one of its own sources.

#include <cstddef>
#include <string>

#include "hhc/collect_sources.h"
#include "hhc/compile_context.h"

namespace scrivo {

// The first of the sources from number `first` on that the output would replace, as the project
// names it; empty when there is none. Files are compared by identity, whatever their names. An
// earlier help file is no source, unless the project lists it by its name: patterns and links lead
// to it without being meant.
std::string SourceInOutputsPlace(CompileContext* context, const ProjectSources& sources,
                                 std::size_t first);

// What the log file (the result's `error_log`) is to the compile, if its name leads to the project
// `project_path`, to the output, to a file that [FILES] lists or to one of the sources so far:
// "it is the project". Empty when it is none of them. Compares by identity, too.
std::string LogInPlaceOf(CompileContext* context, const std::string& project_path,
                         const SourceList& sources);

// Whether both paths (UTF-8, "/" separators) lead to one file that is there.
bool IsSameFile(const std::string& one, const std::string& other);

}  // namespace scrivo

#pragma once

#include <string>

namespace scrivo {

// Makes TheServices().registry a registry in memory, which forgets everything at the end.
void UseRegistryInMemory();

// Chooses the help compiler of this run and makes it the installed one: a registry in
// memory gets its folder as "InstallDir", and Globals().compiler_file_name is its name.
//
// `wanted` is the file that the user named, "" for none; then it is the compiler that is
// registered for the user (the registry as it was), if its file exists, else this program's own,
// which lies beside it. Throws Error, with a text for the user, when there is none. Returns the
// compiler's path.
std::string ChooseCompiler(const std::string& wanted);

}  // namespace scrivo

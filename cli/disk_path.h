#pragma once

#include <filesystem>
#include <string>

#include "system/services.h"

namespace scrivo {

// The system's files.
inline Files& Disk() { return *TheServices().files; }

// A path as this program's services take it in the form that the help compiler takes: with "/"
// between the names.
std::string PortablePathOf(const std::string& path);

// The same for the standard library.
std::filesystem::path DiskPathOf(const std::string& path);

}  // namespace scrivo

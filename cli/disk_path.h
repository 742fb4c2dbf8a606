#pragma once

#include <filesystem>
#include <string>

namespace scrivo {

// A path as this program's services take it (Windows: in the ANSI code page) in the form that the
// help compiler takes: UTF-8 with "/" between the names. Other systems' paths stay as they are.
std::string PortablePathOf(const std::string& path);

// The same for the standard library.
std::filesystem::path DiskPathOf(const std::string& path);

}  // namespace scrivo

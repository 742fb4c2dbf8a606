#pragma once

#include <string>
#include <vector>

#include "system/files.h"

namespace scrivo {

// The names of the own files of the web's folder for derived images, in the order of a folder on
// Windows, on every system, so that the same web always gives the same page: by their capital
// letters, which puts "_" behind all letters; bytes break ties. Throws Error.
std::vector<std::string> DerivedImageNames(Files& files, const std::string& folder);

// The page that links them all as images, whatever they are, without its last line end.
std::string DerivedImagesPage(const std::vector<std::string>& names);

}  // namespace scrivo

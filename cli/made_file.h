#pragma once

#include <string>

namespace scrivo {

// What is in the help file at `path`, counted there: "46 pages, 190 other files, 1 contents entry,
// no index entries". What a compiler adds of its own does not count. "" when the file cannot be
// read.
std::string WhatIsInside(const std::string& path);

}  // namespace scrivo

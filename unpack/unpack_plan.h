#pragma once

// Which entries of a help file are unpacked, and to what places.

#include <cstddef>
#include <string>
#include <vector>

#include "chm/chm_reader.h"
#include "chm/problem.h"
#include "unpack/safe_path.h"

namespace scrivo {

struct PlannedFile {
  const Entry* entry = nullptr;
  std::string path;  // as SafePath has it; differs from every other one in more than case
};

// The files of `reader` that can be written: the author's, and with `internal` the help system's
// streams too; in the order in which their content is stored. An entry that gets another name, is
// refused or cannot be read is added to `*problems`, which is not limited in number.
std::vector<PlannedFile> PlanUnpacking(const ChmReader& reader, NameRules rules, bool internal,
                                       Problems* problems);

}  // namespace scrivo

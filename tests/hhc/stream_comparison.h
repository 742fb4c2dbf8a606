#pragma once

// Compares two compiled help files entry by entry.

#include <string>
#include <vector>

#include "tests/hhc/internal_streams.h"

namespace scrivo {

struct EntryComparison {
  enum class Verdict { kSame, kSameSaveForKnown, kDifferent, kOnlyInFirst, kOnlyInSecond };
  std::string name;
  Verdict verdict = Verdict::kSame;
  std::size_t first_size = 0, second_size = 0;
  std::string remark;  // which known difference, or where the first other one is
};

// The entries of both, in order of their names; folders and the description of the storage are left
// out. Known differences are those that any two runs or compilers have: times, the compiler's name,
// stamps, and bytes that nobody reads.
std::vector<EntryComparison> CompareHelpFiles(const InternalStreams& first,
                                              const InternalStreams& second);

}  // namespace scrivo

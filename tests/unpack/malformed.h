#pragma once

// Help files with one thing wrong, and what the reader says and saves.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/chm/chm_image.h"

namespace scrivo {

using Lines = std::vector<std::string>;

inline constexpr std::uint32_t kMax32 = 0xFFFFFFFF;
inline constexpr std::uint64_t kMax64 = 0xFFFFFFFFFFFFFFFF;

struct Defect {
  std::string name;
  std::function<void(ChmImage&)> make;
  Lines said;   // everything that is said
  Lines saved;  // the files that come out, all of them right
};

// The five files of the help file that gets the defect. They lie over four reset intervals: a.htm,
// b.htm and the start of c.htm in the first, the rest of c.htm and d.htm in the second, e.txt in
// the second to the fourth.
inline const Lines kAll = {"a.htm", "b.htm", "c/c.htm", "c/d.htm", "e.txt"};

// Where the row of the entry `name` has its name in the directory; the length is in front of it.
std::size_t Row(const ChmImage& image, const std::string& name);

// Makes the defect, unpacks, and compares.
class MalformedTest : public testing::TestWithParam<Defect> {};

void PrintTo(const Defect& defect, std::ostream* out);
std::string DefectName(const testing::TestParamInfo<Defect>& info);

}  // namespace scrivo

#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "ui/console/console.h"

namespace scrivo {

// Where a run of the program prints, and to whom.
struct Streams {
  std::ostream& out;
  std::ostream& err;
  bool live = false;  // somebody looks at the error stream
  int columns = 80;
  std::function<double()> clock;
};

// Runs the command line program with the arguments after its name; TheServices() must be filled.
// Returns the exit status: 0 done, 1 not done, 2 wrong usage, 130 interrupted.
// Never throws.
int RunScrivo(const std::vector<std::string>& arguments, const Streams& streams);

}  // namespace scrivo

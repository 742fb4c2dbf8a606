#pragma once

#include <string>
#include <vector>

namespace scrivo::host {

// What the command line asks of the program.
struct HostArguments {
  std::string web;        // the folder to open; "" for none
  bool external = false;  // connect the add-ins as another program would
  bool help = false;
  std::string problem;  // what is wrong with the arguments; "" when nothing is
};

// Reads the arguments behind the program's name.
HostArguments ParseArguments(const std::vector<std::string>& arguments);

// How to call the program.
std::string Usage();

}  // namespace scrivo::host

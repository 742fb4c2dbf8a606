#include "system/program_arguments.h"

namespace scrivo {

std::vector<std::string> ProgramArguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

}  // namespace scrivo

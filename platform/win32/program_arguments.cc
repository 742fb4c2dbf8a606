#include "system/program_arguments.h"

#include "platform/win32/shell_api.h"
#include "platform/win32/wide.h"

namespace scrivo {

std::vector<std::string> ProgramArguments(int, char**) {
  std::vector<std::string> arguments;
  int count = 0;
  LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(words[i]));
  LocalFree(words);
  return arguments;
}

}  // namespace scrivo

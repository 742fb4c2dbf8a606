#include "system/program.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace scrivo {
namespace {

int DescriptorOf(StandardStream stream) {
  return stream == StandardStream::kOutput ? STDOUT_FILENO : STDERR_FILENO;
}

}  // namespace

bool IsTerminal(StandardStream stream) {
  const char* kind = std::getenv("TERM");
  const bool is_dumb = kind != nullptr && std::string_view(kind) == "dumb";
  return isatty(DescriptorOf(stream)) != 0 && !is_dumb;
}

int TerminalColumns(StandardStream stream) {
  winsize size{};
  const bool tells = ioctl(DescriptorOf(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return tells ? size.ws_col : 80;
}

int TerminalCodePage() { return 65001; }

void ShowUtf8OnTerminal() {}

std::vector<std::string> ProgramArguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

std::string EnvironmentVariable(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? "" : value;
}

}  // namespace scrivo

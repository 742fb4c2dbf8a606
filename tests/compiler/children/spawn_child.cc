// A console program for the tests of the process runner: what it does is chosen by its first
// argument, its exit code by that behaviour.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/compiler/children/binary_output.h"

namespace {

void Print(std::FILE* stream, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

/// 15 bytes and a line break that begins at the sixteenth.
int SplitLineBreak() {
  Print(stdout, "123456789012345\r\nnext");
  return 0;
}

int Interleave() {
  Print(stdout, "out 1;");
  Print(stderr, "err 1;");
  Print(stdout, "out 2;");
  Print(stderr, "err 2;");
  return 4;
}

/// Closes both outputs and lives until the file `stop` exists.
int CloseAndLiveOn(const char* stop) {
  Print(stdout, "bye");
  std::fclose(stdout);
  std::fclose(stderr);
  while (!std::filesystem::exists(stop)) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return 9;
}

int AppendTo(const char* path) {
  std::FILE* file = std::fopen(path, "ab");
  if (!file) return 1;
  std::fputc('x', file);
  return std::fclose(file);
}

int Flood(long long bytes) {
  const std::string line = "0123456789 0123456789 0123456789 0123456789 0123456789 1234567\r\n";
  const std::string block = [&] {
    std::string text;
    while (text.size() < 64 * 1024) text += line;
    return text;
  }();
  while (bytes > 0) {
    const auto part = std::min<long long>(bytes, static_cast<long long>(block.size()));
    std::fwrite(block.data(), 1, static_cast<std::size_t>(part), stdout);
    bytes -= part;
  }
  return std::fflush(stdout);
}

}  // namespace

int main(int count, char** arguments) {
  UseBinaryOutput();
  const std::string behaviour = count > 1 ? arguments[1] : "";
  if (behaviour == "silent") return 7;
  if (behaviour == "forty") return Print(stdout, "1234567890123456abcdefghijklmnopABCDEFGH"), 0;
  if (behaviour == "split") return SplitLineBreak();
  if (behaviour == "interleave") return Interleave();
  if (behaviour == "folder") return Print(stdout, std::filesystem::current_path().string()), 0;
  if (behaviour == "count") return count;
  if (behaviour == "append" && count > 2) return AppendTo(arguments[2]);
  if (behaviour == "close" && count > 2) return CloseAndLiveOn(arguments[2]);
  if (behaviour == "flood" && count > 2) return Flood(std::atoll(arguments[2]));
  std::fprintf(stderr, "spawn_child: unknown behaviour: %s\n", behaviour.c_str());
  return 2;
}

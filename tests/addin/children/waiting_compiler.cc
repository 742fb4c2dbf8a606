// A help compiler for the tests that prints, and goes on printing, until the file "go" lies beside
// it; then it ends.

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

int main(int, char** arguments) {
  const auto go = std::filesystem::path(arguments[0]).parent_path() / "go";
  while (!std::filesystem::exists(go)) {
    std::puts("Compiling");
    std::fflush(stdout);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

// A console program for the tests: does what its arguments say, one after the other.
//
//   out TEXT, err TEXT    prints it ("%r" and "%n" in it are a carriage return and a line feed)
//   bytes N               prints N times "x"
//   close                 closes both outputs
//   live                  waits until its current folder holds no file "alive" any more
//   folder                prints the name of its current folder
//   append FILE           adds an "x" to a file
//   words                 ends with the number of its arguments as the status
//   exit N                ends with that status

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "tests/compiler/children/binary_output.h"

namespace {

std::string Unescape(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_pair = text[i] == '%' && i + 1 < text.size();
    if (is_pair && text[i + 1] == 'r') {
      result += '\r';
    } else if (is_pair && text[i + 1] == 'n') {
      result += '\n';
    } else {
      result += text[i];
      continue;
    }
    ++i;
  }
  return result;
}

void Print(std::FILE* stream, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

}  // namespace

int main(int argc, char** argv) {
  UseBinaryOutput();
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "close") {
      std::fclose(stdout);
      std::fclose(stderr);
    } else if (word == "live") {
      while (std::filesystem::exists("alive")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
      }
    } else if (word == "folder") {
      Print(stdout, std::filesystem::current_path().filename().string());
    } else if (word == "words") {
      return argc - 1;
    } else if (i + 1 < argc) {
      const std::string value = argv[++i];
      if (word == "out") Print(stdout, Unescape(value));
      if (word == "err") Print(stderr, Unescape(value));
      if (word == "bytes") Print(stdout, std::string(std::stoul(value), 'x'));
      if (word == "append") std::ofstream(value, std::ios::app) << "x";
      if (word == "exit") return std::atoi(value.c_str());
    }
  }
  return 0;
}

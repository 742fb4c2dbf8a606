// A help compiler for the tests. It does what the first line of the file "behaviour.txt" in its
// current folder says, and knows nothing of help but where the project wants its output. The second
// line there names a file for what the test is to see.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

namespace {

constexpr int kMade = 1;
constexpr int kNotMade = 0;

std::string OutputOf(const std::string& project) {
  const std::string key = "Compiled file=";
  std::ifstream file(project, std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.rfind(key, 0) == 0) return line.substr(key.size());
  }
  return "";
}

// The shortest file whose header is that of a help file and tells the file's own size.
std::string SmallestHelpFile() {
  std::string bytes(0x78, '\0');
  bytes.replace(0, 4, "ITSF");
  bytes[4] = 3;
  bytes[0x38] = 0x60;
  bytes[0x60 + 8] = 0x78;
  return bytes;
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadAll(const std::string& path) {
  return (std::ostringstream() << std::ifstream(path, std::ios::binary).rdbuf()).str();
}

int Make(const std::string& output) {
  Write(output, SmallestHelpFile());
  return kMade;
}

// Until the test lets go of this folder.
void LiveOn() {
  while (std::filesystem::exists("behaviour.txt")) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

int Behave(const std::string& behaviour, const std::string& where, const std::string& project,
           const std::string& output) {
  if (behaviour == "make") {
    std::cout << "Created " << output << "\n";
    return Make(output);
  }
  if (behaviour == "make with warnings") {
    std::cout << "HHC3001: Warning: a\nplain\nHHC3002: Warning: b\n";
    return Make(output);
  }
  if (behaviour == "make with errors") {
    std::cout << "HHC5003: Error: Compilation failed while compiling x.gif.\n";
    return Make(output);
  }
  if (behaviour == "make silently") return Make(output);
  if (behaviour == "make and show the project") {
    std::cout << std::ifstream(project, std::ios::binary).rdbuf();
    Write(where, ReadAll(project));
    return Make(output);
  }
  if (behaviour == "list its folder") {
    std::ostringstream list;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
      if (entry.is_regular_file()) list << entry.path().generic_string() << "\n";
    }
    Write(where, list.str());
    return Make(output);
  }
  if (behaviour == "show a page") {
    Write(where, ReadAll("docs/a.htm"));
    return Make(output);
  }
  if (behaviour == "name its folder") {
    std::cout << "HHC3001: Warning: " << std::filesystem::current_path().string() << ": a\n";
    return Make(output);
  }
  if (behaviour == "print much") {
    const std::string line = "some/page/in/the/web.htm and more text to fill a line of it\n";
    for (std::size_t bytes = 0; bytes < 4u << 20; bytes += line.size()) std::cout << line;
    return Make(output);
  }
  if (behaviour == "refuse") {
    std::cout << "HHC5010: Error: Cannot open \"" << output << "\". Compilation stopped.\n";
    return kNotMade;
  }
  if (behaviour == "fail without a message") {
    std::cout << "one\ntwo\n\nUnable to open it.\n";
    return kNotMade;
  }
  if (behaviour == "do nothing") return kNotMade;
  if (behaviour == "cut the file short") {
    Write(output, SmallestHelpFile().substr(0, 0x70));
    return kMade;
  }
  if (behaviour == "crash") {
    Write(output, "half a");
    std::abort();
  }
  if (behaviour == "crash at once") {
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
  }
  if (behaviour == "live on") {
    std::fclose(stdout);
    std::fclose(stderr);
    LiveOn();
    Write(output, "late");
  }
  if (behaviour == "wait") {
    Write(output, "half a");
    std::cout << "waiting" << std::endl;
    Write(where, "");
    LiveOn();
  }
  return kNotMade;
}

}  // namespace

int main(int argc, char** argv) {
  std::string behaviour, where;
  std::ifstream file("behaviour.txt");
  std::getline(file, behaviour);
  std::getline(file, where);
  file.close();
  const std::string project = argc > 1 ? argv[1] : "";
  return Behave(behaviour, where, project, OutputOf(project));
}

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/hh_command.h"
#include "cli/scrivo.h"
#include "system/services.h"
#include "tests/doubles/fake_shell.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {

// Runs of the command line, inside the test, over real files and real children. The shell is a
// double: nothing is opened on the user's desktop.
class ScrivoRun : public testing::Test {
 protected:
  ScrivoRun() {
    web.Write("index.htm", "<html><head><title>Home page</title></head></html>");
    web.Write(
        "docs/a.htm",
        "<html><head><title>A</title><meta name=\"keywords\" content=\"x;y,z\"></head></html>");
    web.Write("picture.gif", "GIF");
    web.Write("_vti_pvt/structure.cnf",
              "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,100,0\r\n"
              "1001,docs/a.htm,0,First,1000,100,0");
    UseServices();
  }
  ~ScrivoRun() override { TheServices() = {}; }

  void UseServices() {
    TheServices() = CreateSystemServices();
    TheServices().shell = shell;
  }
  // Runs the program; what it printed is in `out` and `err`.
  int Run(const std::vector<std::string>& arguments) {
    std::ostringstream out_stream, err_stream;
    const int status =
        RunScrivo(arguments, {out_stream, err_stream, false, 80, [] { return 0.0; }});
    out = out_stream.str();
    err = err_stream.str();
    return status;
  }
  // Gives the web contents whose entries are called as their pages.
  void LabelPagesByTheirTitles() {
    web.Write("_vti_pvt/structure.cnf",
              "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home page,0,100,0\r\n"
              "1001,docs/a.htm,0,A,1000,100,0");
  }
  // Compiles the web into Output().
  int Compile(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"compile", WebPath(), "-o", Output()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Run(arguments);
  }
  // The same with the fake compiler, which does what `behaviour` says.
  int CompileWithFake(const std::string& behaviour, std::vector<std::string> more = {}) {
    web.Write("behaviour.txt", behaviour);
    more.insert(more.begin(), {"--compiler", TestProgram("test_fake_hhc")});
    return Compile(std::move(more));
  }
  // Unpacks the help file in `name` (in the folder of the output) into the folder "un packed"
  // there, the streams of the help system included.
  void Unpack(const std::string& name = "a.chm") {
    std::ostringstream told;
    ASSERT_EQ(RunHh({"-decompile", "--internal", output.PathOf("un packed"), output.PathOf(name)},
                    told, told),
              0)
        << told.str();
  }
  std::string WebPath() const { return web.path().string(); }
  std::string Output() const { return output.PathOf("a.chm"); }
  // The names of the project files in the web's folder.
  std::vector<std::string> ProjectFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(web.path())) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with("Scr")) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // `text` with what differs from run to run, folders and numbers of temporary names, replaced.
  std::string Plain(std::string text) const {
    ReplaceAll(&text, WebPath(), "WEB");
    ReplaceAll(&text, output.path().string(), "OUT");
    ReplaceAll(&text, TestProgram("test_fake_hhc"), "HHC");
    ReplaceAll(&text, "\\", "/");
    return text;
  }

  // The line that tells where the contents come from, for a web whose structure shows so much.
  static std::string ContentsLine(const std::string& shown) {
    return "Contents: the navigation structure, because it shows " + shown +
           " pages. To follow the web's folders instead, add --contents folders.\n";
  }

  TestFolder web, output;
  std::shared_ptr<FakeShell> shell = std::make_shared<FakeShell>();
  std::string out, err;

 private:
  static void ReplaceAll(std::string* text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text->find(from, at)) != std::string::npos; at += to.size()) {
      text->replace(at, from.size(), to);
    }
  }
};

}  // namespace scrivo

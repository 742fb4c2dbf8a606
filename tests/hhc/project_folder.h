#pragma once

// A folder with a help project in it, made for one test and removed with it.

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "hhc/compiler.h"

namespace scrivo {

// An item of a sitemap that leads to a page.
inline std::string ItemText(const std::string& name, const std::string& local) {
  return "<LI><OBJECT type=\"text/sitemap\">\r\n<param name=\"Name\" value=\"" + name +
         "\">\r\n<param name=\"Local\" value=\"" + local + "\">\r\n</OBJECT>\r\n";
}

// Keeps what a compile run tells.
class CompileRecorder : public CompileListener {
 public:
  void Starting(std::string_view path) override { output = path; }
  void File(std::string_view path) override { files.emplace_back(path); }
  void Message(const CompileMessage& message) override { messages.push_back(message.Line()); }

  std::string output;
  std::vector<std::string> files, messages;
};

class ProjectFolder {
 public:
  ProjectFolder() {
    std::random_device random;
    std::ostringstream name;
    name << "scrivo-chm-" << std::hex << random() << random();
    path_ = std::filesystem::temp_directory_path() / name.str();
    std::filesystem::create_directories(path_);
  }
  ~ProjectFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ProjectFolder(const ProjectFolder&) = delete;
  ProjectFolder& operator=(const ProjectFolder&) = delete;

  std::string Path(const std::string& name = "") const {
    return PortablePath(name.empty() ? path_ : path_ / SystemPath(name));
  }

  void Write(const std::string& name, const std::string& text) const {
    const std::filesystem::path path = path_ / SystemPath(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
  }

  std::string Read(const std::string& name) const {
    std::ifstream file(path_ / SystemPath(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  bool Has(const std::string& name) const {
    return std::filesystem::exists(path_ / SystemPath(name));
  }

  CompileResult Compile(CompileRecorder* recorder, const std::string& project = "help.hhp",
                        int threads = 2) const {
    return Compile(recorder, CompileRequest{}, project, threads);
  }
  // With more of the request set by the caller.
  CompileResult Compile(CompileRecorder* recorder, CompileRequest request,
                        const std::string& project = "help.hhp", int threads = 2) const {
    request.project_path = project;
    request.working_folder = Path();
    request.compiler_name = "Test compiler 1.0";
    request.threads = threads;
    const DiskFiles files;
    return CompileProject(request, files, recorder);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace scrivo

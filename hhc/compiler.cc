#include "hhc/compiler.h"

#include <algorithm>

#include "bytes/output_file.h"
#include "hhc/compile_run.h"
#include "hhc/system_stream.h"
#include "html/charset.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

bool IsFullPath(const std::string& path) {
  return path.starts_with('/') || (path.size() >= 2 && path[1] == ':');
}

std::string Joined(const std::string& folder, const std::string& path) {
  if (IsFullPath(path) || folder.empty()) return path;
  return folder.back() == '/' ? folder + path : folder + "/" + path;
}

std::string LowerDrive(std::string path) {
  if (path.size() >= 2 && path[1] == ':' && path[0] >= 'A' && path[0] <= 'Z') {
    path[0] = static_cast<char>(path[0] - 'A' + 'a');
  }
  return path;
}

// The project as the caller names it, or with the usual extension.
std::unique_ptr<ByteSource> OpenProject(const CompileRequest& request, const SourceFiles& files,
                                        std::string* path) {
  std::error_code error;
  *path = Joined(request.working_folder, WithSlashes(request.project_path));
  if (auto source = files.Open(*path, &error)) return source;
  *path += ".hhp";
  return files.Open(*path, &error);
}

std::string OutputPath(const Project& project, const std::string& folder,
                       const std::string& project_path) {
  const int code_page = CodePageOfLanguage(project.language);
  std::string path = WithSlashes(DecodeGuessing(project.compiled_file, code_page));
  if (path.empty()) {
    const std::size_t slash = project_path.rfind('/') + 1;
    const std::size_t dot = project_path.rfind('.');
    path = project_path.substr(slash, dot == std::string::npos || dot < slash ? dot : dot - slash);
    path += ".chm";
  }
  return LowerDrive(Joined(folder, path));
}

void Write(const CompileRequest& request, CompileRun* run, OutputFile* output,
           const Project& project, CompileResult* result) {
  ContainerOptions options;
  options.language = project.language;
  options.timestamp = request.time == 0 ? 0 : static_cast<std::uint32_t>(FileTime(request.time));
  options.threads = std::max(1, request.threads);
  ContainerWriter writer(*output, options);
  run->CompileFiles(&writer);
  if (!run->HasFiles()) {
    run->Report(6000, Severity::kError,
                "The project has no topics to compile. Compilation stopped.");
    return;
  }
  if (!run->WriteStreams(&writer)) return;
  const ContainerStatus status = writer.Finish();
  if (status == ContainerStatus::kOk && output->Commit()) {
    result->output_size = writer.FileSize();
    result->made = true;
    return;
  }
  std::string reason = output->Reason().message();
  if (status == ContainerStatus::kBadName) reason = "bad name: " + writer.BadName();
  if (status == ContainerStatus::kDuplicateName) reason = "name used twice: " + writer.BadName();
  run->Report(5010, Severity::kError,
              "Cannot write \"" + result->output + "\" (" + reason + "). Compilation stopped.");
}

}  // namespace

std::string CompileMessage::Line() const {
  static constexpr std::string_view kKinds[] = {"Note: ", "Warning: ", "Error: "};
  std::string line;
  if (code != 0) line = "HHC" + std::to_string(code) + ": ";
  line += kKinds[static_cast<int>(severity)];
  return line + text;
}

CompileResult CompileProject(const CompileRequest& request, const SourceFiles& files,
                             CompileListener* listener) {
  CompileResult result;
  std::string path, text;
  const auto source = OpenProject(request, files, &path);
  if (source == nullptr || !ReadText(*source, &text)) {
    result.project_found = false;
    return result;
  }
  const Project project = ReadProject(text);
  const std::string folder = path.substr(0, path.rfind('/'));
  result.output = OutputPath(project, folder, path);
  result.display_progress = project.display_progress;
  if (!project.error_log_file.empty()) {
    result.error_log = Joined(
        folder,
        WithSlashes(DecodeGuessing(project.error_log_file, CodePageOfLanguage(project.language))));
  }
  listener->Starting(result.output);

  CompileRun run(request, files, project, folder, listener, &result);
  std::error_code error;
  const auto output = OutputFile::Create(SystemPath(result.output), &error);
  if (output == nullptr) {
    run.Report(
        5010, Severity::kError,
        "Cannot open \"" + result.output + "\" (" + error.message() + "). Compilation stopped.");
    return result;
  }
  run.ReportProject();
  Write(request, &run, output.get(), project, &result);
  return result;
}

}  // namespace scrivo

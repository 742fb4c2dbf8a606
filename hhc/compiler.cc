#include "hhc/compiler.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "bytes/output_file.h"
#include "hhc/build_streams.h"
#include "hhc/collect_sources.h"
#include "hhc/compile_context.h"
#include "hhc/compile_files.h"
#include "hhc/output_check.h"
#include "hhc/system_stream.h"
#include "html/charset.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

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

// The project as the caller names it, or with the usual extension; either in any letter case.
std::unique_ptr<ByteSource> OpenProject(const CompileRequest& request, const SourceFiles& files,
                                        std::string* path) {
  std::error_code error;
  const std::string named = Joined(request.working_folder, WithSlashes(request.project_path));
  for (const std::string& wanted : {named, named + ".hhp"}) {
    *path = wanted;
    if (auto source = files.Open(*path, &error)) return source;
  }
  for (const std::string& wanted : {named, named + ".hhp"}) {
    *path = PathOnDisk(files, wanted);
    if (auto source = files.Open(*path, &error)) return source;
  }
  return nullptr;
}

// The name of a file that is to be written. English is what projects also say that know no better;
// the names in them are those that the system's programs write.
std::string WrittenName(std::string_view name, const Project& project,
                        const CompileRequest& request) {
  constexpr int kWestern = 1252;
  int code_page = CodePageOfLanguage(project.language);
  if (code_page == kWestern && request.name_code_page != kUtf8CodePage) {
    code_page = request.name_code_page;
  }
  return WithSlashes(DecodeGuessing(name, code_page));
}

// The help file as the project names it, or named after the project.
std::string CompiledFile(const Project& project, const CompileRequest& request,
                         const std::string& project_path) {
  std::string path = WrittenName(project.compiled_file, project, request);
  if (path.empty()) {
    const std::size_t slash = project_path.rfind('/') + 1;
    const std::size_t dot = project_path.rfind('.');
    path = project_path.substr(slash, dot == std::string::npos || dot < slash ? dot : dot - slash);
    path += ".chm";
  }
  return path;
}

// Where a file goes that the project names: folders and files that are there count in any letter
// case.
std::string PlaceOnDisk(const std::string& folder, const std::string& path) {
  return LowerDrive(PathOnDisk(DiskFiles(), Joined(folder, path)));
}

void ReportSource(CompileContext* context, const std::string& source) {
  context->Report(MessageCode::kOutputFailed,
                  {"write", SystemSlashes(context->result.output),
                   "it is a source of the help file: " + SystemSlashes(source)});
}

// Whether the output takes the place of none of the files from number `first` on, which is
// reported otherwise.
bool IsFreeOfSources(CompileContext* context, const ProjectSources& sources, std::size_t first) {
  const std::string source = SourceInOutputsPlace(context, sources, first);
  if (!source.empty()) ReportSource(context, source);
  return source.empty();
}

// Why the output cannot be begun.
std::string RefusalText(const std::error_code& error) {
  if (error == std::errc::is_a_directory) return "it is a folder";
  if (error == std::errc::invalid_argument) return "it is a device, a pipe or a socket";
  return error.message();
}

void Compile(CompileContext* context, ProjectSources* sources, OutputFile* output) {
  const CompileRequest& request = context->request;
  CompileResult& result = context->result;
  ContainerOptions options;
  options.language = context->project.language;
  options.timestamp = request.time == 0 ? 0 : static_cast<std::uint32_t>(FileTime(request.time));
  options.threads = std::max(1, request.threads);
  options.stop_wanted = [context] { return context->Stops(); };
  ContainerWriter writer(*output, options);
  TopicFacts facts(*context);

  *sources = CollectSources(context);
  if (context->Stops()) return;
  if (!IsFreeOfSources(context, *sources, 0)) return;
  const std::size_t named = sources->list.Size();
  CompileFiles(context, sources, &writer, &facts);
  if (context->Stops()) return;
  if (sources->list.Empty()) return context->Report(MessageCode::kNoTopics, {});
  // Links may have led to more.
  if (!IsFreeOfSources(context, *sources, named)) return;
  if (!BuildStreams(context, *sources, &facts, &writer)) return;

  const ContainerStatus status = writer.Finish();
  if (context->Stops()) return;
  if (status == ContainerStatus::kOk && output->Commit()) {
    result.output_size = writer.FileSize();
    result.made = true;
    return;
  }
  std::string reason = output->Reason().message();
  if (status == ContainerStatus::kBadName) reason = "bad name: " + writer.BadName();
  if (status == ContainerStatus::kDuplicateName) reason = "name used twice: " + writer.BadName();
  context->Report(MessageCode::kOutputFailed, {"write", SystemSlashes(result.output), reason});
}

// Makes the output, in its folder. The sources are those that were found until the compile ended.
void CompileToDisk(CompileContext* context, ProjectSources* sources) {
  const std::filesystem::path path = SystemPath(context->result.output);
  ParentFolders folders(path);
  std::error_code error = folders.Error();
  const auto output = error ? nullptr : OutputFile::Create(path, &error);
  if (output == nullptr) {
    return context->Report(MessageCode::kOutputFailed,
                           {"open", SystemSlashes(context->result.output), RefusalText(error)});
  }
  Compile(context, sources, output.get());
  if (context->result.made) folders.Keep();
}

}  // namespace

CompileResult CompileProject(const CompileRequest& request, const SourceFiles& files,
                             CompileListener* listener) {
  CompileResult result;
  std::string path, text;
  const auto source = OpenProject(request, files, &path);
  if (source == nullptr || !ReadText(*source, &text)) {
    result.project_found = false;
    return result;
  }
  Project project = ReadProject(text);
  const std::string folder = path.substr(0, path.rfind('/'));
  const std::string compiled_file = CompiledFile(project, request, path);
  result.file_name = compiled_file.substr(compiled_file.rfind('/') + 1);
  result.output = request.output.empty() ? PlaceOnDisk(folder, compiled_file) : request.output;
  result.display_progress = project.display_progress;
  if (!project.error_log_file.empty()) {
    result.error_log = PlaceOnDisk(folder, WrittenName(project.error_log_file, project, request));
  }
  listener->Starting(result.output);

  CompileContext context(request, files, std::move(project), folder, listener, &result);
  ProjectSources sources;
  if (IsSameFile(path, result.output)) {
    ReportSource(&context, path);
  } else {
    CompileToDisk(&context, &sources);
  }
  result.error_log_refusal = LogInPlaceOf(&context, path, sources.list);
  return result;
}

}  // namespace scrivo

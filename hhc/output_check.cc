#include "hhc/output_check.h"

#include <filesystem>
#include <system_error>

#include "chm/container_header.h"
#include "project/source_files.h"

namespace scrivo {
namespace {

bool IsListedByName(CompileContext* context, const std::vector<ProjectLine>& listed,
                    const std::string& disk_path) {
  for (const ProjectLine& line : listed) {
    if (line.text.find_first_of("*?") != std::string::npos) continue;
    const auto found = context->tree.FindListed(line.text);
    if (found && IsSameFile(found->disk_path, disk_path)) return true;
  }
  return false;
}

}  // namespace

bool IsSameFile(const std::string& one, const std::string& other) {
  std::error_code ignored;
  return std::filesystem::equivalent(SystemPath(one), SystemPath(other), ignored);
}

std::string SourceInOutputsPlace(CompileContext* context, const ProjectSources& sources,
                                 std::size_t first) {
  const SourceList& list = sources.list;
  const std::string& output = context->result.output;
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(SystemPath(output), ignored)) return {};
  std::error_code unread;
  for (std::size_t number = first; number < list.Size() && !context->Stops(); ++number) {
    const SourceList::File& file = list.At(number);
    if (!IsSameFile(file.found.disk_path, output)) continue;
    if (!StartsAsHelpFile(SystemPath(output), &unread) ||
        IsListedByName(context, sources.listed, output))
      return file.found.address;
  }
  return {};
}

std::string LogInPlaceOf(CompileContext* context, const std::string& project_path,
                         const SourceList& sources) {
  const std::string& log = context->result.error_log;
  std::error_code ignored;
  if (log.empty() || !std::filesystem::exists(SystemPath(log), ignored)) return {};
  if (IsSameFile(log, project_path)) return "it is the project";
  if (IsSameFile(log, context->result.output)) return "it is the help file";
  bool is_source = IsListedByName(context, context->project.files, log);
  for (std::size_t number = 0; number < sources.Size() && !is_source; ++number) {
    is_source = IsSameFile(log, sources.At(number).found.disk_path);
  }
  return is_source ? "it is a source of the help file" : "";
}

}  // namespace scrivo

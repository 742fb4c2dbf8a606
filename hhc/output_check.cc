#include "hhc/output_check.h"

#include <filesystem>
#include <system_error>

#include "chm/container_header.h"
#include "project/source_files.h"

namespace scrivo {
namespace {

bool IsListedByName(CompileContext* context, const ProjectSources& sources,
                    const SourceList::File& file) {
  for (const ProjectLine& line : sources.listed) {
    if (line.text.find_first_of("*?") != std::string::npos) continue;
    const auto found = context->tree.FindListed(line.text);
    if (found && found->disk_path == file.found.disk_path) return true;
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
  for (std::size_t number = first; number < list.Size(); ++number) {
    const SourceList::File& file = list.At(number);
    if (!IsSameFile(file.found.disk_path, output)) continue;
    if (!StartsAsHelpFile(SystemPath(output), &unread) || IsListedByName(context, sources, file))
      return file.found.address;
  }
  return {};
}

}  // namespace scrivo

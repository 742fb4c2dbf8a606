#include "cli/help_file.h"

#include <system_error>
#include <utility>

#include "bytes/byte_source.h"
#include "chm/problem.h"
#include "project/source_files.h"
#include "text/visible_text.h"

namespace scrivo {

HelpFile OpenHelpFile(const std::string& path) {
  HelpFile file;
  const auto complain = [&](const std::string& text) {
    file.complaints.push_back(PrintableName(path) + ": " + text);
  };
  std::error_code error;
  auto source = OpenFileSource(SystemPath(path), &error);
  if (source == nullptr) {
    complain(error.message());
    return file;
  }
  Problems problems;
  file.reader = ChmReader::Open(std::move(source), &problems);
  for (const Problem& problem : problems) complain(Describe(problem));
  return file;
}

}  // namespace scrivo

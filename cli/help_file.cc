#include "cli/help_file.h"

#include <filesystem>
#include <ostream>
#include <system_error>
#include <utility>

#include "chm/byte_source.h"
#include "chm/problem.h"

namespace scrivo {

HelpFile OpenHelpFile(const std::string& path, const std::string& program, std::ostream& err) {
  const auto complain = [&](const std::string& text) {
    err << program << ": " << chm::PrintableName(path) << ": " << text << '\n';
  };
  HelpFile file;
  std::error_code error;
  auto source =
      chm::OpenFileSource(std::filesystem::path(std::u8string(path.begin(), path.end())), &error);
  if (source == nullptr) {
    complain(error.message());
    return file;
  }
  chm::Problems problems;
  file.reader = chm::ChmReader::Open(std::move(source), &problems);
  file.flawless = problems.empty();
  for (const chm::Problem& problem : problems) complain(chm::Describe(problem));
  return file;
}

}  // namespace scrivo

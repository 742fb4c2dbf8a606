#pragma once

// The lines of a project file and of the files it includes.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/project.h"

namespace scrivo {

// Gives the lines of a text that hold anything: blanks at both ends cut off, empty lines, comments
// (";" in front) and a byte order mark left out. Lines end in CR LF, LF or CR. Text in UTF-16 with
// a byte order mark comes as UTF-8.
class ProjectLines {
 public:
  explicit ProjectLines(std::string_view text);
  ProjectLines(const ProjectLines&) = delete;
  ProjectLines& operator=(const ProjectLines&) = delete;

  bool Next(ProjectLine* line);

 private:
  std::optional<std::string> decoded_;
  std::string_view rest_;
  std::size_t number_ = 0;
};

// `text` without a pair of quotes around it.
std::string_view WithoutQuotes(std::string_view text);

// Splits at commas; quoted parts lose their quotes and keep their commas, and so do parts in square
// brackets, which keep the brackets. Blanks around parts are dropped.
std::vector<std::string> SplitQuoted(std::string_view text);

// Whether a line of [FILES] with this text means the one file of that very name in the project's
// folder: no comment, section, pattern, address or path elsewhere, and nothing that a reader cuts
// off. `path` has "/" between its names.
bool FitsFileLine(std::string_view path);

// The file of an "#include" line, without quotes or angle brackets.
std::optional<std::string> IncludedFile(std::string_view line);

// "SYMBOL=page ; comment".
std::optional<ProjectAlias> AliasOfLine(const ProjectLine& line);

// "#define SYMBOL number".
std::optional<ProjectMapEntry> MapEntryOfLine(std::string_view line);

}  // namespace scrivo

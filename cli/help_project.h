#pragma once

#include <map>
#include <string>
#include <vector>

#include "site/site.h"
#include "ui/console/console.h"
#include "writers/compile_job.h"

namespace scrivo {

// The files of a help project, which lie in the top folder of a web.
struct HelpProject {
  std::string folder;                        // of the web, as the services take it
  std::string name;                          // of the project file itself
  std::map<std::string, std::string> files;  // whole texts by name
  bool has_index = false;                    // whether any keywords were found
  // Pages that the project does not list, since a line with such a name would mean something else:
  // "[OPTIONS].htm", "what?.htm". Their locations.
  std::vector<std::string> unlisted;
};

// What a project is for: to be compiled in this process, which takes the unlisted pages besides, or
// by another program, both from pages that are changed as the job says; or to be kept, for anybody
// who reads it, beside the pages as they are on disk.
enum class ProjectUse { kInProcess, kByAnother, kToKeep };

// Writes the project of a web, in memory. Its files are called `base_name` and their extensions,
// and name one another without a folder, so that a project may be moved with its web. A job whose
// index is to be made gets none when no page has a keyword. Throws Error.
HelpProject MakeHelpProject(SiteWeb& web, CompileJob job, const Locator& locate,
                            const std::string& base_name, ProjectUse use);

// Names the pages that a project which is written leaves out, one warning for each.
void TellUnlisted(const HelpProject& project, Console& console);

// The base name of projects that are not kept: the same in each run, as it stands in the help file.
inline constexpr char kProjectBaseName[] = "Scrivo";
// A base name that no file in the folder has yet: kProjectBaseName, or with a number from 2 on.
std::string FreeProjectBaseName(const std::string& folder);

// A help project on disk. What was written is removed with the object, unless Keep was called.
class WrittenProject {
 public:
  // Writes the files. Throws Error, with a text for the user, when one cannot be written; then none
  // is left.
  explicit WrittenProject(const HelpProject& project);
  ~WrittenProject();
  WrittenProject(const WrittenProject&) = delete;
  WrittenProject& operator=(const WrittenProject&) = delete;

  void Keep() { keeps_ = true; }
  // Full paths: the project file, the contents, the index if there is one, the derived-image page.
  const std::vector<std::string>& Paths() const { return paths_; }

 private:
  void Remove();

  std::vector<std::string> paths_;
  bool keeps_ = false;
};

}  // namespace scrivo

// The files of a help project, as frmMain writes them into the web.

#include <string>
#include <utility>

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "platform/temp_files.h"
#include "system/error.h"
#include "system/files.h"
#include "system/services.h"
#include "writers/contents.h"
#include "writers/derived_images.h"
#include "writers/index.h"
#include "writers/project.h"

namespace scrivo {
namespace {

// A new temporary path in the working folder, ending in ".tmp". Raises Error (kPathNotFound)
// naming the folder when no file can be made there, as in a web that is not on disk.
std::string NewTemporaryPath() {
  const std::string& folder = Globals().working_folder;
  const std::string path = GetTempFile(folder, "Scrivo");
  if (path.empty()) {
    throw Error(kPathNotFound, "Scrivo", "No file can be made in the folder \"" + folder + "\"");
  }
  return path;
}

// The same with every ".tmp" in it, the folder's included, replaced by `extension`.
std::string NewProjectPath(const std::string& extension) {
  constexpr char kTemporary[] = ".tmp";
  constexpr std::size_t kLength = sizeof kTemporary - 1;
  std::string path = NewTemporaryPath();
  std::size_t at = path.find(kTemporary);
  while (at != std::string::npos) {
    path.replace(at, kLength, extension);
    at = path.find(kTemporary, at + extension.size());
  }
  return path;
}

// Every list is a call of EnumNodes to the error handler.
class EnumNodesLevel {
 public:
  bool Enter() { return procedure_.Enter("Kestrel.frmMain.EnumNodes"); }
  template <typename Statement>
  bool Step(Statement&& statement) {
    return procedure_.Step(std::forward<Statement>(statement));
  }
  bool Leave() { return procedure_.Leave(); }

 private:
  ProcedureLevel procedure_;
};

}  // namespace

std::string frmMain::EnumNodes(const std::shared_ptr<SiteNode>& node) {
  std::string text;
  const Locator locate = Locations();
  ContentsLists<EnumNodesLevel>(locate, &text).Write(node);
  return text;
}

bool frmMain::BuildContentFile() {
  return Procedure<bool>("Kestrel.frmMain.BuildContentFile", [&](Steps& step, bool& written) {
    const auto root = step([&] { return OpenWeb().NavigationRoot(); });
    const std::string list = step([&] { return EnumNodes(root); });
    step([&] { contents_path_ = NewProjectPath(".hhc"); });
    step([&] { WriteTextFile(contents_path_, ContentsFile(list)); });
    written = true;
  });
}

std::string frmMain::UseKeywords() {
  return Procedure<std::string>("Kestrel.frmMain.UseKeywords", [&](Steps& step, std::string& list) {
    const SiteFiles files = step([&] { return AllFiles(); });
    list = KeywordList(files, Locations(), [&](const auto& statement) { step(statement); });
  });
}

bool frmMain::BuildIndexFile() {
  return Procedure<bool>("Kestrel.frmMain.BuildIndexFile", [&](Steps& step, bool& done) {
    const std::string list = step([&] { return UseKeywords(); });
    if (!list.empty()) {
      step([&] { index_path_ = NewProjectPath(".hhk"); });
      step([&] { WriteTextFile(index_path_, IndexFile(list)); });
    } else {
      step([&] {
        TheServices().desktop->ShowMessage("No keywords were found! No index was created!",
                                           kExclamation | kOkOnly, kComponentTitle);
      });
      use_index_ = false;
    }
    done = true;
  });
}

void frmMain::LinksToDerived() {
  Procedure("Kestrel.frmMain.LinksToDerived", [&](Steps& step) {
    Files& files = *TheServices().files;
    const std::string path = step([&] { return NewTemporaryPath(); });
    IgnoringErrors([&] { files.Remove(path, false); });
    derived_path_ = path + ".htm";  // the ".tmp" stays in the name on purpose

    std::string folder;
    bool exists = false;
    IgnoringErrors([&] {
      folder = JoinPath(OpenWeb().BaseFolder()->LocalPath(), "_derived");
      exists = files.FolderExists(folder);
    });
    std::vector<std::string> names;
    if (exists) names = step([&] { return DerivedImageNames(files, folder); });
    step([&] { WriteTextFile(derived_path_, DerivedImagesPage(names)); });
  });
}

bool frmMain::BuildProjectFile() {
  return Procedure<bool>("Kestrel.frmMain.BuildProjectFile", [&](Steps& step, bool& written) {
    const StatementRunner run = [&](const auto& statement) { step(statement); };
    const Locator locate = Locations();
    CompileJob job = step([&] { return Job(); });
    job.use_index = use_index_;
    std::string text = ProjectSettings(job, {contents_path_, index_path_}, locate, run);
    const SiteFiles files = step([&] { return AllFiles(); });
    text += ProjectPages(job, files, locate, run);
    step([&] { LinksToDerived(); });
    text += ProjectDerivedPage(derived_path_);
    step([&] { project_path_ = NewProjectPath(".hhp"); });
    step([&] { WriteTextFile(project_path_, text); });
    written = true;
  });
}

}  // namespace scrivo

// The project file (.hhp): frmMain::BuildProjectFile.

#include "errors/frame.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "platform/text_file.h"
#include "writers/project.h"

namespace scrivo {

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

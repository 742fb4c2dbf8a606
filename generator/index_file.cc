// The index file (.hhk): frmMain::BuildIndexFile and its worker UseKeywords.

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "platform/text_file.h"
#include "system/services.h"
#include "writers/index.h"

namespace scrivo {

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

}  // namespace scrivo

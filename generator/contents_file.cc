// The contents file (.hhc): frmMain::BuildContentFile and its worker EnumNodes.

#include <utility>

#include "errors/frame.h"
#include "errors/procedure_level.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "platform/text_file.h"
#include "writers/contents.h"
#include "writers/contents_list.h"

namespace scrivo {
namespace {

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

}  // namespace scrivo

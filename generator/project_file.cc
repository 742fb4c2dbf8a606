// The project file (.hhp): frmMain::BuildProjectFile.

#include "errors/frame.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "html/page_kind.h"
#include "platform/paths.h"
#include "platform/text_file.h"

namespace scrivo {
namespace {

constexpr char kFixedOptions[] =
    "[OPTIONS]\r\n"
    "Auto Index = Yes\r\n"
    "Binary Index = Yes\r\n"
    "Binary TOC = Yes\r\n"
    "Compatibility = 1.1 Or later\r\n";

// The window's navigation-pane style; the two differ in the flag of the favourites tab, 0x1000.
constexpr char kStyleWithFavorites[] = "0x23520";
constexpr char kStyleWithoutFavorites[] = "0x22520";

// The window definitions. The first line, which ends in a comma, is unfinished on purpose; the
// compiler takes the second. `index_name` is null for a project without an index.
std::string WindowLines(const std::string& contents_name, const std::string* index_name) {
  std::string text = "default=,\"" + contents_name + "\",\r\n";
  text += "default=,\"" + contents_name;
  if (index_name) {
    text += "\",\"" + *index_name + "\",,,,,,,";
  } else {
    text += "\",,,,,,,,";
  }
  return text;
}

}  // namespace

bool frmMain::BuildProjectFile() {
  bool written = false;
  Procedure("Kestrel.frmMain.BuildProjectFile", [&](Steps& step) {
    std::string text = kFixedOptions;
    step([&] { text += "Compiled file=" + params_["OUTPUT"].text + "\r\n"; });
    step([&] { text += "Contents file=" + contents_path_ + "\r\n"; });
    text += "Default window=default\r\n";
    step([&] { text += "Default topic=" + StartPageLocation() + "\r\n"; });
    text += "Display compile progress=Yes\r\n";
    text += "Full-text search=Yes\r\n";
    text += "Language=0x409 English (United States)\r\n";
    step([&] { text += "Title=" + params_["TITLE"].text + "\r\n"; });
    if (use_index_) step([&] { text += "Index File = " + index_path_ + "\r\n"; });

    text += "\r\n[WINDOWS]\r\n\r\n";
    step([&] {
      const std::string index_name = GetFileName(index_path_);
      text += WindowLines(GetFileName(contents_path_), use_index_ ? &index_name : nullptr);
    });
    step([&] {
      text += params_["FAVORITES"].checked ? kStyleWithFavorites : kStyleWithoutFavorites;
    });
    text += ",,0x3006,,,,,,,,0\r\n";

    text += "\r\n[FILES]\r\n";
    AppendPages(step, &text);
    step([&] { LinksToDerived(); });
    step([&] { text += "\r\n" + derived_path_; });

    step([&] { project_path_ = NewProjectPath(".hhp"); });
    step([&] { WriteTextFile(project_path_, text); });
    written = true;
  });
  return written;
}

void frmMain::AppendPages(Steps& step, std::string* text) {
  SiteFiles files;
  std::string output;
  step([&] { files = AllFiles(); });
  step([&] { output = LocationOf(params_["OUTPUT"].text); });
  for (const std::shared_ptr<SiteFile>& file : files) {
    bool is_page = false;
    step([&] { is_page = KindOfExtension(file->Extension()) == PageKind::kPlain; });
    if (!is_page) continue;
    step([&] {
      const std::string location = LocationOf(file->Url());
      if (location != output) *text += "\r\n" + location;
    });
  }
}

}  // namespace scrivo

// The page that links the files of the "_derived" folder: frmMain::LinksToDerived.

#include <algorithm>

#include "errors/frame.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "platform/paths.h"
#include "platform/text_file.h"
#include "system/services.h"

namespace scrivo {
namespace {

std::string UpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return text;
}

// The names of a folder's own files in the order of a folder on Windows, on every system, so that
// the same web always gives the same page: by their capital letters, which puts "_" behind all
// letters; bytes break ties.
std::vector<std::string> FileNamesIn(const std::string& folder) {
  std::vector<std::pair<std::string, std::string>> sorted;
  for (const FolderEntry& entry : TheServices().files->List(folder)) {
    if (!entry.is_folder) sorted.emplace_back(UpperCase(entry.name), entry.name);
  }
  std::sort(sorted.begin(), sorted.end());
  std::vector<std::string> names;
  for (auto& [key, name] : sorted) names.push_back(std::move(name));
  return names;
}

}  // namespace

void frmMain::LinksToDerived() {
  Procedure("Kestrel.frmMain.LinksToDerived", [&](Steps& step) {
    std::string path;
    step([&] { path = NewTemporaryPath(); });
    IgnoringErrors([&] { TheServices().files->Remove(path, false); });
    derived_path_ = path + ".htm";  // the ".tmp" stays in the name on purpose

    std::string text = "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n";
    std::string folder;
    bool exists = false;
    IgnoringErrors([&] {
      folder = JoinPath(OpenWeb().BaseFolder()->LocalPath(), "_derived");
      exists = TheServices().files->FolderExists(folder);
    });
    std::vector<std::string> names;
    if (exists) step([&] { names = FileNamesIn(folder); });
    for (const std::string& name : names) text += "<img src=\"_derived/" + name + "\">\r\n";
    text += "</BODY></HTML>";  // the writer ends the line
    step([&] { WriteTextFile(derived_path_, text); });
  });
}

}  // namespace scrivo

// The page that links the files of the "_derived" folder: frmMain::LinksToDerived.

#include "writers/derived_images.h"

#include "errors/frame.h"
#include "generator/frm_main.h"
#include "generator/project_names.h"
#include "platform/paths.h"
#include "platform/text_file.h"
#include "system/services.h"

namespace scrivo {

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

}  // namespace scrivo

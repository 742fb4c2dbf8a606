#pragma once

#include <memory>
#include <string>

#include "compiler/frm_hhc.h"
#include "errors/error_handler.h"
#include "generator/frm_main.h"
#include "platform/registry.h"
#include "tests/doubles/fake_error_dialog.h"
#include "tests/doubles/fake_parameter_view.h"
#include "tests/doubles/fake_services.h"
#include "tests/doubles/memory_site.h"

namespace scrivo {

// The registry key that tells where the help compiler is.
inline constexpr char kWorkshopKey[] = "Software\\Microsoft\\HTML Help Workshop";

// The address of the web.
inline const std::string kUrl = "file:///C:/Webs/site";

// A list of a sitemap around its entries.
inline std::string List(const std::string& entries) { return "<UL>\r\n" + entries + "</UL>\r\n"; }

// A test of the generator over a web in memory, with Windows' path rules. Errors are answered by
// `dialog`, which aborts when it has no other answer.
class GeneratorTest : public WithFakeServices {
 protected:
  GeneratorTest() {
    Globals() = GlobalState(PathStyle::kWindows);
    Globals().HostApplication = site.Host();
    Globals().views = views;
    ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
    ErrorHandler().Dialog(dialog);
    files->folders.insert("C:\\Webs\\site");
  }
  ~GeneratorTest() override {
    frmMain::Unload();
    frmHHC::Unload();
    Globals() = GlobalState();
    ErrorHandler().Dialog(nullptr);
  }

  // The loaded dialog, filled from the web; what its window was told meanwhile is forgotten.
  std::shared_ptr<frmMain> Form() {
    if (!frmMain::IsLoaded()) {
      EXPECT_TRUE(frmMain::Load()->BuildUI());
      views->main.log.clear();
    }
    return frmMain::Load();
  }
  // Writes the four files of a project, as Generate does before it compiles.
  static bool WriteProject(frmMain& form) {
    form.UseIndex(form.suiParams()["USEKEYWORDS"].checked);
    return (!form.UseIndex() || form.BuildIndexFile()) && form.BuildContentFile() &&
           form.BuildProjectFile();
  }
  // The file written to this path; a missing one fails the test.
  std::string Written(const std::string& path) {
    EXPECT_TRUE(files->files.count(path)) << path << " was not written";
    return files->files[path];
  }
  // How many error reports the user has seen, and whether the last one is from this procedure.
  int Reports() const { return static_cast<int>(dialog->reports.size()); }
  bool LastReportIsFrom(const std::string& procedure) const {
    return !dialog->reports.empty() &&
           dialog->reports.back().find("\tin Kestrel.frmMain." + procedure + " at line ") !=
               std::string::npos;
  }

  // Registers a help compiler in this folder and puts it there.
  void InstallCompiler(const std::string& folder = "C:\\HHW") {
    CRegistry keys;
    keys.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
    keys.SetValue(kWorkshopKey, "InstallDir", folder, kRegSz);
    files->files[folder + "\\hhc.exe"] = "compiler";
  }

  MemorySite site;
  std::shared_ptr<FakeMainViews> views = std::make_shared<FakeMainViews>();
  std::shared_ptr<FakeErrorDialog> dialog = std::make_shared<FakeErrorDialog>();
};

}  // namespace scrivo

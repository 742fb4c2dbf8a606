#include "cli/compile_form.h"

#include "cli/control_characters.h"
#include "cli/open_web.h"
#include "cli/suggestion.h"
#include "cli/terminal_text.h"
#include "errors/error_handler.h"
#include "generator/relative_location.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "platform/settings.h"
#include "system/error.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// The dialog takes what the user typed for this web the last time from the settings; here that is
// the command line.
void SaveAsSettings(const CompileOptions& options, const std::string& web_url) {
  if (!options.title.empty()) {
    bool lost = false;
    const std::string title = FromTerminal(options.title, &lost);
    if (lost) {
      throw Error(kInvalidProcedureCall, "scrivo",
                  "the title \"" + options.title +
                      "\" holds characters that the code page of the help file lacks. "
                      "Choose another one with --code-page.");
    }
    SaveSetting(kComponentTitle, web_url, "TITLE", title);
  }
  if (!options.output.empty()) {
    SaveSetting(kComponentTitle, web_url, "OUTPUT", AbsolutePath(options.output));
  }
}

// The default output file is named after the title, which is text; a file's name is bytes of the
// system.
void NameOutputAsFilesAre(Item& output) {
  const std::string& folder = Globals().working_folder;
  const std::string name = WithoutControlCharacters(output.text.substr(folder.size()));
  output.text = folder + ToTerminal(name);
}

// A project file is named after a temporary file: each ".tmp" in that file's path gives way to the
// project file's extension, also one in the folder.
void ThrowIfNamedLikeATemporaryFile(const std::string& folder) {
  if (folder.find(".tmp") == std::string::npos) return;
  throw Error(
      kPathFileAccessError, "scrivo",
      folder +
          ": the web cannot be compiled here: the path holds \".tmp\", which only the names "
          "of temporary files may. Rename the folder or copy the web to another place.");
}

// A folder's name may hold what no line of a project file can carry.
void ThrowUnlessOneLine(const std::string& output) {
  if (!HasControlCharacters(output)) return;
  throw Error(kPathFileAccessError, "scrivo",
              output +
                  ": the help file cannot be made: its path holds a line break or another control "
                  "character. Name another folder with -o.");
}

void ChooseDefaultPage(frmMain& form, const std::string& wanted) {
  Item& item = form.suiParams()["DEFAULTPAGE"];
  std::vector<std::string> locations;
  for (const std::shared_ptr<SiteFile>& file : form.AllFiles()) {
    const std::string address = file->Url();
    const std::string location = RelativeLocation(address);
    if (wanted == location || wanted == address) {
      item.data = address;
      item.text = location;
      return;
    }
    locations.push_back(location);
  }
  const std::string suggestion = Suggest(wanted, locations);
  throw Error(kFileNotFound, "scrivo",
              wanted + ": the default page is no file of this web. " +
                  (suggestion.empty() ? "" : "Did you mean " + suggestion + "? ") +
                  "\"scrivo tree WEB\" shows its pages.");
}

}  // namespace

std::shared_ptr<frmMain> LoadCompileForm(const CompileOptions& options) {
  SaveAsSettings(options, Globals().HostApplication->CurrentWeb()->Url());
  const std::shared_ptr<frmMain> form = frmMain::Load();
  if (!form->BuildUI()) {
    throw Error(kInternalError, "scrivo", options.web + ": the web cannot be compiled");
  }
  ThrowIfNamedLikeATemporaryFile(Globals().working_folder);
  ItemPanel& items = form->suiParams();
  items["TITLE"].text = WithoutControlCharacters(items["TITLE"].text);
  if (options.output.empty()) NameOutputAsFilesAre(items["OUTPUT"]);
  ThrowUnlessOneLine(items["OUTPUT"].text);
  if (!options.default_page.empty()) ChooseDefaultPage(*form, options.default_page);
  items["USEKEYWORDS"].checked = options.use_index;
  items["FAVORITES"].checked = options.favorites;
  items["VIEWRESULT"].checked = false;  // shown once it is known to be whole
  items["CLOSELOG"].checked = true;     // the run is read when it is over
  items["LEAVEPROJECTFILE"].checked = options.keep_project;
  return form;
}

}  // namespace scrivo

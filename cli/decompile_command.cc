#include "cli/decompile_command.h"

#include "cli/compiler_choice.h"
#include "cli/open_web.h"
#include "decompile/frm_decompile.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"
#include "ui/console/console_run_view.h"

namespace scrivo {
namespace {

// This program's own unpacker, when it lies beside it; else whatever the search path has.
void ChooseUnpacker() {
  const std::string own =
      JoinPath(TheServices().system->ModuleFolder(), Globals().decompiler_file_name);
  if (TheServices().files->FileExists(own)) Globals().decompiler_file_name = own;
}

// All that the unpacker prints is what it could not do.
void TellComplaint(const std::string& line, Console& console) {
  const std::string own_name = "hh: ";
  console.Fail(line.starts_with(own_name) ? line.substr(own_name.size()) : line);
}

}  // namespace

int UnpackFile(const HelpFileOptions& options, Console& console) {
  const std::string file = AbsolutePath(options.file);
  if (!TheServices().files->FileExists(file)) {
    throw Error(kFileNotFound, "scrivo", file + ": there is no such help file");
  }
  UseRegistryInMemory();
  ChooseUnpacker();
  Globals().views = std::make_shared<ConsoleViews>(
      console, "Unpacking", [&](const std::string& line) { TellComplaint(line, console); });
  const std::shared_ptr<frmDecompile> form = frmDecompile::Load();
  form->suiParams()["FILE"].text = file;
  form->suiParams()["DIR"].text = AbsolutePath(options.folder);
  form->Decompile();
  console.EndSteps();
  if (form->Result() != 0 || console.Failures() > 0) return 1;
  console.Note("Unpacked into " + AbsolutePath(options.folder));
  return 0;
}

}  // namespace scrivo

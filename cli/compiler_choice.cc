#include "cli/compiler_choice.h"

#include "cli/open_web.h"
#include "platform/globals.h"
#include "platform/memory_registry.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "system/error.h"
#include "system/services.h"

namespace scrivo {
namespace {

constexpr const char* kWorkshopKey = "Software\\Microsoft\\HTML Help Workshop";
constexpr const char* kInstallFolder = "InstallDir";

// The folder that is registered for the user, "" when there is none.
std::string RegisteredFolder() {
  CRegistry registry;
  registry.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
  const RegistryValue value = registry.GetValue(kWorkshopKey, kInstallFolder, std::string());
  const std::string* folder = std::get_if<std::string>(&value);
  return folder ? *folder : "";
}

// The first of the compilers that may stand in that exists, "" when none does.
std::string CompilerAtHand() {
  Files& files = *TheServices().files;
  const std::string own_folder = TheServices().system->ModuleFolder();
  const std::string& name = Globals().compiler_file_name;
  const std::string extension = name.ends_with(".exe") ? ".exe" : "";
  std::vector<std::string> candidates;
  if (const std::string folder = RegisteredFolder(); !folder.empty()) {
    candidates.push_back(JoinPath(folder, name));
  }
  candidates.push_back(JoinPath(own_folder, name));
  candidates.push_back(JoinPath(own_folder, "hhc-chmcmd" + extension));
  for (const std::string& candidate : candidates) {
    if (files.FileExists(candidate)) return candidate;
  }
  return "";
}

std::string WantedCompiler(const std::string& wanted) {
  const std::string path = AbsolutePath(wanted);
  if (TheServices().files->FolderExists(path)) {
    throw Error(kPathFileAccessError, "scrivo",
                path + ": the compiler cannot be run: it is a folder. Name the program itself.");
  }
  if (!TheServices().files->FileExists(path)) {
    throw Error(
        kFileNotFound, "scrivo",
        path +
            ": the compiler cannot be run: there is no such file. Check the spelling of the path.");
  }
  return path;
}

void RegisterInMemory(const std::string& compiler) {
  UseRegistryInMemory();
  // Stored as plain text: CRegistry would expand a path that holds "%" signs.
  RegistryStore& registry = *TheServices().registry;
  RegistryHandle key = 0;
  registry.CreateKey(kHkeyCurrentUser, kWorkshopKey, kRightAllAccess, &key);
  std::string folder = GetFolder(compiler);
  if (folder.empty()) folder = Separator(Globals().path_style);  // "" would mean: not installed
  registry.SetValue(key, kInstallFolder, kRegSz,
                    reinterpret_cast<const std::uint8_t*>(folder.c_str()),
                    static_cast<std::uint32_t>(folder.size() + 1));
  registry.CloseKey(key);
  Globals().compiler_file_name = GetFileName(compiler);
}

}  // namespace

void UseRegistryInMemory() { TheServices().registry = std::make_shared<MemoryRegistry>(); }

std::string ChooseCompiler(const std::string& wanted) {
  const std::string compiler = wanted.empty() ? CompilerAtHand() : WantedCompiler(wanted);
  if (compiler.empty()) {
    throw Error(kFileNotFound, "scrivo",
                "no help compiler was found. Name one with --compiler FILE.");
  }
  if (compiler.find('"') != std::string::npos) {
    throw Error(kPathFileAccessError, "scrivo",
                compiler +
                    ": the compiler cannot be run: a command line cannot carry the "
                    "quotation mark in its path. Move it or name it through a link.");
  }
  RegisterInMemory(compiler);
  return compiler;
}

}  // namespace scrivo

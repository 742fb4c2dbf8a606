#include "host/compiler_place.h"

#include "platform/registry.h"
#include "system/services.h"
#include "system/system_services.h"

namespace scrivo::host {
namespace {

constexpr char kWorkshopKey[] = "Software\\Microsoft\\HTML Help Workshop";
constexpr char kInstallFolder[] = "InstallDir";

}  // namespace

bool SetCompilerWhereNoneIs(const std::string& folder) {
  if (FromAnsi(ToAnsi(folder)) != folder) return false;
  if (!TheServices().files->FileExists(folder + "\\hhc.exe")) return false;
  CRegistry registry;
  registry.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
  const RegistryValue set = registry.GetValue(kWorkshopKey, kInstallFolder, std::string());
  const auto* text = std::get_if<std::string>(&set);
  if (!text || !text->empty()) return false;
  return registry.SetValue(kWorkshopKey, kInstallFolder, folder, kRegSz);
}

}  // namespace scrivo::host

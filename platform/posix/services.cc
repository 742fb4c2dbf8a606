#include "platform/posix/services.h"

#include "system/services.h"

namespace scrivo {

Services CreateSystemServices() {
  Services services;
  services.files = std::make_shared<PosixFiles>();
  services.processes = std::make_shared<PosixProcesses>();
  services.desktop = std::make_shared<PosixDesktop>();
  services.shell = std::make_shared<PosixShell>();
  services.system = std::make_shared<PosixSystem>();
  return services;
}

}  // namespace scrivo

#include "platform/win32/services.h"

#include "system/services.h"

namespace scrivo {

Services CreateSystemServices() {
  Services services;
  services.files = std::make_shared<Win32Files>();
  services.registry = std::make_shared<Win32Registry>();
  services.processes = std::make_shared<Win32Processes>();
  services.desktop = std::make_shared<Win32Desktop>();
  services.shell = std::make_shared<Win32Shell>();
  services.system = std::make_shared<Win32System>();
  return services;
}

}  // namespace scrivo

#pragma once

#include <memory>

#include "system/desktop.h"
#include "system/files.h"
#include "system/processes.h"
#include "system/registry_store.h"
#include "system/shell_services.h"
#include "system/system_services.h"

namespace scrivo {

// Everything that this system asks of the operating system. The entry point (library, command line
// or test) fills it once, before anything else runs, and may replace single members (doubles in a
// test).
struct Services {
  std::shared_ptr<Files> files;
  std::shared_ptr<RegistryStore> registry;  // null on a system that has none
  std::shared_ptr<Processes> processes;
  std::shared_ptr<Desktop> desktop;
  std::shared_ptr<ShellServices> shell;
  std::shared_ptr<SystemServices> system;
};

// The process-wide services.
inline Services& TheServices() {
  static Services services;
  return services;
}

// The services of the system this program was built for.
Services CreateSystemServices();

}  // namespace scrivo

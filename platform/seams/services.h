#pragma once

#include <memory>

#include "platform/seams/desktop.h"
#include "platform/seams/files.h"
#include "platform/seams/processes.h"
#include "platform/seams/registry_store.h"
#include "platform/seams/shell_services.h"
#include "platform/seams/system_services.h"

namespace scrivo {

/// Everything that this system asks of the operating system. The entry point (library, command line
/// or test) fills it once, before anything else runs, and may replace single members (a terminal as
/// the desktop, a registry in memory).
struct Services {
  std::shared_ptr<Files> files;
  std::shared_ptr<RegistryStore> registry;
  std::shared_ptr<Processes> processes;
  std::shared_ptr<Desktop> desktop;
  std::shared_ptr<ShellServices> shell;
  std::shared_ptr<SystemServices> system;
};

/// The process-wide services.
Services& TheServices();

/// The services of the system this program was built for.
Services CreateSystemServices();

}  // namespace scrivo

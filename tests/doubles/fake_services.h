#pragma once

#include <gtest/gtest.h>

#include "errors/error_handler.h"
#include "platform/globals.h"
#include "system/services.h"
#include "tests/doubles/fake_desktop.h"
#include "tests/doubles/fake_processes.h"
#include "tests/doubles/fake_shell.h"
#include "tests/doubles/fake_system.h"
#include "tests/doubles/memory_files.h"
#include "tests/doubles/memory_registry.h"

namespace scrivo {

// A test in a world of doubles: fresh services for each test, and the process-wide error handler
// as it was created, except that errors only go to its log.
class WithFakeServices : public testing::Test {
 protected:
  WithFakeServices() {
    TheServices().files = files;
    TheServices().registry = registry;
    TheServices().desktop = desktop;
    TheServices().system = system;
    TheServices().processes = processes;
    TheServices().shell = shell;
    Globals() = GlobalState();
    CErrorHandler& handler = ErrorHandler();
    handler.CallStackEnabled(true);
    handler.CallStackClear();
    handler.SupportMail("");
    handler.Dialog(nullptr);
    handler.Init(ehaLogFile, "/log/errors.txt", true, false, trfLogFile, "/log/trace.txt");
  }
  ~WithFakeServices() override { TheServices() = {}; }

  // The error log written so far; empty when nothing went wrong.
  std::string ErrorLog() { return files->files["/log/errors.txt"]; }

  std::shared_ptr<MemoryFiles> files = std::make_shared<MemoryFiles>();
  std::shared_ptr<MemoryRegistry> registry = std::make_shared<MemoryRegistry>();
  std::shared_ptr<FakeDesktop> desktop = std::make_shared<FakeDesktop>();
  std::shared_ptr<FakeSystem> system = std::make_shared<FakeSystem>();
  std::shared_ptr<FakeProcesses> processes = std::make_shared<FakeProcesses>();
  std::shared_ptr<FakeShell> shell = std::make_shared<FakeShell>();
};

}  // namespace scrivo

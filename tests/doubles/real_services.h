#pragma once

#include <gtest/gtest.h>

#include <string>

#include "errors/error_handler.h"
#include "platform/globals.h"
#include "system/services.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {

// A test against the operating system itself, in a folder of its own that goes with it. Errors of
// the frame go to a log in that folder.
class WithRealServices : public testing::Test {
 protected:
  WithRealServices() {
    TheServices() = CreateSystemServices();
    Globals() = GlobalState();
    CErrorHandler& handler = ErrorHandler();
    handler.CallStackEnabled(true);
    handler.CallStackClear();
    handler.Init(ehaLogFile, InFolder("errors.txt"), true, false, trfLogFile,
                 InFolder("trace.txt"));
  }
  ~WithRealServices() override { TheServices() = {}; }

  std::string InFolder(const std::string& name) const { return temp_folder_ / name; }
  // The error log written so far; empty when nothing went wrong.
  std::string ErrorLog() const {
    Files& files = *TheServices().files;
    const std::string log = InFolder("errors.txt");
    return files.FileExists(log) ? ReadWholeFile(files, log) : "";
  }

 private:
  TempFolder temp_folder_;

 protected:
  const std::string folder = temp_folder_.path();
};

}  // namespace scrivo

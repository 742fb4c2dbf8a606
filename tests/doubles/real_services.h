#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "errors/error_handler.h"
#include "platform/globals.h"
#include "platform/path_style.h"
#include "platform/seams/services.h"

namespace scrivo {

/// A test against the operating system itself, in a folder of its own that goes with it. Errors of
/// the frame go to a log in that folder.
class WithRealServices : public testing::Test {
 protected:
  WithRealServices() {
    TheServices() = CreateSystemServices();
    Globals() = GlobalState();
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test.test_suite_name()) + "." + test.name();
    for (char& c : name) c = c == '/' ? '.' : c;
    folder = (std::filesystem::temp_directory_path() / ("scrivo test " + name)).string();
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    CErrorHandler& handler = ErrorHandler();
    handler.CallStackEnabled(true);
    handler.CallStackClear();
    handler.Init(ehaLogFile, InFolder("errors.txt"), true, false, trfLogFile,
                 InFolder("trace.txt"));
  }
  ~WithRealServices() override {
    TheServices() = {};
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  std::string InFolder(const std::string& name) const {
    return folder + Separator(SystemPathStyle()) + name;
  }
  /// The error log written so far; empty when nothing went wrong.
  std::string ErrorLog() const {
    Files& files = *TheServices().files;
    const std::string log = InFolder("errors.txt");
    return files.FileExists(log) ? ReadWholeFile(files, log) : "";
  }

  std::string folder;
};

}  // namespace scrivo

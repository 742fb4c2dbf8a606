#pragma once

// A folder with an output in it, for the tests of OutputFile on every system.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <string>

#include "bytes/output_file.h"
#include "tests/doubles/temp_folder.h"
#include "tests/lzx/sample_data.h"

namespace scrivo {

class OutputFileTest : public testing::Test {
 protected:
  std::unique_ptr<OutputFile> Create() const { return Create(target_); }

  static std::unique_ptr<OutputFile> Create(const std::filesystem::path& target) {
    std::error_code error;
    std::unique_ptr<OutputFile> file = OutputFile::Create(target, &error);
    EXPECT_NE(file, nullptr) << error.message();
    return file;
  }

  // Why a file cannot be made at `target`.
  static std::error_code Refusal(const std::filesystem::path& target) {
    std::error_code error;
    EXPECT_EQ(OutputFile::Create(target, &error), nullptr);
    return error;
  }

  static void Put(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  }

  static std::string Content(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_),
                                                  std::filesystem::directory_iterator()));
  }

  const TempFolder temporary_;
  const std::filesystem::path folder_ = temporary_.path();
  const std::filesystem::path target_ = folder_ / std::filesystem::path(u8"h\u00e9lp.chm");
};

}  // namespace scrivo

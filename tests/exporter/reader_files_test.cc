#include "reader/reader_files.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(ReaderFiles, AreSmall) {
  std::size_t size = 0;
  for (const ReaderFile& file : ReaderFiles()) {
    if (file.name.ends_with(".js") || file.name.ends_with(".css")) size += file.content.size();
  }
  EXPECT_GT(size, 20'000u);
  EXPECT_LT(size, 40'000u);
}

TEST(ReaderFiles, AreAllThatTheSiteNames) {
  const std::string_view index = ReaderFileContent("index.html");
  int scripts = 0;
  for (const ReaderFile& file : ReaderFiles()) {
    if (!file.name.ends_with(".js") || file.name == "page.js") continue;
    EXPECT_NE(index.find("reader/" + std::string(file.name)), std::string_view::npos) << file.name;
    ++scripts;
  }
  std::size_t named = 0;
  for (std::size_t at = 0; (at = index.find("<script", at)) != std::string_view::npos; ++at)
    ++named;
  EXPECT_EQ(static_cast<std::size_t>(scripts), named);
}

}  // namespace
}  // namespace scrivo

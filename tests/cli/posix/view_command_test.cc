#include <cstdlib>

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class ViewCommand : public ScrivoRun {
 protected:
  ViewCommand() {
    setenv("HOME", output.path().c_str(), 1);
    setenv("XDG_CACHE_HOME", output.PathOf("cache").c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("XDG_DATA_HOME");
  }
  ~ViewCommand() override {
    for (const auto& [name, value] : before_) {
      if (value.empty()) {
        unsetenv(name.c_str());
      } else {
        setenv(name.c_str(), value.c_str(), 1);
      }
    }
  }
  static std::string Book() {
    return std::string(SCRIVO_SOURCE_DIR) + "/tests/reader/book/book.hhp";
  }

 private:
  static std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
  }
  std::vector<std::pair<std::string, std::string>> before_ = {
      {"HOME", Variable("HOME")},
      {"XDG_CACHE_HOME", Variable("XDG_CACHE_HOME")},
      {"XDG_CONFIG_HOME", Variable("XDG_CONFIG_HOME")},
      {"XDG_DATA_HOME", Variable("XDG_DATA_HOME")}};
};

TEST_F(ViewCommand, OpensASiteThatItMakesOnce) {
  ASSERT_EQ(Run({"view", Book()}), 0) << err;
  ASSERT_EQ(shell->requests.size(), 1u);
  const std::filesystem::path page = shell->requests[0].file;
  EXPECT_EQ(shell->requests[0].verb, "open");
  EXPECT_EQ(page.filename(), "index.html");
  EXPECT_TRUE(page.string().starts_with(output.PathOf("cache"))) << page;
  ASSERT_TRUE(std::filesystem::exists(page));
  const auto made = std::filesystem::last_write_time(page);
  ASSERT_EQ(Run({"view", Book()}), 0) << err;
  EXPECT_EQ(shell->requests[1].file, page);
  EXPECT_EQ(std::filesystem::last_write_time(page), made);
  // Other options make another site.
  ASSERT_EQ(Run({"view", Book(), "--scripts"}), 0) << err;
  EXPECT_NE(shell->requests[2].file, page);
}

// A snap or flatpak browser may read neither hidden folders nor the cache.
TEST_F(ViewCommand, PutsTheSiteWhereAConfinedBrowserCanRead) {
  output.Write(".config/mimeapps.list", "[Default Applications]\ntext/html=web.desktop\n");
  for (const char* run : {"/snap/bin/firefox %u", "/usr/bin/flatpak run org.mozilla.firefox %u"}) {
    output.Write(".local/share/applications/web.desktop",
                 std::string("[Desktop Entry]\nExec=") + run + "\n");
    std::filesystem::remove_all(output.path() / "Downloads");
    ASSERT_EQ(Run({"view", Book()}), 0) << err;
    const std::string page = shell->requests.back().file;
    EXPECT_TRUE(page.starts_with(output.PathOf("Downloads/Scrivo/"))) << page;
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_FALSE(output.Has("cache"));
  }
}

TEST_F(ViewCommand, TellsWhereTheSiteLiesWhenNoBrowserStarts) {
  shell->result = 31;
  EXPECT_EQ(Run({"view", Book()}), 1);
  EXPECT_NE(err.find("scrivo: error: " + output.PathOf("cache")), std::string::npos) << err;
  EXPECT_NE(err.find("index.html: no browser could be started"), std::string::npos) << err;
}

}  // namespace
}  // namespace scrivo

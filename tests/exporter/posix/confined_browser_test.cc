// Browsers that may not read hidden folders.

#include <gtest/gtest.h>

#include <map>

#include "exporter/view_folder.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class ConfinedBrowser : public testing::Test {
 protected:
  ConfinedBrowser() {
    surroundings.variable = [this](const std::string& name) { return variables[name]; };
    surroundings.root = folder.path();
    variables["HOME"] = Home();
  }
  std::string Home() { return (folder.path() / "home").string(); }
  TestFolder folder;
  std::map<std::string, std::string> variables;
  Surroundings surroundings;
};

TEST_F(ConfinedBrowser, IsWhereAConfinedBrowserCanRead) {
  folder.Write("home/.config/mimeapps.list",
               "[Default Applications]\ntext/html=firefox_firefox.desktop;\n");
  folder.Write("var/lib/snapd/desktop/applications/firefox_firefox.desktop",
               "Exec=env X=1 /snap/bin/firefox %u\n");
  EXPECT_TRUE(BrowserIsConfined(surroundings));
  EXPECT_EQ(ViewFolder(surroundings), fs::path(Home()) / "Downloads" / "Scrivo");
  folder.Write("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Geladen\"\n");
  EXPECT_EQ(ViewFolder(surroundings), fs::path(Home()) / "Geladen" / "Scrivo");
}

TEST_F(ConfinedBrowser, TellsConfinedBrowsersByWhatTheyRun) {
  folder.Write("home/.config/mimeapps.list", "text/html=a.desktop\n");
  folder.Write("usr/share/applications/a.desktop", "Exec=/usr/bin/firefox %u\n");
  EXPECT_FALSE(BrowserIsConfined(surroundings));
  folder.Write("usr/share/applications/a.desktop", "Exec=/usr/bin/flatpak run org.x %u\n");
  EXPECT_TRUE(BrowserIsConfined(surroundings));
}

TEST_F(ConfinedBrowser, IsFoundWhereFlatpakKeepsIt) {
  folder.Write("home/.config/mimeapps.list", "x-scheme-handler/https=org.x.desktop\n");
  folder.Write("var/lib/flatpak/exports/share/applications/org.x.desktop", "Exec=/usr/bin/x %u\n");
  EXPECT_TRUE(BrowserIsConfined(surroundings));
}

TEST_F(ConfinedBrowser, IsTheOnlyOneThereIsWhenNoneIsChosen) {
  EXPECT_FALSE(BrowserIsConfined(surroundings));
  folder.Write("snap/bin/firefox", "");
  EXPECT_TRUE(BrowserIsConfined(surroundings));
  folder.Write("usr/lib/firefox-esr/firefox-esr", "");
  EXPECT_FALSE(BrowserIsConfined(surroundings));
}

}  // namespace
}  // namespace scrivo

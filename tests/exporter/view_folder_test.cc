#include "exporter/view_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>

#include "exporter/digest.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class ViewFolderTest : public testing::Test {
 protected:
  ViewFolderTest() {
    surroundings.variable = [this](const std::string& name) { return variables[name]; };
    surroundings.root = folder.path();
    variables["HOME"] = Home();
  }
  std::string Home() { return (folder.path() / "home").string(); }
  TestFolder folder;
  std::map<std::string, std::string> variables;
  Surroundings surroundings;
};

TEST_F(ViewFolderTest, IsTheUsersCache) {
  EXPECT_EQ(ViewFolder(surroundings), fs::path(Home()) / ".cache/scrivo/view");
  variables["XDG_CACHE_HOME"] = "/c";
  EXPECT_EQ(ViewFolder(surroundings), fs::path("/c/scrivo/view"));
  variables["LOCALAPPDATA"] = "L";
  EXPECT_EQ(ViewFolder(surroundings), fs::path("L") / "Scrivo" / "View");
}

TEST_F(ViewFolderTest, IsWhereAConfinedBrowserCanRead) {
  folder.Write("home/.config/mimeapps.list",
               "[Default Applications]\ntext/html=firefox_firefox.desktop;\n");
  folder.Write("var/lib/snapd/desktop/applications/firefox_firefox.desktop",
               "Exec=env X=1 /snap/bin/firefox %u\n");
  EXPECT_TRUE(BrowserIsConfined(surroundings));
  EXPECT_EQ(ViewFolder(surroundings), fs::path(Home()) / "Downloads" / "Scrivo");
  folder.Write("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Geladen\"\n");
  EXPECT_EQ(ViewFolder(surroundings), fs::path(Home()) / "Geladen" / "Scrivo");
}

TEST_F(ViewFolderTest, TellsConfinedBrowsersByWhatTheyRun) {
  folder.Write("home/.config/mimeapps.list", "text/html=a.desktop\n");
  folder.Write("usr/share/applications/a.desktop", "Exec=/usr/bin/firefox %u\n");
  EXPECT_FALSE(BrowserIsConfined(surroundings));
  folder.Write("usr/share/applications/a.desktop", "Exec=/usr/bin/flatpak run org.x %u\n");
  EXPECT_TRUE(BrowserIsConfined(surroundings));
}

TEST_F(ViewFolderTest, IsClearedOfOldSitesAndOfNothingElse) {
  const fs::path views = folder.path();
  const std::string kept(32, 'a'), recent(32, 'b'), old(32, 'c');
  for (const std::string& name : {kept, recent, old, old + ".77", std::string("mine"), old + "x"}) {
    folder.Write(name + "/index.html", "x");
  }
  const auto long_ago = fs::file_time_type::clock::now() - std::chrono::hours(24 * 40);
  for (const std::string& name : {kept, old, old + ".77", std::string("mine"), old + "x"}) {
    fs::last_write_time(views / name, long_ago);
  }
  ClearOldViews(views, kept);
  EXPECT_TRUE(fs::exists(views / kept));
  EXPECT_TRUE(fs::exists(views / recent));
  EXPECT_TRUE(fs::exists(views / "mine"));
  EXPECT_TRUE(fs::exists(views / (old + "x")));
  EXPECT_FALSE(fs::exists(views / old));
  EXPECT_FALSE(fs::exists(views / (old + ".77")));
}

std::string DigestOf(const std::string& text) {
  Digest digest;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  digest.Add({bytes, text.size() / 2});
  digest.Add({bytes + text.size() / 2, text.size() - text.size() / 2});
  return digest.Finish();
}

TEST(Digest, IsThatOfTheStandardsExamples) {
  EXPECT_EQ(DigestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(DigestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(DigestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(DigestOf(std::string(1000000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

}  // namespace
}  // namespace scrivo

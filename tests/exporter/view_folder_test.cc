#include "exporter/view_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <set>

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
  // Makes a site one that was looked at long ago.
  void MakeOld(const std::string& name, int days = 40) {
    fs::last_write_time(folder.path() / name / "keywords.html",
                        fs::file_time_type::clock::now() - std::chrono::hours(24 * days));
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
  variables["LOCALAPPDATA"] = "J\xC3\xB6rg";
  EXPECT_EQ(ViewFolder(surroundings), fs::path(u8"J\u00F6rg") / "Scrivo" / "View");
  variables.clear();
  EXPECT_EQ(ViewFolder(surroundings), fs::path());
}

TEST_F(ViewFolderTest, IsClearedOfOldSitesAndOfNothingElse) {
  const fs::path views = folder.path();
  const std::string kept(32, 'a'), recent(32, 'b'), old(32, 'c');
  for (const std::string& name : {kept, recent, old, old + ".77", std::string("mine"), old + "x"}) {
    folder.Write(name + "/keywords.html", "x");
    MakeOld(name);
  }
  NoteView(views / recent);
  ClearOldViews(views, kept);
  EXPECT_TRUE(fs::exists(views / kept));
  EXPECT_TRUE(fs::exists(views / recent));
  EXPECT_TRUE(fs::exists(views / "mine"));
  EXPECT_TRUE(fs::exists(views / (old + "x")));
  EXPECT_FALSE(fs::exists(views / old));
  EXPECT_FALSE(fs::exists(views / (old + ".77")));
}

TEST_F(ViewFolderTest, KeepsTheSitesThatWereLookedAtLast) {
  for (int i = 0; i < 16; ++i) {
    const std::string name(32, "0123456789abcdef"[i]);
    folder.Write(name + "/keywords.html", "x");
    MakeOld(name, i + 1);
  }
  const std::string kept(32, '0');
  ClearOldViews(folder.path(), kept);
  std::set<std::string> left;
  for (const auto& entry : fs::directory_iterator(folder.path())) {
    left.insert(entry.path().filename().string().substr(0, 1));
  }
  EXPECT_EQ(left.size(), 12u);
  EXPECT_TRUE(left.contains("0") && left.contains("9") && !left.contains("f"));
}

// What is half made may be another view at work.
TEST_F(ViewFolderTest, ClearsHalfMadeSitesAfterADay) {
  const std::string young = std::string(32, 'a') + ".1", old = std::string(32, 'a') + ".2";
  for (const std::string& name : {young, old}) {
    folder.Write(name + "/keywords.html", "x");
  }
  MakeOld(old, 2);
  ClearOldViews(folder.path(), "");
  EXPECT_TRUE(folder.Has(young));
  EXPECT_FALSE(folder.Has(old));
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

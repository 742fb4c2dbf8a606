#include "exporter/site_output.h"

#include <gtest/gtest.h>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class SiteOutputTest : public testing::Test {
 protected:
  std::string Complaint(const std::function<void()>& work) {
    try {
      work();
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }
  // Exports files with these names.
  void Export(std::initializer_list<const char*> names, bool force) {
    SiteOutput site(folder.path(), force);
    for (const char* name : names) site.Create(name, "new");
    site.Finish();
  }
  bool Has(const std::string& name) { return fs::exists(folder.path() / name); }
  TestFolder folder;
};

TEST_F(SiteOutputTest, RefusesAFolderThatIsNotEmpty) {
  folder.Write("mine.txt", "mine");
  const std::string complaint = Complaint([&] { SiteOutput site(folder.path(), false); });
  EXPECT_NE(complaint.find("the folder is not empty"), std::string::npos) << complaint;
  EXPECT_NE(complaint.find(folder.path().filename().string()), std::string::npos) << complaint;
}

TEST_F(SiteOutputTest, ReplacesTheFilesOfAnEarlierExportAndNoOthers) {
  Export({"index.html", "pages/old.htm"}, false);
  folder.Write("mine.txt", "mine");
  Export({"index.html", "pages/new.htm"}, true);
  EXPECT_TRUE(Has("index.html"));
  EXPECT_TRUE(Has("pages/new.htm"));
  EXPECT_FALSE(Has("pages/old.htm"));
  EXPECT_TRUE(Has("mine.txt"));
}

TEST_F(SiteOutputTest, StopsAtAFileOfSomebodyElse) {
  folder.Write("index.html", "mine");
  const std::string complaint = Complaint([&] { Export({"index.html"}, true); });
  EXPECT_NE(complaint.find("index.html: the file does not come from an earlier export"),
            std::string::npos);
  EXPECT_EQ(folder.Read("index.html"), "mine");
}

TEST_F(SiteOutputTest, KnowsItsFilesAfterAnExportThatWasNotFinished) {
  { SiteOutput(folder.path(), false).Create("half.htm", "half"); }
  Export({"index.html"}, true);
  EXPECT_FALSE(Has("half.htm"));
}

TEST_F(SiteOutputTest, TakesNoNameFromAListThatItWouldNotWrite) {
  const fs::path site = folder.path() / "site";
  folder.Write("mine.txt", "mine");
  folder.Write("site/site-files.txt",
               "Files of a site made by Scrivo; a new export replaces these only.\n../mine.txt\n");
  SiteOutput output(site, true);
  output.Create("index.html", "new");
  output.Finish();
  EXPECT_TRUE(Has("mine.txt"));
}

}  // namespace
}  // namespace scrivo

// The sample web's project against golden files that make_golden.py writes from the web's own
// files (see there).

#include "tests/doubles/sample_web.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "generator/frm_main.h"
#include "tests/doubles/fake_services.h"
#include "tests/doubles/temp_folder.h"
#include "webs/disk_host.h"
#include "webs/disk_web.h"

namespace scrivo {
namespace {

constexpr char kFolder[] = "/webs/Scrivo Builder sample web";

std::string SampleFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  EXPECT_TRUE(stream) << path;
  return {std::istreambuf_iterator<char>(stream), {}};
}

class SampleWebTest : public WithFakeServices {
 protected:
  SampleWebTest() {
    Globals() = GlobalState(PathStyle::kPosix);
    CopySample();
  }
  ~SampleWebTest() override {
    frmMain::Unload();
    Globals() = GlobalState();
  }

  void Expect(const std::string& path, const std::string& extension) {
    const auto golden = std::filesystem::path(GENERATOR_TEST_DATA) / ("sample" + extension);
    EXPECT_EQ(files->files[path], SampleFile(golden)) << path;
  }

 private:
  // The sample's files, in memory: nothing is written into the real folder, and what a compile has
  // left there is passed over.
  void CopySample() {
    const std::filesystem::path sample = SAMPLE_WEB;
    files->folders.insert(kFolder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sample)) {
      const std::string path =
          std::string(kFolder) + "/" + entry.path().lexically_relative(sample).generic_string();
      if (entry.is_directory()) {
        files->folders.insert(path);
      } else if (!IsLeftByACompile(entry.path())) {
        files->files[path] = SampleFile(entry.path());
      }
    }
  }
};

TEST_F(SampleWebTest, TheProjectIsThatOfTheIndependentScript) {
  WebProblemList problems;
  Globals().HostApplication =
      std::make_shared<DiskHost>(OpenDiskWeb(kFolder, DiskWebOptions(), problems));
  const std::shared_ptr<frmMain> form = frmMain::Load();
  ASSERT_TRUE(form->BuildUI());
  form->UseIndex(true);
  ASSERT_TRUE(form->BuildIndexFile() && form->BuildContentFile() && form->BuildProjectFile());
  EXPECT_TRUE(problems.problems.empty());
  EXPECT_EQ(ErrorLog(), "");
  Expect(form->ContentsPath(), ".hhc");
  Expect(form->IndexPath(), ".hhk");
  Expect(form->DerivedPath(), ".htm");
  Expect(form->ProjectPath(), ".hhp");
}

TEST(SampleWebCopy, LeavesOutWhatACompileHasLeftInTheSample) {
  const TempFolder folder;
  const std::filesystem::path sample = std::filesystem::path(folder.path()) / "sample";
  const std::filesystem::path copy = std::filesystem::path(folder.path()) / "copy";
  std::filesystem::create_directories(sample / "sub");
  for (const char* name : {"Sample.CHM", "sub/b.chm", "Scr1A2.hhc", "Scr1A3.HHK", "Scrivo.hhp",
                           "Scr1A4.tmp.htm", "index.htm", "sub/tmp.htm", "scrivo.css"}) {
    std::ofstream(sample / name) << name;
  }
  CopySampleWeb(sample, copy);
  std::set<std::string> copied;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(copy)) {
    copied.insert(entry.path().lexically_relative(copy).generic_string());
  }
  EXPECT_EQ(copied, (std::set<std::string>{"index.htm", "scrivo.css", "sub", "sub/tmp.htm"}));
}

}  // namespace
}  // namespace scrivo

// The four generated files against golden ones that make_golden.py writes from the same
// description of a web (see there).

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/paths.h"
#include "system/system_services.h"
#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

const std::filesystem::path kData = GENERATOR_TEST_DATA;

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  EXPECT_TRUE(stream) << path;
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, '\t');) fields.push_back(field);
  fields.resize(4);
  return fields;
}

class GoldenTest : public GeneratorTest, public testing::WithParamInterface<const char*> {
 protected:
  // Makes the web that ANSI text describes the open one, and its parameters those of the dialog.
  std::shared_ptr<frmMain> FormFor(const std::string& description) {
    std::map<std::string, std::string> values;
    std::map<std::string, std::shared_ptr<SiteFile>> pages;
    std::vector<std::shared_ptr<SiteNode>> path{nullptr};
    std::istringstream lines(description);
    for (std::string line; std::getline(lines, line);) {
      const std::vector<std::string> fields = Fields(line);
      if (fields[0] == "web") {
        if (fields[2][0] == '/') Globals().path_style = PathStyle::kPosix;
        site.url = FromRegistry(fields[1]);
        site.local_path = FromRegistry(fields[2]);
      } else if (fields[0] == "page") {
        pages[fields[1]] =
            site.AddPage(FromRegistry(fields[1]), FromAnsi(fields[2]), FromAnsi(fields[3]));
      } else if (fields[0] == "node") {
        path.resize(std::stoul(fields[1]));
        path.push_back(site.AddNode(path.back(), FromAnsi(fields[2]), pages[fields[3]]));
      } else if (fields[0] == "derived") {
        derived_.push_back(FromRegistry(fields[1]));
      } else {
        values[fields[0]] = fields[1];
      }
    }
    AddFolders();
    const std::shared_ptr<frmMain> form = Form();
    form->suiParams()["TITLE"].text = FromAnsi(values["title"]);
    form->suiParams()["OUTPUT"].text = FromRegistry(values["output"]);
    form->suiParams()["DEFAULTPAGE"].data = FromRegistry(values["defaultpage"]);
    form->suiParams()["FAVORITES"].checked = values["favorites"] == "on";
    form->suiParams()["USEKEYWORDS"].checked = values["index"] == "on";
    return form;
  }

  void Expect(const std::string& path, const std::string& extension) {
    EXPECT_EQ(Written(path), ReadFile(kData / (GetParam() + extension))) << path;
  }

 private:
  void AddFolders() {
    files->folders.insert(site.local_path);
    if (derived_.empty()) return;
    const std::string folder = JoinPath(site.local_path, "_derived");
    files->folders.insert(folder);
    for (const std::string& name : derived_) files->files[JoinPath(folder, name)] = "image";
  }

  std::vector<std::string> derived_;
};

TEST_P(GoldenTest, TheFilesAreThoseOfTheIndependentScript) {
  const std::shared_ptr<frmMain> form =
      FormFor(ReadFile(kData / (std::string(GetParam()) + ".site")));
  ASSERT_TRUE(WriteProject(*form));
  EXPECT_EQ(Reports(), 0);
  Expect(form->ContentsPath(), ".hhc");
  Expect(form->DerivedPath(), ".htm");
  Expect(form->ProjectPath(), ".hhp");
  if (std::filesystem::exists(kData / (std::string(GetParam()) + ".hhk"))) {
    Expect(form->IndexPath(), ".hhk");
  } else {
    EXPECT_EQ(form->IndexPath(), "");
  }
}

INSTANTIATE_TEST_SUITE_P(Webs, GoldenTest, testing::Values("rules", "bare", "posix"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace scrivo

// Text becomes ANSI bytes in the files that the generator writes; names stay names.

#include "system/system_services.h"
#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

const std::string kContentsLabel = "\xE7\x9B\xAE\xE5\xBD\x95";  // 目录
const std::string kHouse = "\xD0\x94\xD0\xBE\xD0\xBC";          // Дом
const std::string kPage = kContentsLabel + ".htm", kCafePage = "caf\xC3\xA9.htm";

class AnsiTextTest : public GeneratorTest {
 protected:
  std::string Contents() {
    EXPECT_TRUE(Form()->BuildContentFile());
    return Written(Form()->ContentsPath());
  }
  std::string Project() {
    EXPECT_TRUE(Form()->BuildProjectFile());
    return Written(Form()->ProjectPath());
  }
  std::string Index() {
    EXPECT_TRUE(Form()->BuildIndexFile());
    return Written(Form()->IndexPath());
  }
  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }
};

TEST_F(AnsiTextTest, LabelsAndLocationsAreInTheCodePage) {
  system->code_page = 936;
  site.AddNode(nullptr, kContentsLabel + kHouse, site.AddPage(kPage));
  EXPECT_TRUE(Holds(Contents(),
                    "VALUE=\"\xC4\xBF\xC2\xBC\xA7\xA5\xA7\xE0\xA7\xDE\"><PARAM NAME=\"Local\" "
                    "VALUE=\"\xC4\xBF\xC2\xBC.htm\">"));
}

TEST_F(AnsiTextTest, ALabelThatTheCodePageLacksIsReplacedAndItsPageIsStillNamed) {
  site.AddNode(nullptr, kContentsLabel, site.AddPage(kPage));
  EXPECT_TRUE(Holds(Contents(), "VALUE=\"??\"><PARAM NAME=\"Local\" VALUE=\"" + kPage + "\">"));
  EXPECT_TRUE(Holds(Project(), "\r\n" + kPage + "\r\n"));
}

TEST_F(AnsiTextTest, KeywordsAndTitlesOfTheIndexAreInTheCodePage) {
  site.AddPage(kCafePage, "Caf\xC3\xA9",
               "\xC3\xBC"
               "ber;\xC3\xA9");
  const std::string index = Index();
  EXPECT_TRUE(Holds(index,
                    "VALUE=\"\xFC"
                    "ber\"><PARAM NAME=\"Name\" VALUE=\"Caf\xE9\"><PARAM "
                    "NAME=\"Local\" VALUE=\"caf\xE9.htm\">"));
  EXPECT_TRUE(Holds(index, "VALUE=\"\xE9\">"));
}

TEST_F(AnsiTextTest, TheSecondByteOfACharacterPartsNoKeywords) {
  system->code_page = 932;
  site.AddPage("a.htm", "A", "\xE3\x82\xBD;b");  // ソ, whose second byte is a backslash
  EXPECT_TRUE(Holds(Index(), "VALUE=\"\x83\x5C\">"));
}

TEST_F(AnsiTextTest, TheProjectsTitleAndFilesAreInTheCodePage) {
  site.AddPage(kCafePage);
  const auto form = Form();
  form->suiParams()["TITLE"].text = "Caf\xC3\xA9";
  form->suiParams()["OUTPUT"].text = "C:\\\xC3\xBC\\Caf\xC3\xA9.CHM";
  const std::string project = Project();
  EXPECT_TRUE(Holds(project, "Compiled file=C:\\\xFC\\Caf\xE9.CHM\r\n"));
  EXPECT_TRUE(Holds(project, "Title=Caf\xE9\r\n"));
  EXPECT_TRUE(Holds(project, "\r\ncaf\xE9.htm\r\n"));
}

TEST_F(AnsiTextTest, DerivedImagesAreNamedInTheCodePage) {
  files->folders.insert("C:\\Webs\\site\\_derived");
  files->files["C:\\Webs\\site\\_derived\\kn\xC3\xB6pfe.gif"] = "";
  EXPECT_TRUE(Form()->BuildProjectFile());
  EXPECT_TRUE(Holds(Written(Form()->DerivedPath()), "<img src=\"_derived/kn\xF6pfe.gif\">"));
}

TEST_F(AnsiTextTest, InThePosixStyleNamesAreTheirBytes) {
  Globals().path_style = PathStyle::kPosix;
  site.url = "file:///web";
  site.local_path = "/web";
  files->folders.insert("/web");
  site.AddNode(nullptr, "Caf\xC3\xA9", site.AddPage("caf\xE9.htm"));
  site.AddPage(kCafePage);
  EXPECT_TRUE(Holds(Contents(), "VALUE=\"Caf\xE9\"><PARAM NAME=\"Local\" VALUE=\"caf\xE9.htm\">"));
  EXPECT_TRUE(Holds(Project(), "\r\ncaf\xE9.htm\r\n" + kCafePage + "\r\n"));
}

TEST_F(AnsiTextTest, TheLogIsInTheCodePage) {
  ErrorHandler().ErrorHandlerActions(ehaLogFile);
  site.AddNode(nullptr, "A", site.AddPage("a.htm"));
  const auto form = Form();
  site.Fail("Label A", 1, Error(5, "", "Caf\xC3\xA9"));
  form->BuildContentFile();
  EXPECT_TRUE(Holds(ErrorLog(), "Error: 5, (Caf\xE9)")) << ErrorLog();
}

}  // namespace
}  // namespace scrivo

// The help project of a web in memory: its texts, and its files on a disk.

#include "cli/help_project.h"

#include "system/error.h"
#include "tests/doubles/fake_services.h"
#include "tests/doubles/memory_site.h"

namespace scrivo {
namespace {

class HelpProjectTest : public WithFakeServices {
 protected:
  HelpProjectTest() {
    Globals() = GlobalState(PathStyle::kPosix);
    files->folders.insert("/web");
    job.title = "My help";
    job.output = "/out/a.chm";
  }
  ~HelpProjectTest() override { Globals() = GlobalState(); }

  HelpProject Make(const std::string& base_name = "Scrivo", ProjectUse use = ProjectUse::kToKeep) {
    const auto host = site.Host();
    const auto web = site.Web();
    return MakeHelpProject(
        *web, job,
        [=](const std::string& address) { return host->RelativeLocation(*web, address); },
        base_name, use);
  }

  MemorySite site{"file:///web", "/web"};
  CompileJob job;
};

TEST_F(HelpProjectTest, NamesItsFilesWithoutAFolder) {
  site.AddNode(nullptr, "Start", site.AddPage("docs/start.htm", "Start", "k"));
  job.default_page = "file:///web/docs/start.htm";
  const HelpProject project = Make("Scrivo2");
  EXPECT_EQ(project.folder, "/web");
  EXPECT_EQ(project.name, "Scrivo2.hhp");
  EXPECT_TRUE(project.has_index);
  EXPECT_EQ(project.files.at("Scrivo2.hhp"),
            "[OPTIONS]\r\n"
            "Auto Index = Yes\r\n"
            "Binary Index = Yes\r\n"
            "Binary TOC = Yes\r\n"
            "Compatibility = 1.1 Or later\r\n"
            "Compiled file=/out/a.chm\r\n"
            "Contents file=Scrivo2.hhc\r\n"
            "Default window=default\r\n"
            "Default topic=docs/start.htm\r\n"
            "Display compile progress=Yes\r\n"
            "Full-text search=Yes\r\n"
            "Language=0x409 English (United States)\r\n"
            "Title=My help\r\n"
            "Index File = Scrivo2.hhk\r\n"
            "\r\n"
            "[WINDOWS]\r\n"
            "\r\n"
            "default=,\"Scrivo2.hhc\",\r\n"
            "default=,\"Scrivo2.hhc\",\"Scrivo2.hhk\",,,,,,,0x23520,,0x3006,,,,,,,,0\r\n"
            "\r\n"
            "[FILES]\r\n"
            "\r\n"
            "docs/start.htm\r\n"
            "Scrivo2.tmp.htm\r\n");
  EXPECT_EQ(project.files.size(), 4u);
}

TEST_F(HelpProjectTest, CompilesNoContentsInProcessWhereViewersWouldShowTitlesForLabels) {
  const auto binary = [&](ProjectUse use) {
    return Make("A", use).files.at("A.hhp").find("Binary TOC = Yes") != std::string::npos;
  };
  site.AddNode(nullptr, "Heading", nullptr);
  site.AddNode(nullptr, "Title", site.AddPage("a.htm", "Title", "k"));
  EXPECT_TRUE(binary(ProjectUse::kInProcess));
  site.AddNode(nullptr, "Label", site.AddPage("b.htm", "New Page 1", "k"));
  EXPECT_FALSE(binary(ProjectUse::kInProcess));
  EXPECT_TRUE(binary(ProjectUse::kToKeep));
}

TEST_F(HelpProjectTest, DoesNotListAPageWhoseLineWouldMeanSomethingElse) {
  const std::vector<std::string> odd = {";c.htm",    "[OPTIONS].htm",  " a.htm",
                                        "what?.htm", "#include a.htm", "a\\b.htm"};
  for (const std::string& name : odd) site.AddPage(name, "T", "k");
  site.AddNode(nullptr, "Start", site.AddPage("C#.htm", "C", "k"));
  job.default_page = "file:///web/C#.htm";
  const HelpProject project = Make();
  EXPECT_EQ(project.unlisted, odd);
  const std::string& text = project.files.at("Scrivo.hhp");
  EXPECT_TRUE(text.ends_with("[FILES]\r\n\r\nC#.htm\r\nScrivo.tmp.htm\r\n")) << text;
  EXPECT_NE(text.find("Default topic=C#.htm\r\n"), std::string::npos);
  EXPECT_EQ(project.files.at("Scrivo.hhk").find("what"), std::string::npos);
}

TEST_F(HelpProjectTest, HasAddressesThatLeadToAnyPageInProcess) {
  site.AddNode(nullptr, "C", site.AddPage("C#.htm", "C", "k"));
  site.AddPage("50%?.htm", "P", "k");
  site.AddPage("plain 100%.htm", "P", "k");
  job.default_page = "file:///web/C#.htm";
  const HelpProject project = Make("Scrivo", ProjectUse::kInProcess);
  EXPECT_EQ(project.unlisted, std::vector<std::string>{"50%?.htm"});
  EXPECT_NE(project.files.at("Scrivo.hhp").find("Default topic=C%23.htm\r\n"), std::string::npos);
  EXPECT_NE(project.files.at("Scrivo.hhc").find("VALUE=\"C%23.htm\""), std::string::npos);
  EXPECT_NE(project.files.at("Scrivo.hhk").find("VALUE=\"50%25%3F.htm\""), std::string::npos);
  EXPECT_NE(project.files.at("Scrivo.hhk").find("VALUE=\"plain 100%.htm\""), std::string::npos);
}

TEST_F(HelpProjectTest, HasNoIndexWithoutKeywords) {
  site.AddPage("a.htm", "A");
  const HelpProject project = Make();
  EXPECT_FALSE(project.has_index);
  EXPECT_EQ(project.files.count("Scrivo.hhk"), 0u);
  EXPECT_EQ(project.files.at("Scrivo.hhp").find("Index File"), std::string::npos);
}

TEST_F(HelpProjectTest, LinksTheDerivedImages) {
  files->folders.insert("/web/_derived");
  files->files["/web/_derived/b.gif"] = "";
  files->files["/web/_derived/a.gif"] = "";
  EXPECT_EQ(Make().files.at("Scrivo.tmp.htm"),
            "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n"
            "<img src=\"_derived/a.gif\">\r\n"
            "<img src=\"_derived/b.gif\">\r\n"
            "</BODY></HTML>\r\n");
}

TEST_F(HelpProjectTest, ThrowsWhatTheWebThrows) {
  site.AddNode(nullptr, "Start", site.AddPage("start.htm"));
  site.Fail("Label Start", 1);
  EXPECT_THROW(Make(), Error);
}

TEST_F(HelpProjectTest, TakesABaseNameThatNoFileHasInAnyCase) {
  EXPECT_EQ(FreeProjectBaseName("/web"), "Scrivo");
  files->files["/web/SCRIVO.HHK"] = "";
  EXPECT_EQ(FreeProjectBaseName("/web"), "Scrivo2");
  files->files["/web/scrivo2.tmp.htm"] = "";
  EXPECT_EQ(FreeProjectBaseName("/web"), "Scrivo3");
}

TEST_F(HelpProjectTest, IsRemovedFromTheDiskUnlessItIsKept) {
  site.AddPage("a.htm", "A", "k");
  const HelpProject project = Make();
  {
    WrittenProject written(project);
    EXPECT_EQ(written.Paths(),
              (std::vector<std::string>{"/web/Scrivo.hhp", "/web/Scrivo.hhc", "/web/Scrivo.hhk",
                                        "/web/Scrivo.tmp.htm"}));
    EXPECT_EQ(files->files.at("/web/Scrivo.hhc"), project.files.at("Scrivo.hhc"));
  }
  EXPECT_TRUE(files->files.empty());
  WrittenProject(project).Keep();
  EXPECT_EQ(files->files.size(), 4u);
}

TEST_F(HelpProjectTest, LeavesNothingBehindWhenAFileCannotBeWritten) {
  const HelpProject project = Make();
  files->failures.emplace("write /web/Scrivo.tmp.htm", Error(kDiskFull, "", "Disk full"));
  try {
    WrittenProject written(project);
    ADD_FAILURE() << "it was written";
  } catch (const Error& error) {
    EXPECT_EQ(error.number, kDiskFull);
    EXPECT_EQ(error.description, "/web: the project files cannot be written here: Disk full");
  }
  EXPECT_TRUE(files->files.empty());
}

}  // namespace
}  // namespace scrivo

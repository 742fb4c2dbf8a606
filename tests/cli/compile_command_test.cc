// Whole compiles through the command line, with a compiler that does as it is told.

#include "cli/compile_options.h"
#include "platform/registry.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class CompileCommand : public ScrivoRun {};

TEST_F(CompileCommand, MakesTheFileAndTellsWhatIsInIt) {
  EXPECT_EQ(Compile("make"), 0);
  EXPECT_EQ(Plain(out),
            "Made OUT/a.chm: 2 pages, 2 contents entries, 3 index entries, 120 bytes, 0:00\n");
  EXPECT_EQ(Plain(err), "Reading WEB\nCompiling\n");
  EXPECT_TRUE(output.Has("a.chm"));
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(CompileCommand, SaysNothingWhenQuiet) {
  EXPECT_EQ(Compile("make", {"-q"}), 0);
  EXPECT_EQ(out + err, "");
}

TEST_F(CompileCommand, TakesACompilerThatPrintsNothing) {
  EXPECT_EQ(Compile("make silently"), 0);
  EXPECT_TRUE(output.Has("a.chm"));
}

TEST_F(CompileCommand, TellsTheCompilersWarningsOnTheErrorStream) {
  EXPECT_EQ(Compile("make with warnings"), 0);
  EXPECT_NE(err.find("scrivo: warning: There are errors and warnings while compiling.\n"
                     "  Warning: a\n  Warning: b\n"),
            std::string::npos);
  EXPECT_EQ(Compile("make with warnings", {"-q"}), 0);
  EXPECT_EQ(err, "");
}

TEST_F(CompileCommand, TellsTheCompilersErrorsEvenWhenQuiet) {
  EXPECT_EQ(Compile("make with errors", {"-q"}), 0);
  EXPECT_EQ(err,
            "scrivo: error: There are errors and warnings while compiling.\n"
            "  Error: Compilation failed while compiling x.gif.\n");
}

TEST_F(CompileCommand, ExitsWithOneOnMessagesWhenStrictAndKeepsTheFile) {
  EXPECT_EQ(Compile("make with warnings", {"--strict"}), 1);
  EXPECT_TRUE(output.Has("a.chm"));
  EXPECT_EQ(Compile("make", {"--strict"}), 0);
}

TEST_F(CompileCommand, TellsTheMessagesThatAStrictRunFailsForEvenWhenQuiet) {
  EXPECT_EQ(Compile("make with warnings", {"-q", "--strict"}), 1);
  EXPECT_EQ(err,
            "scrivo: error: The compiler gave messages, and --strict allows none:\n"
            "  Warning: a\n  Warning: b\n");
  EXPECT_EQ(Compile("make with errors", {"-q", "--strict"}), 1);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 2) << "they are told once: " << err;
}

TEST_F(CompileCommand, RefusesAnOutputWhoseNameTheCompilerWouldCut) {
  output.Write("a.chm", "old");
  for (const std::string& name : {Output() + " ", " " + Output(), Output() + "\t"}) {
    EXPECT_EQ(Compile("make", {"-o", name}), 2) << name;
    EXPECT_TRUE(err.starts_with("scrivo: --output is given ")) << err;
  }
  EXPECT_EQ(output.Read("a.chm"), "old");
}

TEST_F(CompileCommand, RefusesOptionsThatWouldAddLinesToTheProject) {
  output.Write("b.chm", "old");
  const std::string more = "\r\nCompiled file=" + output.PathOf("b.chm");
  for (const char* option : {"--title", "--default-page", "-o"}) {
    EXPECT_EQ(Compile("make", {option, "index.htm" + more}), 2) << option;
    EXPECT_NE(err.find("is given a line break or another control character; give "),
              std::string::npos)
        << err;
  }
  EXPECT_EQ(output.Read("b.chm"), "old");
}

TEST_F(CompileCommand, TakesALabelForATitleWithoutItsControlCharacters) {
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1002\r\n1000,index.htm,0,My\x1Ehome\tpage,0,100,0\r\n"
            "1001,docs/a.htm,0,First,1000,100,0");
  EXPECT_EQ(Compile("make and show the project"), 0) << err;
  EXPECT_NE(web.Read("project.txt").find("Title=My home page\r"), std::string::npos)
      << web.Read("project.txt");
  EXPECT_EQ(Run({"compile", WebPath(), "--compiler", TestProgram("test_fake_hhc")}), 0) << err;
  EXPECT_TRUE(web.Has("My home page.CHM"));
}

TEST_F(CompileCommand, KeepsTheEarlierFileWhenTheCompilerRefuses) {
  output.Write("a.chm", "old");
  EXPECT_EQ(Compile("refuse"), 1);
  EXPECT_EQ(output.Read("a.chm"), "old");
  EXPECT_NE(Plain(err).find("scrivo: error: OUT/a.chm: no help file was made; the earlier file is "
                            "kept.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(out, "");
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(CompileCommand, ShowsTheLastLinesOfACompilerThatFailsWithoutAMessage) {
  EXPECT_EQ(Compile("fail without a message"), 1);
  EXPECT_NE(Plain(err).find("no help file was made. HHC ended with exit status 0. To see why, keep "
                            "the project with --keep-project and run the compiler on it.\n"
                            "  one\n  two\n  Unable to open it.\n"),
            std::string::npos)
      << err;
}

TEST_F(CompileCommand, SaysSoWhenTheCompilerDoesNothing) {
  EXPECT_EQ(Compile("do nothing"), 1);
  EXPECT_NE(Plain(err).find("no help file was made. HHC ended with exit status 0. To see"),
            std::string::npos)
      << err;
}

TEST_F(CompileCommand, RemovesAFileThatIsCutShort) {
  EXPECT_EQ(Compile("cut the file short"), 1);
  EXPECT_FALSE(output.Has("a.chm"));
  EXPECT_NE(Plain(err).find("scrivo: error: OUT/a.chm: this is no whole help file; it was removed. "
                            "HHC ended with exit status 1. "),
            std::string::npos)
      << err;
}

TEST_F(CompileCommand, PutsTheEarlierFileBackAfterACrash) {
  output.Write("a.chm", "old");
  EXPECT_EQ(Compile("crash"), 1);
  EXPECT_EQ(output.Read("a.chm"), "old");
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_NE(Plain(err).find("OUT/a.chm: this is no whole help file; it was removed; the earlier "
                            "file is kept. HHC "),
            std::string::npos)
      << err;
}

TEST_F(CompileCommand, EndsACompilerThatClosesItsOutputAndLivesOn) {
  EXPECT_EQ(Compile("live on"), 1);
  EXPECT_NE(
      Plain(err).find("OUT/a.chm: no help file was made. HHC closed its output without ending, "
                      "and was ended. "),
      std::string::npos)
      << err;
}

TEST_F(CompileCommand, BearsACompilerThatPrintsMuch) {
  EXPECT_EQ(Compile("print much", {"-q"}), 0);
  EXPECT_EQ(out + err, "");
}

TEST_F(CompileCommand, SaysWhatIsWrongWithACompilerThatCannotBeRun) {
  const std::string missing = web.PathOf("none");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output(), "--compiler", missing}), 1);
  EXPECT_EQ(Plain(err),
            "Reading WEB\nscrivo: error: WEB/none: the compiler cannot be run: there is "
            "no such file. Check the spelling of the path.\n");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output(), "--compiler", WebPath()}), 1);
  EXPECT_EQ(Plain(err),
            "Reading WEB\nscrivo: error: WEB: the compiler cannot be run: it is a "
            "folder. Name the program itself.\n");
}

TEST_F(CompileCommand, DoesNotTellHowACompilerEndedThatWasNeverStarted) {
  web.Write("hhc", "no program");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output(), "--compiler", web.PathOf("hhc"), "-q"}), 1);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
  EXPECT_EQ(err.find("exit status"), std::string::npos) << err;
  output.Write("a.chm", "old");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output(), "--compiler", web.PathOf("hhc"), "-q"}), 1);
  EXPECT_EQ(err.find("exit status"), std::string::npos) << err;
  EXPECT_NE(Plain(err).find("OUT/a.chm: no help file was made; the earlier file is kept.\n"),
            std::string::npos)
      << err;
}

TEST_F(CompileCommand, SaysSoWhenTheCompilerIsNoProgram) {
  output.Write("a.chm", "old");
  web.Write("hhc", "no program");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output(), "--compiler", web.PathOf("hhc")}), 1);
  EXPECT_NE(Plain(err).find("scrivo: error: WEB/hhc: the compiler could not be started: it "),
            std::string::npos)
      << err;
  EXPECT_EQ(output.Read("a.chm"), "old");
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(CompileCommand, RefusesAnOutputThatCannotBeMade) {
  const std::string none = output.PathOf("none");
  EXPECT_EQ(Compile("make", {"-o", JoinPath(none, "a.chm")}), 1);
  EXPECT_NE(Plain(err).find("OUT/none/a.chm: the help file cannot be made: there is no folder "
                            "OUT/none. Make it first.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(Compile("make", {"-o", output.path().string()}), 1);
  EXPECT_NE(Plain(err).find("OUT: the help file cannot be made: this is a folder"),
            std::string::npos);
}

TEST_F(CompileCommand, NamesTheDefaultOutputAfterTheTitle) {
  web.Write("behaviour.txt", "make");
  EXPECT_EQ(Run({"compile", WebPath(), "--compiler", TestProgram("test_fake_hhc")}), 0);
  EXPECT_TRUE(web.Has("Home.CHM"));
  EXPECT_EQ(
      Run({"compile", WebPath(), "--compiler", TestProgram("test_fake_hhc"), "--title", "A/B: C"}),
      0);
  EXPECT_TRUE(web.Has("A_B_ C.CHM"));
}

TEST_F(CompileCommand, GivesTheCompilerTheProjectThatTheOptionsDescribe) {
  EXPECT_EQ(Compile("make and show the project", {"--title", "My help", "--default-page",
                                                  "docs/a.htm", "--no-index", "--no-favorites"}),
            0);
  const std::string project = web.Read("project.txt");
  EXPECT_NE(project.find("Title=My help"), std::string::npos) << project;
  EXPECT_NE(project.find("Default topic=docs/a.htm"), std::string::npos);
  EXPECT_NE(project.find("Compiled file=" + Output()), std::string::npos);
  EXPECT_NE(project.find("0x22520"), std::string::npos);
  EXPECT_EQ(project.find("Index File"), std::string::npos);
  EXPECT_EQ(Compile("make and show the project"), 0);
  const std::string usual = web.Read("project.txt");
  EXPECT_NE(usual.find("Default topic=index.htm"), std::string::npos);
  EXPECT_NE(usual.find("0x23520"), std::string::npos);
  EXPECT_NE(usual.find("Index File = "), std::string::npos);
}

TEST_F(CompileCommand, RefusesADefaultPageThatTheWebDoesNotHave) {
  EXPECT_EQ(Compile("make", {"--default-page", "docs/b.htm"}), 1);
  EXPECT_NE(
      err.find(
          "docs/b.htm: the default page is no file of this web. Did you mean docs/a.htm? \"scrivo "
          "tree WEB\" shows its pages.\n"),
      std::string::npos)
      << err;
  EXPECT_FALSE(output.Has("a.chm"));
}

TEST_F(CompileCommand, KeepsTheProjectWhenAsked) {
  EXPECT_EQ(Compile("make", {"--keep-project"}), 0);
  EXPECT_EQ(ProjectFiles().size(), 4u);
}

TEST_F(CompileCommand, NamesTheOptionThatMakesAnIndexWhenThereAreNoKeywords) {
  web.Write("docs/a.htm", "<title>A</title>");
  EXPECT_EQ(Compile("make"), 0);
  EXPECT_NE(err.find("scrivo: warning: No keywords were found! No index was created!\n"
                     "  The pages' titles or headings can make an index: --index titles, "),
            std::string::npos);
  EXPECT_NE(out.find("no index entries"), std::string::npos);
  EXPECT_EQ(Compile("make", {"--index", "titles"}), 0);
  EXPECT_NE(out.find("2 index entries"), std::string::npos) << out;
}

TEST_F(CompileCommand, AdvisesNoIndexThatWasJustTried) {
  web.Write("docs/a.htm", "<title>A</title>");
  EXPECT_EQ(Compile("make", {"--index", "headings"}), 0);
  EXPECT_NE(err.find("\n  The pages' titles can make an index: --index titles.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(err.find("--index headings"), std::string::npos) << err;
  const IndexSource titles = IndexSource::kTitles;
  const IndexSource headings = IndexSource::kHeadings;
  EXPECT_EQ(NoIndexHint({IndexSource::kKeywords, titles}),
            "The pages' headings can make an index: --index headings.");
  EXPECT_EQ(NoIndexHint({headings, titles}),
            "--no-index makes the help file without looking for any.");
}

TEST_F(CompileCommand, TakesTheContentsThatWereChosen) {
  web.Write("docs/more.htm", "<title>More</title>");
  EXPECT_EQ(Compile("make", {"--contents", "navigation"}), 0);
  EXPECT_NE(out.find(", 2 contents entries, "), std::string::npos) << out;
  EXPECT_EQ(Compile("make", {"--contents", "folders"}), 0);
  EXPECT_NE(out.find(", 4 contents entries, "), std::string::npos) << out;
  EXPECT_EQ(err.find("--contents"), std::string::npos) << err;
}

TEST_F(CompileCommand, SaysSoWhenItChoseTheFoldersItself) {
  const std::string line =
      "The contents follow the web's folders: it has no navigation structure beyond the home page. "
      "Take that all the same with --contents navigation.\n";
  EXPECT_EQ(Compile("make"), 0);
  EXPECT_EQ(err.find(line), std::string::npos) << err;
  web.Write("_vti_pvt/structure.cnf", "3.0.0.507\r\n1001\r\n1000,index.htm,0,Home,0,100,0\r\n");
  EXPECT_EQ(Compile("make"), 0);
  EXPECT_NE(err.find(line), std::string::npos) << err;
  EXPECT_EQ(Compile("make", {"-q"}), 0);
  EXPECT_EQ(err, "");
}

TEST_F(CompileCommand, RefusesAWebWhosePathLooksLikeATemporaryFile) {
  web.Write("old.tmp.d/index.htm", "<title>Home</title>");
  web.Write("old.tmp.d/behaviour.txt", "make");
  const std::string inner = web.PathOf("old.tmp.d");
  EXPECT_EQ(Run({"compile", inner, "-o", Output(), "--compiler", TestProgram("test_fake_hhc")}), 1);
  EXPECT_NE(
      Plain(err).find("scrivo: error: WEB/old.tmp.d: the web cannot be compiled here: the path "
                      "holds \".tmp\", which only the names of temporary files may. Rename the "
                      "folder or copy the web to another place.\n"),
      std::string::npos)
      << err;
  EXPECT_EQ(Run({"project", inner}), 1);
  EXPECT_NE(err.find("holds \".tmp\""), std::string::npos) << err;
}

TEST_F(CompileCommand, ShowsTheResultThroughTheShellWhenAsked) {
  EXPECT_EQ(Compile("make"), 0);
  EXPECT_TRUE(shell->requests.empty());
  EXPECT_EQ(Compile("make with warnings", {"--view"}), 0);
  ASSERT_EQ(shell->requests.size(), 1u);
  EXPECT_EQ(shell->requests[0].file, Output());
  UseServices();
  EXPECT_EQ(Compile("refuse", {"--view"}), 1);
  EXPECT_EQ(shell->requests.size(), 1u) << "there is nothing to show";
}

TEST_F(CompileCommand, RemembersNothingBetweenRuns) {
  EXPECT_EQ(Compile("make", {"--title", "Once", "--no-favorites"}), 0);
  EXPECT_EQ(Compile("make and show the project"), 0);
  EXPECT_NE(web.Read("project.txt").find("Title=Home\r"), std::string::npos);
  std::vector<std::string> keys;
  TheServices().registry = registry;
  CRegistry users;
  users.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
  EXPECT_EQ(users.GetAllSubKeys("", &keys), 0) << "the user's registry is as it was";
}

TEST_F(CompileCommand, RunsTheCompilerThatIsRegisteredForTheUser) {
  std::filesystem::copy_file(TestProgram("test_fake_hhc"),
                             output.PathOf(GlobalState().compiler_file_name));
  CRegistry users;
  users.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
  users.SetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir", output.path().string(),
                 kRegSz);
  web.Write("behaviour.txt", "make");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output()}), 0);
  EXPECT_TRUE(output.Has("a.chm"));
}

}  // namespace
}  // namespace scrivo

// Whole compiles through the command line, with this program's own compiler.

#include "cli/compile_options.h"
#include "cli/hhc_command.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class CompileCommand : public ScrivoRun {
 protected:
  // A page with a link that leads nowhere, which the compiler warns of.
  void AddBrokenLink() {
    web.Write("docs/b.htm", "<title>B</title>\n<a href=\"none.htm\">there</a>");
  }
  const std::string kBrokenLink = "docs/b.htm(2) : The linked file \"none.htm\" does not exist.";
};

TEST_F(CompileCommand, MakesTheFileAndTellsWhatIsInIt) {
  EXPECT_EQ(Compile(), 0);
  const std::string told = Plain(out);
  EXPECT_TRUE(told.starts_with(
      "Made OUT/a.chm: 2 pages, no other files, 2 contents entries, 3 index entries, "))
      << told;
  EXPECT_TRUE(told.ends_with(" kB, 0:00\n")) << told;
  EXPECT_EQ(Plain(err), "Reading WEB\n" + ContentsLine("all of 2") + "Compiling\n");
  Unpack();
  EXPECT_EQ(output.Read("un packed/docs/a.htm"), web.Read("docs/a.htm"));
}

TEST_F(CompileCommand, TakesPagesWhoseNamesMeanSomethingInAProject) {
  const std::vector<std::string> odd = {";c.htm", "[OPTIONS].htm", " a.htm", "#include x.htm",
                                        "C#.htm"};
  for (const std::string& name : odd) web.Write(name, "<title>T</title><h1>" + name + "</h1>");
  EXPECT_EQ(Compile({"--contents", "folders", "--strict", "--index", "titles"}), 0) << err;
  Unpack();
  for (const std::string& name : odd) EXPECT_EQ(output.Read("un packed/" + name), web.Read(name));
}

TEST_F(CompileCommand, NamesThePagesThatAWrittenProjectLeavesOut) {
  web.Write(";c.htm", "<title>C</title>");
  web.Write("[OPTIONS].htm", "<title>O</title>");
  const auto warning = [](const std::string& name) {
    return "scrivo: warning: " + name +
           ": left out of the project, where a line of this name would mean something else\n";
  };
  EXPECT_EQ(Run({"project", WebPath()}), 0);
  EXPECT_NE(err.find(warning(";c.htm") + warning("[OPTIONS].htm")), std::string::npos) << err;
  EXPECT_EQ(web.Read("Scrivo.hhp").find("c.htm\r"), std::string::npos);
  EXPECT_NE(web.Read("Scrivo.hhp").find("docs/a.htm\r"), std::string::npos);
  EXPECT_EQ(CompileWithFake("make"), 0);
  EXPECT_NE(err.find(warning(";c.htm")), std::string::npos) << err;
  // What is compiled in process has them all the same.
  EXPECT_EQ(Compile({"--keep-project"}), 0);
  EXPECT_NE(err.find(warning(";c.htm")), std::string::npos) << err;
  Unpack();
  EXPECT_TRUE(output.Has("un packed/;c.htm"));
  EXPECT_TRUE(output.Has("un packed/[OPTIONS].htm"));
}

TEST_F(CompileCommand, SaysNothingWhenQuiet) {
  EXPECT_EQ(Compile({"-q"}), 0);
  EXPECT_EQ(out + err, "");
}

TEST_F(CompileCommand, LeavesTheWebAsItIs) {
  const auto files = [&] {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(web.path())) {
      names.push_back(entry.path().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  };
  const auto before = files();
  const auto changed = std::filesystem::last_write_time(web.path());
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(files(), before);
  EXPECT_EQ(std::filesystem::last_write_time(web.path()), changed) << "a file came and went";
}

TEST_F(CompileCommand, GivesTheSameBytesForTheSameWeb) {
  EXPECT_EQ(Compile(), 0);
  const std::string first = output.Read("a.chm");
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(output.Read("a.chm"), first);
}

TEST_F(CompileCommand, GivesTheBytesThatTheCompilerGivesForTheProject) {
  web.Write("_derived/a.htm_cmp_bar.gif", "GIF");
  LabelPagesByTheirTitles();
  EXPECT_EQ(Compile(), 0);
  const std::string in_memory = output.Read("a.chm");
  std::filesystem::remove(Output());
  EXPECT_EQ(Run({"project", WebPath(), "-o", Output(), "-q"}), 0);
  const std::string project = out.substr(0, out.find('\n'));
  std::ostringstream told;
  EXPECT_EQ(RunHhc({project}, {"/", false, ""}, told, told), 1) << told.str();
  EXPECT_TRUE(output.Read("a.chm") == in_memory);
}

TEST_F(CompileCommand, ShowsLabelsInEveryViewerWhereTitlesAreOthers) {
  EXPECT_EQ(Compile(), 0);
  Unpack();
  EXPECT_FALSE(output.Has("un packed/#TOCIDX"));
  LabelPagesByTheirTitles();
  std::filesystem::remove_all(output.path() / "un packed");
  EXPECT_EQ(Compile(), 0);
  Unpack();
  EXPECT_TRUE(output.Has("un packed/#TOCIDX"));
}

TEST_F(CompileCommand, PutsDerivedImagesAndTheIndexIn) {
  web.Write("_derived/a.htm_cmp_bar.gif", "GIF of a bar");
  EXPECT_EQ(Compile(), 0);
  Unpack();
  EXPECT_EQ(output.Read("un packed/_derived/a.htm_cmp_bar.gif"), "GIF of a bar");
  EXPECT_NE(output.Read("un packed/Scrivo.hhk").find("VALUE=\"x\""), std::string::npos);
  EXPECT_NE(output.Read("un packed/Scrivo.hhc").find("VALUE=\"First\""), std::string::npos);
}

TEST_F(CompileCommand, HidesTheFilesOfAProjectThatWasKeptBefore) {
  EXPECT_EQ(Compile(), 0);
  const std::string without = output.Read("a.chm");
  EXPECT_EQ(Run({"project", WebPath(), "-q"}), 0);
  web.Write("Scrivo.hhc", "something else");
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(output.Read("a.chm"), without);
  EXPECT_EQ(web.Read("Scrivo.hhc"), "something else");
}

TEST_F(CompileCommand, TellsTheCompilersWarningsOnTheErrorStream) {
  AddBrokenLink();
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(Plain(err), "Reading WEB\n" + ContentsLine("2 of 3") +
                            "Compiling\nscrivo: warning: " + kBrokenLink + "\n");
  EXPECT_EQ(Compile({"-q"}), 0);
  EXPECT_EQ(err, "");
}

TEST_F(CompileCommand, ExitsWithOneOnMessagesWhenStrictAndKeepsTheFile) {
  EXPECT_EQ(Compile({"--strict"}), 0);
  AddBrokenLink();
  EXPECT_EQ(Compile({"--strict"}), 1);
  EXPECT_TRUE(output.Has("a.chm"));
}

TEST_F(CompileCommand, TellsTheMessagesThatAStrictRunFailsForEvenWhenQuiet) {
  AddBrokenLink();
  EXPECT_EQ(Compile({"-q", "--strict"}), 1);
  EXPECT_EQ(Plain(err),
            "scrivo: error: the compiler reported problems, which --strict does not allow:\n"
            "  Warning: " +
                kBrokenLink + "\n");
}

TEST_F(CompileCommand, RefusesAnOutputWhoseNameACompilerWouldCut) {
  output.Write("a.chm", "ITSF old");
  for (const std::string& name : {Output() + " ", " " + Output(), Output() + "\t"}) {
    EXPECT_EQ(Compile({"-o", name}), 2) << name;
    EXPECT_TRUE(err.starts_with("scrivo: error: --output: FILE ")) << err;
  }
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
}

TEST_F(CompileCommand, RefusesOptionsThatWouldAddLinesToTheProject) {
  output.Write("b.chm", "ITSF old");
  const std::string more = "\r\nCompiled file=" + output.PathOf("b.chm");
  for (const char* option : {"--title", "--default-page", "-o"}) {
    EXPECT_EQ(Compile({option, "index.htm" + more}), 2) << option;
    EXPECT_NE(err.find(" contains a line break or another control character\n"), std::string::npos)
        << err;
  }
  EXPECT_EQ(output.Read("b.chm"), "ITSF old");
}

TEST_F(CompileCommand, RefusesAnOutputThatCannotBeMade) {
  output.Write("file", "x");
  EXPECT_EQ(Compile({"-o", JoinPath(output.PathOf("file"), "a.chm")}), 1);
  EXPECT_NE(Plain(err).find("OUT/file/a.chm: no help file was made\n"), std::string::npos) << err;
  EXPECT_EQ(Compile({"-o", output.path().string()}), 1);
  EXPECT_NE(Plain(err).find("OUT: the help file cannot be made: it is a folder"),
            std::string::npos);
}

TEST_F(CompileCommand, MakesTheFolderOfItsOutput) {
  const std::string path = JoinPath(JoinPath(output.PathOf("new"), "folder"), "a.chm");
  EXPECT_EQ(Compile({"-o", path}), 0) << err;
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(CompileCommand, NamesTheDefaultOutputAfterTheTitleInTheCurrentFolder) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(output.path());
  EXPECT_EQ(Run({"compile", WebPath()}), 0) << err;
  EXPECT_EQ(Run({"compile", WebPath(), "--title", "A/B: C*"}), 0) << err;
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1002\r\n1000,index.htm,0,My\x1Ehome\tpage,0,100,0\r\n"
            "1001,docs/a.htm,0,First,1000,100,0");
  EXPECT_EQ(Run({"compile", WebPath()}), 0) << err;
  std::filesystem::current_path(before);
  EXPECT_TRUE(output.Has("Home.CHM"));
  EXPECT_TRUE(output.Has("A_B_ C_.CHM"));
  EXPECT_TRUE(output.Has("My home page.CHM")) << "control characters are blanks";
  EXPECT_FALSE(web.Has("Home.CHM"));
}

TEST_F(CompileCommand, MakesTheHelpFileThatTheOptionsDescribe) {
  EXPECT_EQ(Compile({"--title", "My help", "--default-page", "docs/a.htm", "--no-index"}), 0);
  EXPECT_NE(out.find(", no index entries, "), std::string::npos) << out;
  EXPECT_EQ(Run({"info", Output()}), 0);
  EXPECT_NE(out.find("Title:          My help\n"), std::string::npos) << out;
  EXPECT_NE(out.find("Default topic:  docs/a.htm\n"), std::string::npos) << out;
  EXPECT_NE(out.find("Index:          -\n"), std::string::npos) << out;
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(Run({"info", Output()}), 0);
  EXPECT_NE(out.find("Title:          Home\n"), std::string::npos) << out;
  EXPECT_NE(out.find("Default topic:  index.htm\n"), std::string::npos) << out;
  EXPECT_NE(out.find("Index:          /Scrivo.hhk\n"), std::string::npos) << out;
}

TEST_F(CompileCommand, RefusesADefaultPageThatTheWebDoesNotHave) {
  EXPECT_EQ(Compile({"--default-page", "docs/b.htm"}), 1);
  EXPECT_NE(err.find("docs/b.htm: no such page in the web. Did you mean docs/a.htm? "
                     "\"scrivo tree WEB\" lists the pages.\n"),
            std::string::npos)
      << err;
  EXPECT_FALSE(output.Has("a.chm"));
}

TEST_F(CompileCommand, KeepsTheProjectWhenAsked) {
  EXPECT_EQ(Compile({"--keep-project"}), 0);
  EXPECT_EQ(ProjectFiles(),
            (std::vector<std::string>{"Scrivo.hhc", "Scrivo.hhk", "Scrivo.hhp", "Scrivo.tmp.htm"}));
  EXPECT_NE(web.Read("Scrivo.hhp").find("Compiled file=" + Output() + "\r\n"), std::string::npos);
  web.Write("Scrivo.hhc", "edited");
  EXPECT_EQ(Compile({"--keep-project"}), 0);
  EXPECT_EQ(ProjectFiles().size(), 8u);
  EXPECT_TRUE(web.Has("Scrivo2.hhp"));
  EXPECT_EQ(web.Read("Scrivo.hhc"), "edited");
}

TEST_F(CompileCommand, NamesTheOptionThatMakesAnIndexWhenThereAreNoKeywords) {
  web.Write("docs/a.htm", "<title>A</title>");
  EXPECT_EQ(Compile(), 0);
  EXPECT_NE(err.find("scrivo: warning: no keywords found, so the help file has no index\n"
                     "  To make an index from titles or headings, use --index titles, "),
            std::string::npos)
      << err;
  EXPECT_NE(out.find("no index entries"), std::string::npos);
  EXPECT_EQ(Compile({"--index", "titles"}), 0);
  EXPECT_NE(out.find("2 index entries"), std::string::npos) << out;
  EXPECT_EQ(Compile({"--no-index"}), 0);
  EXPECT_EQ(err.find("warning"), std::string::npos) << "none was wanted: " << err;
}

TEST_F(CompileCommand, AdvisesNoIndexThatWasJustTried) {
  web.Write("docs/a.htm", "<title>A</title>");
  EXPECT_EQ(Compile({"--index", "headings"}), 0);
  EXPECT_NE(err.find("\n  To make an index from the titles, use --index titles.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(err.find("--index headings"), std::string::npos) << err;
  const IndexSource titles = IndexSource::kTitles;
  const IndexSource headings = IndexSource::kHeadings;
  EXPECT_EQ(NoIndexHint({IndexSource::kKeywords, titles}),
            "To make an index from the headings, use --index headings.");
  EXPECT_EQ(NoIndexHint({headings, titles}),
            "To leave out the index without this warning, use --no-index.");
}

TEST_F(CompileCommand, TakesTheContentsThatWereChosen) {
  web.Write("docs/more.htm", "<title>More</title>");
  EXPECT_EQ(Compile({"--contents", "navigation"}), 0);
  EXPECT_NE(out.find(", 2 contents entries, "), std::string::npos) << out;
  EXPECT_EQ(Compile({"--contents", "folders"}), 0);
  EXPECT_NE(out.find(", 4 contents entries, "), std::string::npos) << out;
  EXPECT_EQ(err.find("--contents"), std::string::npos) << err;
}

TEST_F(CompileCommand, SaysSoWhenItChoseTheFoldersItself) {
  const std::string line =
      "Contents: the web's folders, because the navigation structure holds only the home page of 2 "
      "pages. To use it anyway, add --contents navigation.\n";
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(err.find(line), std::string::npos) << err;
  web.Write("_vti_pvt/structure.cnf", "3.0.0.507\r\n1001\r\n1000,index.htm,0,Home,0,100,0\r\n");
  EXPECT_EQ(Compile(), 0);
  EXPECT_NE(err.find(line), std::string::npos) << err;
  EXPECT_EQ(Compile({"-q"}), 0);
  EXPECT_EQ(err, "");
}

TEST_F(CompileCommand, TakesAWebWhosePathLooksLikeATemporaryFile) {
  web.Write("old.tmp.d/index.htm", "<title>Home</title>");
  const std::string inner = web.PathOf("old.tmp.d");
  EXPECT_EQ(Run({"compile", inner, "-o", Output()}), 0) << err;
  EXPECT_EQ(Run({"project", inner, "-q"}), 0) << err;
  EXPECT_TRUE(web.Has("old.tmp.d/Scrivo.hhp"));
}

TEST_F(CompileCommand, ShowsTheResultThroughTheShellWhenAsked) {
  EXPECT_EQ(Compile(), 0);
  EXPECT_TRUE(shell->requests.empty());
  EXPECT_EQ(Compile({"--view"}), 0);
  ASSERT_EQ(shell->requests.size(), 1u);
  EXPECT_EQ(shell->requests[0].verb, "open");
  EXPECT_EQ(shell->requests[0].file, Output());
  shell->result = 31;
  EXPECT_EQ(Compile({"--view"}), 0);
  EXPECT_NE(Plain(err).find("scrivo: warning: OUT/a.chm: no program could be started to open it\n"),
            std::string::npos)
      << err;
}

TEST_F(CompileCommand, RemembersNothingBetweenRuns) {
  EXPECT_EQ(Compile({"--title", "Once", "--no-favorites", "--default-page", "docs/a.htm"}), 0);
  const std::string once = output.Read("a.chm");
  EXPECT_EQ(Compile(), 0);
  EXPECT_EQ(Run({"info", Output()}), 0);
  EXPECT_NE(out.find("Title:          Home\n"), std::string::npos) << out;
  EXPECT_NE(output.Read("a.chm"), once);
}

}  // namespace
}  // namespace scrivo

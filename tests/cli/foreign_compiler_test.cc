// Compiles with another help compiler than this program's own: one that does as it is told.

#include "cli/foreign_compiler.h"

#include <sstream>

#include "tests/cli/failing_disk.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class ForeignCompiler : public ScrivoRun {
 protected:
  std::size_t FilesBesideOutput() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(output.path()), {}));
  }
};

TEST_F(ForeignCompiler, MakesTheFile) {
  EXPECT_EQ(CompileWithFake("make"), 0);
  EXPECT_EQ(Plain(out), "Made OUT/a.chm: 120 bytes, 0:00\n");
  EXPECT_EQ(Plain(err), "Reading WEB\n" + ContentsLine("all of 2") + "Compiling\n");
  EXPECT_TRUE(output.Has("a.chm"));
  EXPECT_EQ(FilesBesideOutput(), 1u);
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(ForeignCompiler, MayPrintNothing) {
  EXPECT_EQ(CompileWithFake("make silently"), 0);
  EXPECT_TRUE(output.Has("a.chm"));
}

TEST_F(ForeignCompiler, MayPrintMuch) {
  EXPECT_EQ(CompileWithFake("print much", {"-q"}), 0);
  EXPECT_EQ(out + err, "");
}

TEST_F(ForeignCompiler, TellsItsMessagesByTheirKind) {
  EXPECT_EQ(CompileWithFake("make with warnings"), 0);
  EXPECT_NE(err.find("Compiling\nscrivo: warning: a\nscrivo: warning: b\n"), std::string::npos)
      << err;
  EXPECT_EQ(CompileWithFake("make with warnings", {"-q"}), 0);
  EXPECT_EQ(err, "");
  EXPECT_EQ(CompileWithFake("make with errors", {"-q"}), 0);
  EXPECT_EQ(err, "scrivo: error: Compilation failed while compiling x.gif.\n");
}

TEST_F(ForeignCompiler, FailsForItsMessagesWhenStrict) {
  EXPECT_EQ(CompileWithFake("make", {"--strict"}), 0);
  EXPECT_EQ(CompileWithFake("make with warnings", {"--strict", "-q"}), 1);
  EXPECT_EQ(err,
            "scrivo: error: the compiler reported problems, which --strict does not allow:\n"
            "  Warning: a\n  Warning: b\n");
  EXPECT_TRUE(output.Has("a.chm"));
  EXPECT_EQ(CompileWithFake("make with errors", {"--strict", "-q"}), 1);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << "they are told once: " << err;
}

TEST_F(ForeignCompiler, LeavesTheEarlierFileWhenItRefuses) {
  output.Write("a.chm", "ITSF old");
  EXPECT_EQ(CompileWithFake("refuse"), 1);
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_TRUE(
      Plain(err).ends_with("Compilation stopped.\n"
                           "OUT/a.chm: no help file was made; the earlier file is kept\n"))
      << err;
  EXPECT_EQ(out, "");
  EXPECT_EQ(FilesBesideOutput(), 1u);
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(ForeignCompiler, HasItsLastLinesShownWhenItFailsWithoutAMessage) {
  EXPECT_EQ(CompileWithFake("fail without a message"), 1);
  EXPECT_NE(Plain(err).find("scrivo: error: HHC: ended with exit status 0. To see why, keep the "
                            "project with --keep-project and run the compiler on it.\n"
                            "  one\n  two\n  Unable to open it.\n"
                            "OUT/a.chm: no help file was made\n"),
            std::string::npos)
      << err;
}

TEST_F(ForeignCompiler, IsToldOfWhenItDoesNothing) {
  EXPECT_EQ(CompileWithFake("do nothing"), 1);
  EXPECT_NE(Plain(err).find("HHC: ended with exit status 0. To see"), std::string::npos) << err;
}

TEST_F(ForeignCompiler, IsNotTakenAtItsWordAboutAFileThatIsCutShort) {
  EXPECT_EQ(CompileWithFake("cut the file short"), 1);
  EXPECT_FALSE(output.Has("a.chm"));
  EXPECT_NE(Plain(err).find("scrivo: error: HHC: ended with exit status 1; the help file that it "
                            "made is incomplete. To see why, "),
            std::string::npos)
      << err;
}

TEST_F(ForeignCompiler, LeavesTheEarlierFileWhenItCrashes) {
  output.Write("a.chm", "ITSF old");
  EXPECT_EQ(CompileWithFake("crash"), 1);
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(FilesBesideOutput(), 1u);
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_NE(Plain(err).find("; the help file that it made is incomplete. "), std::string::npos)
      << err;
  EXPECT_NE(Plain(err).find("OUT/a.chm: no help file was made; the earlier file is kept\n"),
            std::string::npos)
      << err;
}

TEST_F(ForeignCompiler, IsEndedWhenItClosesItsOutputAndLivesOn) {
  EXPECT_EQ(CompileWithFake("live on"), 1);
  EXPECT_NE(Plain(err).find("HHC: closed its output without exiting and was terminated. "),
            std::string::npos)
      << err;
}

TEST_F(ForeignCompiler, GetsTheProjectThatTheOptionsDescribe) {
  EXPECT_EQ(CompileWithFake("make and show the project\n" + output.PathOf("project.txt"),
                            {"--title", "My help", "--default-page", "docs/a.htm", "--no-index",
                             "--no-favorites"}),
            0);
  const std::string project = output.Read("project.txt");
  EXPECT_NE(project.find("Title=My help"), std::string::npos) << project;
  EXPECT_NE(project.find("Default topic=docs/a.htm"), std::string::npos);
  EXPECT_NE(project.find("0x22520"), std::string::npos);
  EXPECT_EQ(project.find("Index File"), std::string::npos);
  EXPECT_EQ(CompileWithFake("make and show the project\n" + output.PathOf("project.txt")), 0);
  const std::string usual = output.Read("project.txt");
  EXPECT_NE(usual.find("Default topic=index.htm"), std::string::npos);
  EXPECT_NE(usual.find("0x23520"), std::string::npos);
  EXPECT_NE(usual.find("Index File = "), std::string::npos);
}

TEST_F(ForeignCompiler, ReadsACopyOfWhatACompileTakesIn) {
  web.Write("_derived/button.gif", "GIF");
  web.Write("docs/_themes/plain/plain.css", "p {}");
  web.Write("_private/results.htm", "secret");
  web.Write("docs/.hidden/a.htm", "secret");
  web.Write("empty.txt", "");
  // What runs make, and have left that were ended, beside outputs in the web.
  web.Write("old.chm.scrivo-work/web/index.htm", "old");
  web.Write("docs/old.chm.scrivo-new-2", "old");
  web.Write("Scrivo.hhp", "a user's own");
  const std::string list = "list its folder\n" + output.PathOf("list.txt");
  const auto listed = [&] {
    std::vector<std::string> names;
    std::istringstream lines(output.Read("list.txt"));
    for (std::string line; std::getline(lines, line);) names.push_back(line.substr(2));
    std::sort(names.begin(), names.end());
    return names;
  };
  EXPECT_EQ(CompileWithFake(list), 0) << err;
  const std::vector<std::string> taken = {"Scrivo.hhc",
                                          "Scrivo.hhk",
                                          "Scrivo.hhp",
                                          "Scrivo.tmp.htm",
                                          "_derived/button.gif",
                                          "behaviour.txt",
                                          "docs/_themes/plain/plain.css",
                                          "docs/a.htm",
                                          "empty.txt",
                                          "index.htm",
                                          "picture.gif"};
  EXPECT_EQ(listed(), taken);
  EXPECT_NE(err.find("Left out: 2 files (_private and docs/.hidden), also where pages link"),
            std::string::npos)
      << err;
  EXPECT_EQ(CompileWithFake(list, {"--with-hidden"}), 0) << err;
  const std::vector<std::string> all = listed();
  EXPECT_EQ(all.size(), taken.size() + 3);
  EXPECT_EQ(std::count(all.begin(), all.end(), "_private/results.htm"), 1);
  EXPECT_EQ(std::count(all.begin(), all.end(), "_vti_pvt/structure.cnf"), 1);
  EXPECT_EQ(web.Read("Scrivo.hhp"), "a user's own");
}

TEST_F(ForeignCompiler, GetsLargeFilesWhole) {
  std::string page;
  for (int i = 0; i < 400'000; ++i) page += std::to_string(i) + "\n";
  ASSERT_GT(page.size(), 2u << 20);
  web.Write("docs/a.htm", page);
  EXPECT_EQ(CompileWithFake("show a page\n" + output.PathOf("a.htm")), 0) << err;
  EXPECT_TRUE(output.Read("a.htm") == page);
}

TEST_F(ForeignCompiler, IsToldOfAsReadingTheWebItself) {
  EXPECT_EQ(CompileWithFake("name its folder"), 0);
  EXPECT_NE(Plain(err).find("scrivo: warning: WEB: a\n"), std::string::npos) << err;
}

TEST_F(ForeignCompiler, GetsPagesWithoutTheirBars) {
  web.Write("docs/a.htm",
            "<html><!--webbot bot=\"Navigation\" startspan --><img src=\"bar.gif\">"
            "<!--webbot bot=\"Navigation\" endspan -->own</html>");
  const std::string show = "show a page\n" + output.PathOf("a.htm");
  EXPECT_EQ(CompileWithFake(show, {"--without-bars"}), 0) << err;
  EXPECT_EQ(output.Read("a.htm"), "<html>own</html>");
  EXPECT_NE(err.find("Left the bars out of 1 page: "), std::string::npos) << err;
  EXPECT_EQ(CompileWithFake(show), 0) << err;
  EXPECT_EQ(output.Read("a.htm"), web.Read("docs/a.htm"));
}

TEST_F(ForeignCompiler, RunsWithoutAFileWhoseCopyHasTooLongAName) {
  const auto disk = std::make_shared<FailingDisk>(TheServices().files);
  disk->on_write = [](const std::string& path) {
    if (path.ends_with("picture.gif"))
      throw Error(kPathFileAccessError, "", "the name is too long");
  };
  TheServices().files = disk;
  EXPECT_EQ(CompileWithFake("list its folder\n" + output.PathOf("list.txt")), 0) << err;
  EXPECT_NE(Plain(err).find("scrivo: warning: WEB/picture.gif: kept from the compiler: the name is "
                            "too long\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(output.Read("list.txt").find("picture.gif"), std::string::npos);
  EXPECT_NE(output.Read("list.txt").find("docs/a.htm"), std::string::npos);
}

TEST_F(ForeignCompiler, IsNotRunOnAWebThatTheDiskCannotHold) {
  output.Write("a.chm", "ITSF old");
  const auto disk = std::make_shared<FailingDisk>(TheServices().files);
  disk->on_write = [](const std::string& path) {
    if (path.ends_with("picture.gif")) throw Error(kDiskFull, "", "Disk full: " + path);
  };
  TheServices().files = disk;
  EXPECT_EQ(CompileWithFake("make", {"-q"}), 1);
  EXPECT_TRUE(Plain(err).starts_with(
      "scrivo: error: WEB: the web cannot be copied for the compiler: Disk full: "))
      << err;
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(FilesBesideOutput(), 1u);
}

TEST_F(ForeignCompiler, ClearsAwayWhatARunHasLeftThatWasEnded) {
  output.Write("a.chm.scrivo-work/held", "");
  output.Write("a.chm.scrivo-work/web/docs/a.htm", "old");
  // This one could only be removed in part.
  output.Write("a.chm.scrivo-work-2/web/index.htm", "old");
  output.Write("b.chm.scrivo-work/web/index.htm", "of another output");
  EXPECT_EQ(CompileWithFake("make"), 0) << err;
  EXPECT_EQ(FilesBesideOutput(), 2u);
  EXPECT_TRUE(output.Has("a.chm"));
  EXPECT_TRUE(output.Has("b.chm.scrivo-work/web/index.htm"));
}

TEST_F(ForeignCompiler, LeavesAProjectForTheRealOutputWhenItIsKept) {
  EXPECT_EQ(CompileWithFake("make", {"--keep-project"}), 0);
  EXPECT_EQ(ProjectFiles().size(), 4u);
  EXPECT_NE(web.Read("Scrivo.hhp").find("Compiled file=" + Output() + "\r\n"), std::string::npos);
}

TEST_F(ForeignCompiler, MustBeAFile) {
  const std::string missing = web.PathOf("none");
  EXPECT_EQ(Compile({"--compiler", missing}), 1);
  EXPECT_NE(Plain(err).find("scrivo: error: WEB/none: the compiler cannot be run: no such file. "
                            "Check the spelling of the path.\n"),
            std::string::npos)
      << err;
  EXPECT_EQ(Compile({"--compiler", WebPath()}), 1);
  EXPECT_NE(Plain(err).find("scrivo: error: WEB: the compiler cannot be run: it is a "
                            "folder. Name the program itself.\n"),
            std::string::npos)
      << err;
}

TEST_F(ForeignCompiler, IsNotToldOfAsRunWhenItCannotBeStarted) {
  output.Write("a.chm", "ITSF old");
  web.Write("hhc", "no program");
  EXPECT_EQ(Compile({"--compiler", web.PathOf("hhc"), "-q"}), 1);
  EXPECT_TRUE(
      Plain(err).starts_with("scrivo: error: WEB/hhc: the compiler could not be started: it "))
      << err;
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(FilesBesideOutput(), 1u);
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(ForeignCompiler, NeedsAFolderForItsOutputThatCanBeWrittenTo) {
  auto disk = std::make_shared<FailingDisk>(TheServices().files);
  disk->closed_folder = output.path().string();
  TheServices().files = disk;
  EXPECT_EQ(CompileWithFake("make"), 1);
  EXPECT_NE(Plain(err).find("scrivo: error: OUT: no file can be written to this folder. Choose "
                            "another folder with -o.\n"),
            std::string::npos)
      << err;
}

TEST(StartFailureText, SaysWhyACompilerCouldNotBeStarted) {
  const std::string missing =
      "a file that it needs is missing. Reinstall it, or choose another compiler with --compiler.";
  EXPECT_EQ(StartFailureText(2, "/web"), missing);
  EXPECT_EQ(StartFailureText(3, "/web"), missing);
  EXPECT_EQ(StartFailureText(5, "/web"),
            "it cannot be run. Check that it is a program and that you have permission to run it.");
  EXPECT_EQ(StartFailureText(193, "/web"),
            "it is not a program for this system. Choose another compiler with --compiler.");
  EXPECT_EQ(StartFailureText(267, "/web"),
            "the folder /web cannot be entered. Ask for permission to enter it.");
  EXPECT_EQ(StartFailureText(8, "/web"), "the system reports error 8.");
}

}  // namespace
}  // namespace scrivo

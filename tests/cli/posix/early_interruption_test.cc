// Ctrl-C before a compiler runs: while the web is read, and while the project is written.

#include <signal.h>

#include <cstdlib>
#include <iostream>

#include "cli/compile_report.h"
#include "cli/hhc_command.h"
#include "hhc/compiler.h"
#include "system/error.h"
#include "system/interruption.h"
#include "tests/cli/failing_disk.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class EarlyInterruption : public ScrivoRun {
 protected:
  // Runs the command line in a process that is interrupted before a file is read (`at_write`
  // false) or written whose name ends as told; ends that process with the exit status.
  [[noreturn]] void RunInterrupted(const std::vector<std::string>& arguments,
                                   const std::string& name_end, bool at_write) {
    signal(SIGINT, SIG_DFL);  // whoever started the tests may ignore it
    CatchInterruptions();
    auto disk = std::make_shared<FailingDisk>(TheServices().files);
    const auto interrupt = [=](const std::string& path) {
      if (path.ends_with(name_end)) raise(SIGINT);
    };
    (at_write ? disk->on_write : disk->on_read) = interrupt;
    TheServices().files = disk;
    const int status = Run(arguments);
    std::fputs(("told: " + out + err).c_str(), stderr);
    std::exit(status);
  }
};

TEST_F(EarlyInterruption, WhileTheWebIsReadLeavesThingsAsTheyWere) {
  output.Write("a.chm", "ITSF old");
  web.Write("behaviour.txt", "make");
  EXPECT_EXIT(RunInterrupted({"compile", WebPath(), "-o", Output(), "--compiler",
                              TestProgram("test_fake_hhc"), "-q"},
                             "a.htm", false),
              testing::ExitedWithCode(130), "told: $");
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1);
  EXPECT_TRUE(ProjectFiles().empty());
}

TEST_F(EarlyInterruption, WhileTheCompilersFolderIsMadeTellsOfNoFailure) {
  output.Write("a.chm", "ITSF old");
  web.Write("behaviour.txt", "make");
  for (const char* folder : {"a.chm.scrivo-work", "web", "made"}) {
    EXPECT_EXIT(RunInterrupted({"compile", WebPath(), "-o", Output(), "--compiler",
                                TestProgram("test_fake_hhc"), "-q"},
                               folder, true),
                testing::ExitedWithCode(130), "told: $")
        << folder;
    EXPECT_EQ(output.Read("a.chm"), "ITSF old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1) << folder;
  }
}

// Compiles a project whose report is asked when the program has been interrupted already.
[[noreturn]] void CompileInterrupted(const std::string& folder, const std::string& output) {
  signal(SIGINT, SIG_DFL);
  CatchInterruptions();
  raise(SIGINT);
  std::ostringstream told;
  Console console(told, told, {.clock = [] { return 0.0; }});
  CompileReport report(console, 1);
  CompileRequest request;
  request.working_folder = folder;
  request.project_path = "a.hhp";
  request.output = output;
  const CompileResult result = CompileProject(request, DiskFiles(), &report);
  std::exit(result.stopped && !result.made && report.Messages() == 0 ? 130 : 1);
}

TEST_F(EarlyInterruption, OfTheCompilerItselfLeavesTheEarlierFile) {
  web.Write("a.hhp", "[OPTIONS]\nDisplay compile progress=Yes\n[FILES]\nindex.htm\n");
  output.Write("a.chm", "ITSF old");
  EXPECT_EXIT(CompileInterrupted(WebPath(), Output()), testing::ExitedWithCode(130), "");
  web.Write("a.hhp", "[FILES]\nindex.htm\n");  // which tells of no file, only of the end
  EXPECT_EXIT(CompileInterrupted(WebPath(), Output()), testing::ExitedWithCode(130), "");
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1);
}

// For a drop-in the status of an interrupted shell would tell that the file was made.
TEST_F(EarlyInterruption, GivesHhcAndHhTheStatusOfWhatWasNotMade) {
  output.Write("help.hhp", "[OPTIONS]\nFull-text search=Yes\n[FILES]\na.htm\n");
  output.Write("a.htm", "<title>A</title>");
  output.Write("help.chm", "ITSF old");
  ASSERT_EQ(Compile(), 0) << err;
  const auto hhc = [&](std::vector<std::string> arguments, bool gnu) {
    signal(SIGTERM, SIG_DFL);
    CatchInterruptions();
    raise(SIGTERM);
    arguments.push_back(output.PathOf("help.hhp"));
    HhcSurroundings surroundings;
    surroundings.working_folder = output.path().string();
    surroundings.gnu = gnu;
    std::exit(RunHhc(arguments, surroundings, std::cerr, std::cerr));
  };
  EXPECT_EXIT(hhc({}, false), testing::ExitedWithCode(0), "help.chm\n\n$");
  EXPECT_EXIT(hhc({"--gnu"}, false), testing::ExitedWithCode(130), "help.chm\n\n$");
  EXPECT_EXIT(hhc({}, true), testing::ExitedWithCode(130), "help.chm\n\n$");
  EXPECT_EQ(output.Read("help.chm"), "ITSF old");
  const auto hh = [&] {
    signal(SIGTERM, SIG_DFL);
    CatchInterruptions();
    raise(SIGTERM);
    std::exit(RunHh({"-decompile", output.PathOf("out"), Output()}, std::cerr, std::cerr));
  };
  EXPECT_EXIT(hh(), testing::ExitedWithCode(1), "^$");
  EXPECT_FALSE(output.Has("out"));
}

TEST_F(EarlyInterruption, OfAnUnpackingLeavesNoFolder) {
  ASSERT_EQ(Compile(), 0) << err;
  const auto run = [&] {
    signal(SIGHUP, SIG_DFL);
    CatchInterruptions();
    raise(SIGHUP);
    const int status = Run({"decompile", Output(), output.PathOf("out"), "-q"});
    std::fputs(("told: " + out + err).c_str(), stderr);
    std::exit(status);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(130), "told: $");
  EXPECT_FALSE(output.Has("out"));
}

TEST_F(EarlyInterruption, WhileTheProjectIsWrittenLeavesNoFileOfIt) {
  for (const char* ending : {".hhk", ".hhc", ".hhp"}) {
    EXPECT_EXIT(RunInterrupted({"project", WebPath(), "-q"}, ending, true),
                testing::ExitedWithCode(130), "told: $")
        << ending;
    EXPECT_TRUE(ProjectFiles().empty()) << ending;
  }
}

TEST_F(EarlyInterruption, WhileTheWebIsCopiedLeavesThingsAsTheyWere) {
  output.Write("a.chm", "ITSF old");
  web.Write("behaviour.txt", "make");
  for (const char* ending : {"picture.gif", "a.htm", ".hhp"}) {
    EXPECT_EXIT(RunInterrupted({"compile", WebPath(), "-o", Output(), "--compiler",
                                TestProgram("test_fake_hhc"), "--keep-project", "-q"},
                               ending, true),
                testing::ExitedWithCode(130), "told: $")
        << ending;
    EXPECT_EQ(output.Read("a.chm"), "ITSF old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1) << ending;
    EXPECT_TRUE(ProjectFiles().empty()) << ending;
  }
}

// What a program tells, interrupting it at a word.
class InterruptingBuffer : public std::stringbuf {
 public:
  explicit InterruptingBuffer(std::string word) : word_(std::move(word)) {}

 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    if (std::string_view(text, static_cast<std::size_t>(size)).find(word_) != std::string::npos) {
      raise(SIGINT);
    }
    return std::stringbuf::xsputn(text, size);
  }

 private:
  const std::string word_;
};

TEST_F(EarlyInterruption, OfACompileWhoseProjectIsToBeKeptLeavesNoFileOfIt) {
  web.Write("docs/a.htm", "<img src=\"missing.gif\">");
  const auto run = [&] {
    signal(SIGINT, SIG_DFL);
    CatchInterruptions();
    InterruptingBuffer told("missing.gif");
    std::ostream stream(&told);
    const int status = RunScrivo({"compile", WebPath(), "-o", Output(), "--keep-project"},
                                 {stream, stream, false, 80, [] { return 0.0; }});
    std::fputs(told.str().c_str(), stderr);
    std::exit(status);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(130), "missing.gif");
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_FALSE(output.Has("a.chm"));
}

TEST_F(EarlyInterruption, WhileTheProjectsPagesAreReadTellsOfNoFailure) {
  EXPECT_EXIT(RunInterrupted({"project", WebPath(), "-q"}, "a.htm", false),
              testing::ExitedWithCode(130), "told: $");
  EXPECT_TRUE(ProjectFiles().empty());
}

}  // namespace
}  // namespace scrivo

// Links, compilers in odd places and ends of programs, as only a POSIX system has them.

#include <sys/stat.h>

#include "cli/foreign_compiler.h"
#include "cli/open_web.h"
#include "system/error.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

TEST(AbsolutePathTest, FollowsALinkBeforeItGoesUp) {
  const TestFolder folder;
  folder.Write("real/deep/x", "");
  folder.Write("real/a.htm", "");
  std::filesystem::create_directory_symlink(folder.PathOf("real/deep"), folder.PathOf("link"));
  const std::string real = std::filesystem::canonical(folder.path()).string() + "/real";
  EXPECT_EQ(AbsolutePath(folder.PathOf("link/..")), real);
  EXPECT_EQ(AbsolutePath(folder.PathOf("link/../")), real);
  EXPECT_EQ(AbsolutePath(folder.PathOf("link/../.")), real);
  EXPECT_EQ(AbsolutePath(folder.PathOf("link/../a.htm")), real + "/a.htm");
}

TEST(AbsolutePathTest, KeepsALinkThatAPathEndsIn) {
  const TestFolder folder;
  folder.Write("real.chm", "");
  folder.Write("deep/x", "");
  std::filesystem::create_symlink(folder.PathOf("real.chm"), folder.PathOf("link.chm"));
  EXPECT_EQ(AbsolutePath(folder.PathOf("link.chm")), folder.PathOf("link.chm"));
  EXPECT_EQ(AbsolutePath(folder.PathOf("deep/../link.chm")),
            std::filesystem::canonical(folder.path()).string() + "/link.chm");
}

TEST(AbsolutePathTest, LeavesOutWhatChangesNothing) {
  EXPECT_EQ(AbsolutePath("/a/./b//c/"), "/a/b/c");
  EXPECT_EQ(AbsolutePath("/"), "/");
  EXPECT_EQ(AbsolutePath("a"), (std::filesystem::current_path() / "a").string());
}

TEST(ForeignCompilerPathTest, RefusesAQuotationMarkInThePath) {
  const TestFolder folder;
  folder.Write("a\"b/hhc", "");
  TheServices() = CreateSystemServices();
  try {
    ForeignCompilerPath(folder.PathOf("a\"b/hhc"));
    ADD_FAILURE() << "it was not refused";
  } catch (const Error& error) {
    EXPECT_EQ(error.description,
              folder.PathOf("a\"b/hhc") +
                  ": the compiler cannot be run: the path contains a quotation mark, which a "
                  "command line cannot carry. Move the compiler, or use a link to it.");
  }
  TheServices() = {};
}

class LongPath : public ScrivoRun {
 protected:
  // Folders in one another, from the top of the web on, each with a page; no call could name the
  // deepest of them by a whole path.
  void MakeDeepFolders(int depth) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(web.path());
    for (int level = 0; level < depth; ++level) {
      const std::string name(240, static_cast<char>('a' + level));
      std::filesystem::create_directory(name);
      std::filesystem::current_path(name);
      std::ofstream("page.htm") << "<title>Page</title>";
    }
    std::filesystem::current_path(before);
  }
  // How many lines of the errors hold `text`.
  std::ptrdiff_t LinesWith(const std::string& text) const {
    std::istringstream lines(err);
    std::ptrdiff_t count = 0;
    for (std::string line; std::getline(lines, line);) count += line.find(text) != line.npos;
    return count;
  }
};

TEST_F(LongPath, ThatNoHelpFileHoldsIsToldAndLeftOut) {
  MakeDeepFolders(10);  // 2,410 bytes
  EXPECT_EQ(Compile({"--contents", "navigation"}), 0) << err;
  EXPECT_EQ(LinesWith("page.htm\" is too long for a help file and was left out."), 2) << err;
  Unpack();
  EXPECT_TRUE(output.Has("un packed/" + std::string(240, 'a') + "/page.htm"));
}

TEST_F(LongPath, ThatTheSystemDoesNotTakeIsToldAndLeftOut) {
  MakeDeepFolders(18);  // 4,338 bytes
  EXPECT_EQ(Compile({"--contents", "navigation"}), 0) << err;
  EXPECT_EQ(LinesWith("folder skipped: "), 1) << err;
  EXPECT_EQ(LinesWith("File name too long"), 1) << err;
  Unpack();
  EXPECT_TRUE(output.Has("un packed/docs/a.htm"));
}

TEST_F(LongPath, AsTheOutputIsOneError) {
  EXPECT_EQ(Run({"compile", WebPath(), "-o", output.PathOf(std::string(300, 'x') + ".chm")}), 1);
  EXPECT_EQ(LinesWith("error: "), 1) << err;
  EXPECT_EQ(LinesWith("File name too long"), 1) << err;
}

class LinkedWeb : public ScrivoRun {};

TEST_F(LinkedWeb, IsCopiedForAnotherCompilerWithWhatItsLinksLeadTo) {
  namespace fs = std::filesystem;
  const TestFolder elsewhere;
  elsewhere.Write("b.htm", "<title>B</title>");
  fs::create_symlink(elsewhere.path(), web.path() / "linked");
  fs::create_symlink(web.path(), web.path() / "docs" / "round");
  web.Write("_derived/deep/c.gif", "GIF");
  fs::create_symlink(web.path() / "_derived", web.path() / "_derived" / "deep" / "round");
  fs::create_symlink("nowhere", web.path() / "lost.gif");
  EXPECT_EQ(CompileWithFake("list its folder\n" + output.PathOf("list.txt")), 0) << err;
  const std::string list = output.Read("list.txt");
  EXPECT_NE(list.find("./linked/b.htm\n"), std::string::npos) << list;
  EXPECT_NE(list.find("./_derived/deep/c.gif\n"), std::string::npos) << list;
  EXPECT_EQ(list.find("round"), std::string::npos) << list;
  EXPECT_NE(Plain(err).find("scrivo: warning: WEB/lost.gif: kept from the compiler: No such file"),
            std::string::npos)
      << err;
  EXPECT_TRUE(elsewhere.Has("b.htm")) << "the copy is removed, not what it was made from";
}

class OutputInTheWay : public ScrivoRun {};

TEST_F(OutputInTheWay, IsKeptWhenItIsNotAFileThatCanBeReplaced) {
  ASSERT_EQ(mkfifo(Output().c_str(), 0600), 0);
  const std::string line =
      "scrivo: error: OUT/a.chm: the help file cannot be made: it is a device, a pipe or a "
      "socket. Name a file.\n";
  EXPECT_EQ(Compile(), 1);
  EXPECT_TRUE(Plain(err).ends_with(line)) << err;
  EXPECT_EQ(out, "");
  EXPECT_EQ(CompileWithFake("make"), 1);
  EXPECT_TRUE(Plain(err).ends_with(line)) << err;
  EXPECT_TRUE(std::filesystem::is_fifo(Output()));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1);
  EXPECT_TRUE(ProjectFiles().empty());
}

class StartOfTheCompiler : public ScrivoRun {
 protected:
  std::string StartFailureOf(const std::string& bytes, bool executable) {
    web.Write("hhc", bytes);
    using std::filesystem::perms;
    std::filesystem::permissions(web.PathOf("hhc"),
                                 executable ? perms::owner_all : perms::owner_read);
    EXPECT_EQ(Run({"compile", WebPath(), "-o", Output(), "--compiler", web.PathOf("hhc")}), 1);
    EXPECT_FALSE(output.Has("a.chm"));
    return Plain(err);
  }
};

TEST_F(StartOfTheCompiler, IsRefusedWithItsReason) {
  const std::string start = "scrivo: error: WEB/hhc: the compiler could not be started: ";
  EXPECT_NE(StartFailureOf("no program", false).find(start + "it cannot be run. "),
            std::string::npos)
      << err;
  EXPECT_NE(
      StartFailureOf("no program", true).find(start + "it is not a program for this system. "),
      std::string::npos)
      << err;
  EXPECT_NE(StartFailureOf("#!/none/such\n", true).find(start + "a file that it needs is "),
            std::string::npos)
      << err;
}

TEST_F(ScrivoRun, RefusesADeviceAPipeAndASocketAsTheOutput) {
  const std::string pipe = output.PathOf("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/null", output.PathOf("null.chm"));
  for (const std::string& path : {pipe, std::string("/dev/null"), output.PathOf("null.chm")}) {
    EXPECT_EQ(Run({"compile", WebPath(), "-o", path}), 1);
    EXPECT_NE(err.find("it is a device, a pipe or a socket. Name a file."), std::string::npos)
        << err;
  }
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  EXPECT_TRUE(std::filesystem::is_symlink(output.PathOf("null.chm")));
}

}  // namespace
}  // namespace scrivo

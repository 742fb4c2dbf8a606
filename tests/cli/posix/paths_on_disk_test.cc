// Links, compilers in odd places and ends of programs, as only a POSIX system has them.

#include "cli/compiler_choice.h"
#include "cli/open_web.h"
#include "platform/registry.h"
#include "system/error.h"
#include "tests/cli/scrivo_run.h"
#include "tests/doubles/fake_services.h"

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

class CompilerChoice : public WithFakeServices {
 protected:
  static std::string Refusal(const std::string& wanted) {
    try {
      ChooseCompiler(wanted);
    } catch (const Error& error) {
      return error.description;
    }
    return "";
  }
};

TEST_F(CompilerChoice, TakesACompilerInTheRootFolder) {
  files->files["/hhc"] = "";
  EXPECT_EQ(ChooseCompiler("/hhc"), "/hhc");
  CRegistry users;
  users.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
  const RegistryValue folder =
      users.GetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir", std::string());
  EXPECT_EQ(std::get<std::string>(folder), "/");
  EXPECT_EQ(Globals().compiler_file_name, "hhc");
}

TEST_F(CompilerChoice, SaysThatNoCompilerWasFound) {
  EXPECT_EQ(Refusal(""), "no help compiler was found. Name one with --compiler FILE.");
}

TEST_F(CompilerChoice, RefusesACompilerWithAQuotationMarkInItsPath) {
  files->files["/a\"b/hhc"] = "";
  EXPECT_EQ(Refusal("/a\"b/hhc"),
            "/a\"b/hhc: the compiler cannot be run: a command line cannot carry the quotation mark "
            "in its path. Move it or name it through a link.");
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
  EXPECT_NE(StartFailureOf("no program", false).find(start + "it may not be run. "),
            std::string::npos)
      << err;
  EXPECT_NE(StartFailureOf("no program", true).find(start + "it is no program for this system. "),
            std::string::npos)
      << err;
  EXPECT_NE(StartFailureOf("#!/none/such\n", true).find(start + "a file that it needs to run is "),
            std::string::npos)
      << err;
}

}  // namespace
}  // namespace scrivo

#include "platform/temp_files.h"

#include "platform/shell.h"
#include "system/files.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class TempFiles : public WithFakeServices {
 protected:
  TempFiles() { files->folders = {"C:\\web", "/web"}; }
};

TEST_F(TempFiles, AreMadeWithThreeLettersOfThePrefixAndFreedAgain) {
  EXPECT_EQ(GetTempFile("C:\\web", "Scrivo", PathStyle::kWindows), "C:\\web\\Scr1A2.tmp");
  EXPECT_EQ(files->log, (std::vector<std::string>{"unique C:\\web\\Scr1A2.tmp",
                                                  "remove! C:\\web\\Scr1A2.tmp"}));
  EXPECT_TRUE(files->files.empty());
}

TEST_F(TempFiles, DifferFromCallToCall) {
  const std::string one = GetTempFile("/web", "Scrivo", PathStyle::kPosix);
  const std::string two = GetTempFile("/web", "Scrivo", PathStyle::kPosix);
  EXPECT_NE(one, two);
  EXPECT_FALSE(files->FileExists(one));
  EXPECT_FALSE(files->FileExists(two));
}

TEST_F(TempFiles, HaveNoNameInAMissingFolder) {
  EXPECT_EQ(GetTempFile("http://server/web", "Scrivo"), "");
  EXPECT_TRUE(files->log.empty());
}

TEST_F(TempFiles, HaveNoNameWhenMakingThemFails) {
  files->failures.emplace("unique /web/Scr1A2.tmp", Error(kDiskFull, "", "Disk full"));
  EXPECT_EQ(GetTempFile("/web", "Scrivo", PathStyle::kPosix), "");
}

TEST_F(TempFiles, KeepTheirNameWhenTheFileCannotBeFreed) {
  files->failures.emplace("remove! /web/Scr1A2.tmp", Error(kPermissionDenied, "", "x"));
  EXPECT_EQ(GetTempFile("/web", "Scrivo", PathStyle::kPosix), "/web/Scr1A2.tmp");
}

TEST_F(TempFiles, OfTheWindowsStyleHaveAtMost127Characters) {
  const std::string rest = "\\Scr1A2.tmp";
  const std::string fits = "C:\\" + std::string(127 - 3 - rest.size(), 'f');
  const std::string longer = fits + "g";
  files->folders.insert(fits);
  files->folders.insert(longer);
  EXPECT_EQ(GetTempFile(fits, "Scrivo", PathStyle::kWindows), fits + rest);
  // Cut, the name would be another file's; the made file goes all the same.
  EXPECT_EQ(GetTempFile(longer, "Scrivo", PathStyle::kWindows), "");
  EXPECT_TRUE(files->files.empty());
}

TEST_F(TempFiles, OfThePosixStyleHaveNoSuchLimit) {
  const std::string folder = "/" + std::string(200, 'f');
  files->folders.insert(folder);
  EXPECT_EQ(GetTempFile(folder, "Scrivo", PathStyle::kPosix), folder + "/Scr1A2.tmp");
}

class EmbeddedNul : public MemoryFiles {
 public:
  std::string MakeUniqueFile(const std::string& folder, const std::string& prefix) override {
    return MemoryFiles::MakeUniqueFile(folder, prefix) + std::string(5, '\0');
  }
};

TEST_F(TempFiles, AreCutAtTheFirstNul) {
  const auto padded = std::make_shared<EmbeddedNul>();
  padded->folders = {"/web"};
  TheServices().files = padded;
  EXPECT_EQ(GetTempFile("/web", "Scrivo", PathStyle::kPosix), "/web/Scr1A2.tmp");
  EXPECT_TRUE(padded->files.empty());
}

TEST_F(TempFiles, ShortPathIsTheSystemsShortForm) {
  files->files["C:\\my web"] = "";
  EXPECT_EQ(GetShortPath("C:\\my web"), "C:\\my_web");
  EXPECT_EQ(GetShortPath("C:\\missing"), "");
}

TEST_F(TempFiles, ShortPathOfTheWindowsStyleMustFitItsBuffer) {
  const std::string fits = "C:\\" + std::string(256, 'x');
  files->files[fits] = files->files[fits + "y"] = "";
  EXPECT_EQ(GetShortPath(fits, PathStyle::kWindows), fits);
  EXPECT_EQ(GetShortPath(fits + "y", PathStyle::kWindows), "");
  EXPECT_EQ(GetShortPath(fits + "y", PathStyle::kPosix), fits + "y");
}

class NoShortForms : public MemoryFiles {
 public:
  std::string ShortForm(const std::string&) override { throw Error(kDeviceIoError, "", "x"); }
};

TEST_F(TempFiles, ShortPathNeverRaises) {
  TheServices().files = std::make_shared<NoShortForms>();
  EXPECT_EQ(GetShortPath("C:\\x"), "");
}

TEST_F(TempFiles, TextIsWrittenWholeWithALineEnd) {
  WriteTextFile("/web/a.hhc", "<html>\r\n</html>");
  EXPECT_EQ(files->files["/web/a.hhc"], "<html>\r\n</html>\r\n");
  WriteTextFile("/web/a.hhc", "<html>\r\n");
  EXPECT_EQ(files->files["/web/a.hhc"], "<html>\r\n\r\n") << "one that it has is no reason";
  WriteTextFile("/web/a.hhc", "");
  EXPECT_EQ(files->files["/web/a.hhc"], "\r\n");
  EXPECT_EQ(files->log.size(), 3u);
}

TEST_F(TempFiles, TextThatCannotBeWrittenIsAnErrorForTheCaller) {
  files->failures.emplace("write /web/a.hhc", Error(kDiskFull, "Files", "Disk full: /web/a.hhc"));
  ExpectError([] { WriteTextFile("/web/a.hhc", "x"); }, kDiskFull, "Files",
              "Disk full: /web/a.hhc");
}

class SpecialFolder : public WithFakeServices {};

TEST_F(SpecialFolder, IsThePathOfTheShellsItemList) {
  desktop->browse_path = "C:\\Users\\me\\Documents";
  EXPECT_EQ(GetSpecialFolder(0x77, kDocumentsFolder), "C:\\Users\\me\\Documents");
  EXPECT_EQ(shell->asked_folders, std::vector<std::int32_t>{5});
  EXPECT_EQ(shell->folder_owners, std::vector<WindowHandle>{0x77});
  EXPECT_EQ(shell->freed, std::vector<std::uintptr_t>{FakeShell::kItemList});
}

TEST_F(SpecialFolder, IsEmptyWhenThereIsNone) {
  desktop->browse_path = "C:\\x";
  shell->location_result = -1;
  EXPECT_EQ(GetSpecialFolder(0, 99), "");
  EXPECT_TRUE(shell->freed.empty());
}

TEST_F(SpecialFolder, IsEmptyWhenTheItemListHasNoPath) {
  EXPECT_EQ(GetSpecialFolder(0, 17), "");
  EXPECT_EQ(shell->freed.size(), 1u);
}

class NoPaths : public FakeDesktop {
 public:
  bool PathFromItemList(std::uintptr_t, char*) override { throw Error(1, "", "x"); }
};

TEST_F(SpecialFolder, NeverRaisesAndFreesTheItemListAllTheSame) {
  TheServices().desktop = std::make_shared<NoPaths>();
  EXPECT_EQ(GetSpecialFolder(0, 5), "");
  EXPECT_EQ(shell->freed.size(), 1u);
}

class Help : public WithFakeServices {};

TEST_F(Help, OpensTheFirstTopicOfTheHelpFileBesideTheLibrary) {
  Globals().path_style = PathStyle::kWindows;
  Globals().help_owner = [] { return WindowHandle{0x99}; };
  system->module_folder = "C:\\Program Files\\Scrivo";
  ShowHelp();
  ASSERT_EQ(desktop->help_calls.size(), 1u);
  EXPECT_EQ(desktop->help_calls[0].owner, 0x99u);
  EXPECT_EQ(desktop->help_calls[0].file, "C:\\Program Files\\Scrivo\\Scrivo.CHM");
  EXPECT_EQ(desktop->help_calls[0].command, 0u);
  EXPECT_EQ(desktop->help_calls[0].data, "index.html");
}

TEST_F(Help, HasNoOwnerWithoutADialog) {
  ShowHelp();
  ASSERT_EQ(desktop->help_calls.size(), 1u);
  EXPECT_EQ(desktop->help_calls[0].owner, 0u);
}

TEST_F(Help, IsShownAlsoWhenItsOwnerCannotBeMade) {
  Globals().help_owner = []() -> WindowHandle { throw Error(1, "", "no window"); };
  ShowHelp();
  EXPECT_EQ(desktop->help_calls.size(), 1u);
}

class NoHelp : public FakeDesktop {
 public:
  WindowHandle HtmlHelp(WindowHandle, const std::string&, std::uint32_t,
                        const std::string&) override {
    throw Error(1, "", "no viewer");
  }
};

TEST_F(Help, NeverRaises) {
  TheServices().desktop = std::make_shared<NoHelp>();
  EXPECT_NO_THROW(ShowHelp());
}

}  // namespace
}  // namespace scrivo

// The system, shell and desktop of a POSIX machine, and its services as a whole.

#include "system/services.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>

#include "platform/globals.h"
#include "platform/posix/services.h"
#include "platform/settings.h"
#include "platform/shell.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {
namespace {

// Sets an environment variable, and back to what it was at the end.
class WithVariable {
 public:
  WithVariable(const char* name, const char* value) : name_(name) {
    if (const char* const before = std::getenv(name)) before_ = before;
    was_set_ = std::getenv(name) != nullptr;
    if (value) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  ~WithVariable() {
    if (was_set_) {
      setenv(name_.c_str(), before_.c_str(), 1);
    } else {
      unsetenv(name_.c_str());
    }
  }

 private:
  std::string name_, before_;
  bool was_set_ = false;
};

TEST(UserFolders, FollowTheEnvironment) {
  const WithVariable home("HOME", "/home/me");
  EXPECT_EQ(HomeFolder(), "/home/me");
  {
    const WithVariable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(ConfigurationFolder(), "/home/me/.config");
  }
  {
    const WithVariable config("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(ConfigurationFolder(), "/home/me/.config");
  }
  const WithVariable config("XDG_CONFIG_HOME", "/elsewhere");
  EXPECT_EQ(ConfigurationFolder(), "/elsewhere");
}

TEST(UserFolders, AreThoseOfTheListOfUsersWithoutHome) {
  // The database knows those of the list, and may know more.
  const passwd* const user = getpwuid(getuid());
  std::ifstream file("/etc/passwd");
  const std::string list(std::istreambuf_iterator<char>(file), {});
  const bool listed = user && list.find(std::string(user->pw_name) + ":") != std::string::npos;
  for (const char* const value : {static_cast<const char*>(nullptr), ""}) {
    const WithVariable home("HOME", value);
    EXPECT_EQ(HomeFolder(), listed ? user->pw_dir : "/");
  }
}

TEST(System, TellsDateAndTimeInTheUsersForm) {
  const WithVariable locale("LC_ALL", "C");
  PosixSystem system;
  EXPECT_TRUE(std::regex_match(system.DateText(), std::regex("\\d\\d/\\d\\d/\\d\\d")))
      << system.DateText();
  EXPECT_TRUE(std::regex_match(system.TimeText(), std::regex("\\d\\d:\\d\\d:\\d\\d")))
      << system.TimeText();
}

TEST(System, TellsThemInTheCFormWhenTheLocaleIsUnknown) {
  const WithVariable locale("LC_ALL", "xx_NOWHERE");
  EXPECT_TRUE(std::regex_match(PosixSystem().DateText(), std::regex("\\d\\d/\\d\\d/\\d\\d")));
}

TEST(System, IsNoWindows) {
  std::uint32_t platform = 2;
  EXPECT_FALSE(PosixSystem().PlatformId(156, &platform));
  EXPECT_FALSE(PosixSystem().PlatformId(148, &platform));
}

TEST(System, NamesThisProgram) {
  PosixSystem system;
  EXPECT_EQ(system.ModuleName(), "platform_tests");
  EXPECT_TRUE(std::filesystem::exists(system.ModuleFolder() + "/platform_tests"));
}

TEST(System, HasWesternTextUntilAnotherCodePageIsSet) {
  PosixSystem system;
  EXPECT_EQ(system.AnsiCodePage(), 1252);
  system.SetAnsiCodePage(1251);
  EXPECT_EQ(system.AnsiCodePage(), 1251);
}

TEST(System, HasNoNamedMutexes) {
  ExpectError([] { PosixSystem().HoldMutex("Scrivo"); }, kObjectDoesNotSupportThis, "",
              "Scrivo: this system has no named mutexes");
}

TEST(System, TakesErrorEvents) { PosixSystem().WriteErrorEvent("Scrivo", "a test: 100%s"); }

// A search path with an "xdg-open" of our own that tells its argument through a named pipe.
class Opening : public testing::Test {
 protected:
  Opening() {
    EXPECT_EQ(mkfifo((folder / "told").c_str(), 0600), 0);
    MakeProgram("bin/xdg-open", "printf %s \"$1\" > '" + (folder / "told") + "'\n");
  }

  void MakeProgram(const std::string& name, const std::string& script) {
    std::filesystem::create_directories(std::filesystem::path(folder / name).parent_path());
    std::ofstream(folder / name) << "#!/bin/sh\n" << script;
    EXPECT_EQ(chmod((folder / name).c_str(), 0755), 0);
  }

  // What the started program tells; waits for it.
  std::string Told() {
    std::ifstream stream(folder / "told");
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::int32_t Execute(const std::string& verb, const std::string& file,
                       const std::string& parameters = "", const std::string& in_folder = "") {
    ShellRequest request;
    request.verb = verb;
    request.file = file;
    request.parameters = parameters;
    request.folder = in_folder;
    return shell.Execute(request);
  }

  TempFolder folder;
  const WithVariable path{"PATH", ((folder / "bin") + ":/usr/bin:/bin").c_str()};
  PosixShell shell;
};

TEST_F(Opening, HandsAddressesToTheDesktop) {
  for (const char* const address : {"http://example.org/a?b=c d", "mailto:me@example.org"}) {
    EXPECT_GT(Execute("open", address), 32);
    EXPECT_EQ(Told(), address);
  }
}

TEST_F(Opening, HandsFilesAndFoldersToTheDesktop) {
  std::ofstream(folder / "a.chm") << "ITSF";
  EXPECT_GT(Execute("open", folder / "a.chm"), 32);
  EXPECT_EQ(Told(), folder / "a.chm");
  EXPECT_GT(Execute("explore", folder.path()), 32);
  EXPECT_EQ(Told(), folder.path());
}

TEST_F(Opening, HandsFilesThatOnlyLookLikeProgramsToTheDesktop) {
  std::ofstream(folder / "a.txt") << "text";
  chmod((folder / "a.txt").c_str(), 0755);
  EXPECT_GT(Execute("open", folder / "a.txt"), 32);
  EXPECT_EQ(Told(), folder / "a.txt");
}

TEST_F(Opening, StartsAProgramWithItsParametersInItsFolder) {
  MakeProgram("my tool", "{ pwd -P; printf '%s|' \"$@\"; } > '" + (folder / "told") + "'\n");
  EXPECT_GT(Execute("open", folder / "my tool", "one \"two words\" three\\ more", "/"), 32);
  EXPECT_EQ(Told(), "/\none|two words|three more|");
}

TEST_F(Opening, TellsWhatCannotBeOpened) {
  EXPECT_EQ(Execute("open", folder / "missing"), 2);
  EXPECT_EQ(Execute("properties", folder.path()), 31);
  EXPECT_EQ(Execute("print", folder.path()), 31);
  MakeProgram("tool", "");
  EXPECT_EQ(Execute("open", folder / "tool", "", folder / "missing"), 3);
  const WithVariable nowhere("PATH", "/nonexistent");
  EXPECT_EQ(Execute("open", "http://example.org/"), 31);
  ExtendedShellRequest extended;
  extended.request.verb = "properties";
  extended.request.file = folder.path();
  EXPECT_EQ(shell.ExecuteExtended(extended), 31);
}

TEST_F(Opening, OpensHelpInTheUsersViewer) {
  PosixDesktop desktop;
  EXPECT_EQ(desktop.HtmlHelp(0, folder / "a.chm", kHelpDisplayToc, "index.htm"), 0u);
  EXPECT_EQ(Told(), folder / "a.chm");
}

TEST_F(Opening, SaysWhenThereIsNoViewer) {
  const WithVariable nowhere("PATH", "/nonexistent");
  PosixDesktop desktop;
  testing::internal::CaptureStderr();
  desktop.HtmlHelp(0, "/a.chm", kHelpDisplayToc, "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Cannot open /a.chm (xdg-open: No such file or directory)\n");
}

TEST(Desktop, WritesMessagesAsLinesAndAnswersWhatLosesNothing) {
  PosixDesktop desktop;
  testing::internal::CaptureStderr();
  EXPECT_EQ(desktop.ShowMessage("one\r\ntwo", kOkOnly | kInformation, "Scrivo"),
            MessageAnswer::kOk);
  EXPECT_EQ(desktop.ShowMessage("sure?", kYesNo | kQuestion, "Scrivo"), MessageAnswer::kNo);
  EXPECT_EQ(desktop.ShowMessage("failed", kAbortRetryIgnore, "Scrivo"), MessageAnswer::kAbort);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Scrivo: one\ntwo\nScrivo: sure? (answered: No)\nScrivo: failed (answered: Abort)\n");
}

TEST(Desktop, SaysWithANumberedErrorWhatItCannotDo) {
  PosixDesktop desktop;
  FileDialogRecord record;
  const std::pair<std::function<void()>, const char*> calls[] = {
      {[&] { desktop.FindTopLevelWindow("HH Parent", "x"); }, "searching for windows"},
      {[&] { desktop.SendToWindow(1, kCloseMessage); }, "sending messages to windows"},
      {[&] { desktop.OpenFileDialog(&record); }, "the dialog for opening a file"},
      {[&] { desktop.SaveFileDialog(&record); }, "the dialog for saving a file"},
      {[&] { desktop.ExtendedDialogError(); }, "a file dialog's error code"},
      {[&] { desktop.BrowseForFolder({}); }, "the folder browser"},
  };
  for (const auto& [call, what] : calls) {
    ExpectError(call, kObjectDoesNotSupportThis, "",
                std::string("This system has no windows, so this is not possible: ") + what);
  }
}

TEST(Desktop, TellsNoPathWithoutAnItemList) {
  char buffer[260];
  EXPECT_FALSE(PosixDesktop().PathFromItemList(0, buffer));
}

TEST(Desktop, TellsNoPathThatDoesNotFit) {
  PosixDesktop desktop;
  char buffer[260];
  const std::string fits(259, 'x'), longer(260, 'x');
  EXPECT_TRUE(desktop.PathFromItemList(reinterpret_cast<std::uintptr_t>(&fits), buffer));
  EXPECT_EQ(std::string(buffer), fits);
  EXPECT_FALSE(desktop.PathFromItemList(reinterpret_cast<std::uintptr_t>(&longer), buffer));
}

class AllServices : public testing::Test {
 protected:
  AllServices() { TheServices() = CreateSystemServices(); }
  ~AllServices() override { TheServices() = {}; }

  TempFolder home;
  const WithVariable home_variable{"HOME", home.path().c_str()};
  const WithVariable config_variable{"XDG_CONFIG_HOME", nullptr};
};

TEST_F(AllServices, AreThereButForTheRegistry) {
  TheServices() = CreateSystemServices();
  const Services& services = TheServices();
  EXPECT_TRUE(services.files && services.processes && services.desktop && services.shell &&
              services.system);
  EXPECT_FALSE(services.registry) << "this system has none";
}

TEST_F(AllServices, FindTheDocumentsFolder) {
  EXPECT_EQ(GetSpecialFolder(0, kDocumentsFolder), home / "Documents");
  std::filesystem::create_directory(home / ".config");
  std::ofstream(home / ".config/user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"$HOME/My papers\"\n";
  EXPECT_EQ(GetSpecialFolder(0, kDocumentsFolder), home / "My papers");
  EXPECT_EQ(GetSpecialFolder(0, 17), "");
}

}  // namespace
}  // namespace scrivo

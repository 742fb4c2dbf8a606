#include "platform/shell.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>

#include "system/error.h"
#include "tests/doubles/failing_registry.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

struct Expected {
  std::int32_t number;
  const char* text;
};

// Every code of the shell that is an error, as the members for files and folders report it.
const std::map<std::int32_t, Expected>& AllFailures() {
  static const std::map<std::int32_t, Expected> failures = {
      {2, {-2147221504 + 18041, "File not found"}},
      {3, {-2147221504 + 18042, "Path not found"}},
      {5, {-2147221504 + 18041, "File not found"}},
      {8, {-2147221504 + 18044, "Out of memory"}},
      {11, {-2147221504 + 18052, "Invalid EXE file or error in EXE image"}},
      {26, {-2147221504 + 18046, "A sharing violation occurred"}},
      {27, {-2147221504 + 18047, "Incomplete or invalid file association"}},
      {28, {-2147221504 + 18048, "DDE timeout"}},
      {29, {-2147221504 + 18049, "DDE transaction failed"}},
      {30, {-2147221504 + 18050, "DDE busy"}},
      {31, {-2147221504 + 18051, "No association for file extension"}},
      {32, {-2147221504 + 18045, "DLL not found"}},
  };
  return failures;
}

std::map<std::int32_t, Expected> AddressFailures() {
  std::map<std::int32_t, Expected> failures;
  for (const std::int32_t code : {8, 26, 28, 29, 30}) failures.insert(*AllFailures().find(code));
  return failures;
}

class ShellTest : public WithFakeServices {
 protected:
  ShellTest() {
    Globals() = GlobalState(PathStyle::kWindows);
    files->files["C:\\a\\tool.exe"] = "";
    files->files["readme"] = "";
    files->folders.insert("C:\\a");
  }

  // Runs `call` with every answer that the shell can give; those in `failures` are raised, all
  // others are not.
  void ExpectCodes(const std::map<std::int32_t, Expected>& failures,
                   const std::function<void(CShell&)>& call) {
    for (std::int32_t code = -1; code <= 64; ++code) {
      shell->result = code;
      const auto failure = failures.find(code);
      try {
        CShell subject;
        call(subject);
        EXPECT_EQ(failure, failures.end()) << "nothing raised for code " << code;
      } catch (const Error& error) {
        ASSERT_NE(failure, failures.end()) << "raised for code " << code;
        EXPECT_EQ(error.number, failure->second.number) << "code " << code;
        EXPECT_EQ(error.description, failure->second.text) << "code " << code;
        EXPECT_EQ(error.source, "Scrivo.CShell");
      }
    }
  }

  void ExpectError(std::int32_t number, const char* text, const std::function<void()>& call) {
    try {
      call();
      ADD_FAILURE() << "no error where there should be: " << text;
    } catch (const Error& error) {
      EXPECT_EQ(error.number, number);
      EXPECT_EQ(error.description, text);
      EXPECT_EQ(error.source, "Scrivo.CShell");
    }
  }

  // Registers a text as the default value of a key below HKEY_LOCAL_MACHINE\SOFTWARE\Classes.
  void Register(const std::string& key_path, const std::string& text) {
    RegistryHandle key = 0;
    ASSERT_EQ(registry->CreateKey(kHkeyLocalMachine, "SOFTWARE\\Classes\\" + key_path,
                                  kRightAllAccess, &key),
              kRegistrySuccess);
    if (!text.empty()) {
      registry->SetValue(key, "", kRegSz, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                         static_cast<std::uint32_t>(text.size() + 1));
    }
    registry->CloseKey(key);
  }

  // The verb that a document is opened with.
  std::string VerbOf(const std::string& path) {
    files->files[path] = "";
    shell->requests.clear();
    subject.OpenDocument(path);
    EXPECT_EQ(registry->OpenKeys(), 0u);
    return shell->requests.at(0).verb;
  }

  const ShellRequest& Request() { return shell->requests.at(0); }

  CShell subject;
};

TEST_F(ShellTest, MailReportsOnlyTheCodesOfAnAddress) {
  ExpectCodes(AddressFailures(), [](CShell& s) { s.CreateNewMailMessage("a@b", "", "", ""); });
}

TEST_F(ShellTest, AddressesReportOnlyTheirCodes) {
  ExpectCodes(AddressFailures(), [](CShell& s) { s.OpenUrl("http://example.org/"); });
}

TEST_F(ShellTest, ExploringReportsEveryCodeOfTheTable) {
  ExpectCodes(AllFailures(), [](CShell& s) { s.ExploreFolder("C:\\a"); });
}

TEST_F(ShellTest, OpeningAFolderReportsEveryCodeOfTheTable) {
  ExpectCodes(AllFailures(), [](CShell& s) { s.OpenFolder("C:\\a"); });
}

TEST_F(ShellTest, LaunchingWithoutWaitingReportsEveryCodeOfTheTable) {
  ExpectCodes(AllFailures(), [](CShell& s) { s.LaunchProgram("C:\\a\\tool.exe"); });
}

TEST_F(ShellTest, OpeningADocumentReportsEveryCodeOfTheTable) {
  ExpectCodes(AllFailures(), [](CShell& s) { s.OpenDocument("readme"); });
}

TEST_F(ShellTest, PropertiesReportEveryCodeUpTo32WithOneNumber) {
  std::map<std::int32_t, Expected> failures;
  for (std::int32_t code = -1; code <= 32; ++code) {
    failures[code] = {-2147221504 + 18054, "Cannot show properties"};
  }
  ExpectCodes(failures, [](CShell& s) { s.ShowProperties("C:\\a\\tool.exe", 0); });
}

TEST_F(ShellTest, MailWithAnAddressAloneIsJustThat) {
  subject.CreateNewMailMessage("help@example.org", "", "", "");
  EXPECT_EQ(Request().file, "mailto:help@example.org");
  EXPECT_EQ(Request().verb, "open");
}

TEST_F(ShellTest, MailWithAllPartsHasThemInThisOrderAndUnencoded) {
  subject.CreateNewMailMessage("a@b", "c@d", "My subject", "Line 1\r\nLine 2 & more");
  EXPECT_EQ(Request().file, "mailto:a@b?subject=My subject&cc=c@d&body=Line 1\r\nLine 2 & more");
}

TEST_F(ShellTest, MailWithoutASubjectHasNoQuestionMark) {
  subject.CreateNewMailMessage("a@b", "", "", "text");
  subject.CreateNewMailMessage("a@b", "c@d", "", "");
  EXPECT_EQ(shell->requests[0].file, "mailto:a@b&body=text");
  EXPECT_EQ(shell->requests[1].file, "mailto:a@b&cc=c@d");
}

TEST_F(ShellTest, EveryRequestIsOwnedByTheDesktopAndAsksForANormalWindow) {
  subject.CreateNewMailMessage("a@b", "", "", "");
  subject.ExploreFolder("C:\\a");
  subject.LaunchProgram("C:\\a\\tool.exe");
  subject.OpenDocument("readme");
  subject.OpenFolder("C:\\a");
  subject.OpenUrl("http://example.org/");
  ASSERT_EQ(shell->requests.size(), 6u);
  for (const ShellRequest& request : shell->requests) {
    EXPECT_EQ(request.owner, FakeShell::kDesktopWindow);
    EXPECT_EQ(request.show_command, 1);
  }
}

TEST_F(ShellTest, FoldersAndAddressesAreNamedWithTheirVerbAndNothingElse) {
  subject.ExploreFolder("C:\\x");
  subject.OpenFolder("C:\\y");
  subject.OpenUrl("http://z/");
  const char* expected[][2] = {{"explore", "C:\\x"}, {"open", "C:\\y"}, {"open", "http://z/"}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(shell->requests[i].verb, expected[i][0]);
    EXPECT_EQ(shell->requests[i].file, expected[i][1]);
    EXPECT_EQ(shell->requests[i].parameters, "");
    EXPECT_EQ(shell->requests[i].folder, "");
  }
}

TEST_F(ShellTest, LaunchingWithoutWaitingGivesTheShellParametersAndTheProgramsFolder) {
  subject.LaunchProgram("C:\\a\\tool.exe", "-x 1");
  EXPECT_EQ(Request().verb, "open");
  EXPECT_EQ(Request().file, "C:\\a\\tool.exe");
  EXPECT_EQ(Request().parameters, "-x 1");
  EXPECT_EQ(Request().folder, "C:\\a");
  EXPECT_TRUE(processes->requests.empty());
}

TEST_F(ShellTest, LaunchingAMissingProgramStartsNothing) {
  for (const bool wait : {false, true}) {
    ExpectError(CShell::kFileNotFound, "File not found",
                [&] { subject.LaunchProgram("C:\\a\\none.exe", "", wait); });
  }
  EXPECT_TRUE(shell->requests.empty());
  EXPECT_TRUE(processes->log.empty());
}

TEST_F(ShellTest, AFolderIsNoProgramAndNoDocument) {
  ExpectError(CShell::kFileNotFound, "File not found", [&] { subject.LaunchProgram("C:\\a"); });
  ExpectError(CShell::kFileNotFound, "File not found", [&] { subject.OpenDocument("C:\\a"); });
}

TEST_F(ShellTest, LaunchingWithWaitingRunsAProcessToItsEnd) {
  subject.LaunchProgram("C:\\a\\tool.exe", "-x 1", true);
  ASSERT_EQ(processes->requests.size(), 1u);
  const StartRequest& request = processes->requests[0];
  EXPECT_EQ(request.command_line, "C:\\a\\tool.exe -x 1");
  EXPECT_EQ(request.folder, "");
  EXPECT_EQ(request.creation_flags, 32u);
  EXPECT_EQ(request.start_flags, 0u);
  EXPECT_FALSE(request.inherit_handles);
  EXPECT_EQ(processes->log, (std::vector<std::string>{"start", "close 2", "wait 1", "close 1"}));
  EXPECT_TRUE(processes->open_handles.empty());
  EXPECT_TRUE(shell->requests.empty());
}

TEST_F(ShellTest, AWaitedProgramWithoutParametersKeepsTheSpace) {
  subject.LaunchProgram("C:\\a\\tool.exe", "", true);
  EXPECT_EQ(processes->requests.at(0).command_line, "C:\\a\\tool.exe ");
}

TEST_F(ShellTest, AProcessThatCannotBeMadeIsReported) {
  processes->starts = false;
  ExpectError(-2147221504 + 18053, "Cannot create process",
              [&] { subject.LaunchProgram("C:\\a\\tool.exe", "", true); });
  EXPECT_EQ(processes->log, std::vector<std::string>{"start"});
}

TEST_F(ShellTest, TheWorkingFolderIsTheDocumentsOwnAndARootKeepsItsSeparator) {
  files->files["C:\\x"] = "";
  subject.OpenDocument("readme");
  subject.OpenDocument("C:\\x");
  EXPECT_EQ(shell->requests[0].folder, "");
  EXPECT_EQ(shell->requests[1].folder, "C:\\");

  Globals() = GlobalState(PathStyle::kPosix);
  files->files["/x"] = files->files["/a/x"] = "";
  subject.OpenDocument("/x");
  subject.OpenDocument("/a/x");
  EXPECT_EQ(shell->requests[2].folder, "/");
  EXPECT_EQ(shell->requests[3].folder, "/a");
}

TEST_F(ShellTest, ADocumentWithoutARegisteredTypeIsOpened) {
  EXPECT_EQ(VerbOf("C:\\readme"), "open");
  EXPECT_EQ(VerbOf("C:\\readme.zzz"), "open");
  Register(".yyy", "");
  EXPECT_EQ(VerbOf("C:\\readme.yyy"), "open");
  Register(".xxx", "xxxfile");
  EXPECT_EQ(VerbOf("C:\\readme.xxx"), "open");
}

TEST_F(ShellTest, TheVerbThatATypeNamesIsTaken) {
  Register(".htm", "htmlfile");
  Register("htmlfile\\Shell", "edit");
  Register("htmlfile\\Shell\\open", "");
  EXPECT_EQ(VerbOf("C:\\site\\index.htm"), "edit");
  EXPECT_EQ(VerbOf("index.htm"), "edit");
}

TEST_F(ShellTest, OpenIsTakenWhereverItStandsInTheListOfVerbs) {
  Register(".htm", "htmlfile");
  Register("htmlfile\\Shell\\edit", "");
  Register("htmlfile\\Shell\\OPEN", "");
  Register("htmlfile\\Shell\\print", "");
  EXPECT_EQ(VerbOf("a.htm"), "OPEN");
}

TEST_F(ShellTest, AnAcceleratorMarkDoesNotHideOpen) {
  Register(".htm", "htmlfile");
  Register("htmlfile\\Shell\\#first", "");
  Register("htmlfile\\Shell\\&Open", "");
  EXPECT_EQ(VerbOf("a.htm"), "&Open");
}

TEST_F(ShellTest, WithoutOpenTheFirstVerbListedIsTaken) {
  Register(".htm", "htmlfile");
  Register("htmlfile\\Shell\\edit", "");
  Register("htmlfile\\Shell\\print", "");
  EXPECT_EQ(VerbOf("a.htm"), "edit");
}

TEST_F(ShellTest, TheExtensionBeginsAtTheLastPoint) {
  Register(".gz", "gzfile");
  Register("gzfile\\Shell", "unpack");
  EXPECT_EQ(VerbOf("C:\\a.tar.gz"), "unpack");
  EXPECT_EQ(VerbOf("C:\\a.gz.tar"), "open");
}

TEST_F(ShellTest, APointInAFoldersNameBeginsNoExtension) {
  Register(".site", "sitefile");
  Register("sitefile\\Shell", "visit");
  EXPECT_EQ(VerbOf("C:\\my.site\\readme"), "open");
  EXPECT_EQ(VerbOf("C:\\my.site\\readme.site"), "visit");
}

// A registry whose verbs have names of a chosen length.
class LongVerbs : public FailingRegistry {
 public:
  LongVerbs(std::shared_ptr<RegistryStore> store, std::size_t length)
      : FailingRegistry(std::move(store)), name_(length, 'v') {}

  RegistryStatus EnumKey(RegistryHandle, std::uint32_t index, char* buffer,
                         std::uint32_t length) override {
    if (index > 0) return kRegistryNoMoreItems;
    if (name_.size() >= length) return kRegistryMoreData;
    std::copy_n(name_.c_str(), name_.size() + 1, buffer);
    return kRegistrySuccess;
  }

 private:
  std::string name_;
};

TEST_F(ShellTest, AVerbIsReadWholeWhenItFits2048CharactersWithItsNul) {
  Register(".htm", "htmlfile");
  Register("htmlfile\\Shell", "");
  for (const std::size_t length : {200u, 255u, 256u, 2047u}) {
    TheServices().registry = std::make_shared<LongVerbs>(registry, length);
    EXPECT_EQ(VerbOf("a.htm"), std::string(length, 'v'));
  }
  TheServices().registry = std::make_shared<LongVerbs>(registry, 2048);
  EXPECT_EQ(VerbOf("a.htm"), "open");
}

TEST_F(ShellTest, ADocumentIsOpenedInItsFolderWithoutParameters) {
  subject.OpenDocument("C:\\a\\tool.exe");
  EXPECT_EQ(Request().file, "C:\\a\\tool.exe");
  EXPECT_EQ(Request().folder, "C:\\a");
  EXPECT_EQ(Request().parameters, "");
}

TEST_F(ShellTest, PropertiesNeedAnExistingFileOrFolder) {
  ExpectError(CShell::kFileNotFound, "File not found",
              [&] { subject.ShowProperties("C:\\none", 0); });
  EXPECT_TRUE(shell->extended_requests.empty());
  subject.ShowProperties("C:\\a", 0);
  EXPECT_EQ(shell->extended_requests.size(), 1u);
}

TEST_F(ShellTest, PropertiesAskWithTheExtendedRecord) {
  subject.ShowProperties("C:\\a\\tool.exe", 0);
  subject.ShowProperties("C:\\a\\tool.exe", 4711);
  ASSERT_EQ(shell->extended_requests.size(), 2u);
  const ExtendedShellRequest& request = shell->extended_requests[0];
  EXPECT_EQ(request.structure_size, 60u);
  EXPECT_EQ(request.mask, 0x44Cu);
  EXPECT_EQ(request.request.owner, FakeShell::kDesktopWindow);
  EXPECT_EQ(request.request.verb, "properties");
  EXPECT_EQ(request.request.file, "C:\\a\\tool.exe");
  EXPECT_EQ(request.request.parameters, "");
  EXPECT_EQ(request.request.folder, "");
  EXPECT_EQ(request.request.show_command, 1);
  EXPECT_EQ(shell->extended_requests[1].request.owner, 4711u);
}

TEST_F(ShellTest, AnUnexpectedFailureIsTheComponentsOwn) {
  class BrokenShell : public FakeShell {
    WindowHandle DesktopWindow() override { throw std::bad_alloc(); }
  };
  TheServices().shell = std::make_shared<BrokenShell>();
  const std::function<void()> calls[] = {
      [&] { subject.CreateNewMailMessage("", "", "", ""); },
      [&] { subject.ExploreFolder("C:\\a"); },
      [&] { subject.LaunchProgram("C:\\a\\tool.exe"); },
      [&] { subject.OpenDocument("readme"); },
      [&] { subject.OpenFolder("C:\\a"); },
      [&] { subject.OpenUrl("x"); },
      [&] { subject.ShowProperties("C:\\a", 0); },
  };
  for (const auto& call : calls) {
    ExpectError(-2147221504 + 18055, "CShell component failure", call);
  }
}

}  // namespace
}  // namespace scrivo

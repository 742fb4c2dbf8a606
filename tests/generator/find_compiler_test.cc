#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

class FindCompilerTest : public GeneratorTest {
 protected:
  FindCompilerTest() { keys_.Init(static_cast<std::uint32_t>(kHkeyCurrentUser)); }

  void SetInstallFolder(const std::string& folder) {
    keys_.SetValue(kWorkshopKey, "InstallDir", folder, kRegSz);
  }
  std::string InstallFolder() {
    return std::get<std::string>(keys_.GetValue(kWorkshopKey, "InstallDir", std::string("(none)")));
  }
  // The user chooses this file in the next file dialog.
  void UserChooses(const std::string& path) {
    desktop->file_result = 1;
    desktop->file_answer.file_buffer = path + std::string(2, '\0');
  }

  CRegistry keys_;
};

TEST_F(FindCompilerTest, WithoutTheWorkshopsKeyTheUserIsToldAndNotAsked) {
  EXPECT_FALSE(Form()->FindCompiler());
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "Microsoft HTML Help WorkShop must be installed");
  EXPECT_EQ(desktop->messages[0].style, 0U);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_TRUE(desktop->opened.empty());
}

TEST_F(FindCompilerTest, TheCompilerOfTheInstallFolderIsTaken) {
  InstallCompiler("C:\\HHW");
  EXPECT_TRUE(Form()->FindCompiler());
  EXPECT_EQ(Globals().compiler_path, "C:\\HHW\\hhc.exe");
  EXPECT_TRUE(desktop->opened.empty());
}

TEST_F(FindCompilerTest, TheRegistryIsReadAnewEveryTime) {
  InstallCompiler("C:\\HHW");
  EXPECT_TRUE(Form()->FindCompiler());
  InstallCompiler("D:\\HHW");
  EXPECT_TRUE(Form()->FindCompiler());
  EXPECT_EQ(Globals().compiler_path, "D:\\HHW\\hhc.exe");
}

TEST_F(FindCompilerTest, ThePathStaysWhenTheDialogIsUnloaded) {
  InstallCompiler("C:\\HHW");
  EXPECT_TRUE(Form()->FindCompiler());
  frmMain::Unload();
  EXPECT_EQ(Globals().compiler_path, "C:\\HHW\\hhc.exe");
}

TEST_F(FindCompilerTest, PosixNamesTheCompilerInItsOwnWay) {
  const auto form = Form();
  Globals().path_style = PathStyle::kPosix;
  Globals().compiler_file_name = "hhc";
  SetInstallFolder("/usr/bin");
  files->files["/usr/bin/hhc"] = "compiler";
  EXPECT_TRUE(form->FindCompiler());
  EXPECT_EQ(Globals().compiler_path, "/usr/bin/hhc");
}

TEST_F(FindCompilerTest, WithoutAnInstallFolderTheUserIsAsked) {
  SetInstallFolder("");
  EXPECT_FALSE(Form()->FindCompiler());
  EXPECT_EQ(desktop->opened.size(), 1U);
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(FindCompilerTest, ThePathIsThatOfTheInstallFolderEvenWithTheFileMissing) {
  Globals().compiler_path = "D:\\earlier\\hhc.exe";
  SetInstallFolder("C:\\gone");
  EXPECT_FALSE(Form()->FindCompiler());
  EXPECT_EQ(desktop->opened.size(), 1U);
  EXPECT_EQ(Globals().compiler_path, "C:\\gone\\hhc.exe");
}

TEST_F(FindCompilerTest, WithAMissingFileTheUserIsAsked) {
  SetInstallFolder("C:\\gone");
  UserChooses("C:\\HHW\\hhc.exe");
  EXPECT_TRUE(Form()->FindCompiler());
  EXPECT_EQ(Globals().compiler_path, "C:\\HHW\\hhc.exe");
}

TEST_F(FindCompilerTest, TheFileDialogAsksForTheWorkshopsProgram) {
  Form()->SelectCompiler();
  ASSERT_EQ(desktop->opened.size(), 1U);
  const FileDialogRecord& record = desktop->opened[0];
  EXPECT_EQ(record.file_buffer.substr(0, 6), std::string("*.EXE\0", 6));
  EXPECT_EQ(record.dialog_title, "Select Microsoft HTML Help WorkShop hhc.exe file");
  EXPECT_EQ(record.filter, std::string("Applications (*.EXE)\0*.EXE\0\0", 28));
  EXPECT_EQ(record.filter_index, 1);
  EXPECT_EQ(record.title_buffer.substr(0, record.title_buffer.find('\0')),
            "Microsoft HTML Help Workshop compiler");
  EXPECT_EQ(record.owner, 77U);
}

TEST_F(FindCompilerTest, CancellingChoosesNothing) {
  EXPECT_FALSE(Form()->SelectCompiler());
  EXPECT_EQ(Globals().compiler_path, "");
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(FindCompilerTest, AChosenCompilerIsTakenAndItsFolderOfferedForSaving) {
  UserChooses("C:\\My HHW\\hhc.exe");
  desktop->answers = {MessageAnswer::kYes};
  EXPECT_TRUE(Form()->SelectCompiler());
  EXPECT_EQ(Globals().compiler_path, "C:\\My HHW\\hhc.exe");
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text,
            "Save Location of Microsoft HTML Help Workshop hhc.exe file for future use?");
  EXPECT_EQ(desktop->messages[0].style, 4U + 48U);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_EQ(InstallFolder(), "C:\\My HHW");
}

TEST_F(FindCompilerTest, OnNoTheFolderIsNotSaved) {
  UserChooses("C:\\HHW\\hhc.exe");
  desktop->answers = {MessageAnswer::kNo};
  EXPECT_TRUE(Form()->SelectCompiler());
  EXPECT_EQ(InstallFolder(), "(none)");
}

TEST_F(FindCompilerTest, AnyOtherNameIsRefusedTheSameInCapitalsToo) {
  for (const char* path : {"C:\\HHW\\HHC.EXE", "C:\\HHW\\Hhc.exe", "C:\\HHW\\hhw.exe",
                           "C:\\hhc.exe\\x", "C:\\HHW\\xhhc.exe"}) {
    desktop->messages.clear();
    UserChooses(path);
    EXPECT_FALSE(Form()->SelectCompiler()) << path;
    EXPECT_EQ(Globals().compiler_path, "");
    ASSERT_EQ(desktop->messages.size(), 1U);
    EXPECT_EQ(desktop->messages[0].text, "Wrong file name!");
    EXPECT_EQ(desktop->messages[0].style, 0U);
  }
}

TEST_F(FindCompilerTest, AnInstallFolderThatIsNoTextIsReported) {
  keys_.SetValue(kWorkshopKey, "InstallDir", std::int32_t{5}, kRegDword);
  EXPECT_FALSE(Form()->FindCompiler());
  EXPECT_TRUE(LastReportIsFrom("FindCompiler"));
  EXPECT_TRUE(desktop->opened.empty());
  dialog->answers = {"IGNORE"};
  EXPECT_FALSE(Form()->FindCompiler());
  EXPECT_EQ(desktop->opened.size(), 1U);
}

}  // namespace
}  // namespace scrivo

// What the procedures do when the desktop itself fails and the user answers the report.

#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

// A desktop whose next calls of one kind fail.
class FailingDesktop : public FakeDesktop {
 public:
  int messages_to_fail = 0;
  int searches_to_fail = 0;
  int sendings_to_fail = 0;
  int helps_to_fail = 0;

  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override {
    FailWhile(&messages_to_fail);
    return FakeDesktop::ShowMessage(text, style, caption);
  }
  WindowHandle FindTopLevelWindow(const std::string& class_name,
                                  const std::string& caption) override {
    FailWhile(&searches_to_fail);
    return FakeDesktop::FindTopLevelWindow(class_name, caption);
  }
  void SendToWindow(WindowHandle window, std::uint32_t message) override {
    FailWhile(&sendings_to_fail);
    FakeDesktop::SendToWindow(window, message);
  }
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override {
    FailWhile(&helps_to_fail);
    return FakeDesktop::HtmlHelp(owner, file, command, data);
  }

 private:
  static void FailWhile(int* times) {
    if ((*times)-- > 0) throw Error(kInternalError, "FailingDesktop", "The desktop failed");
    *times = 0;
  }
};

class FailingDesktopTest : public GeneratorTest {
 protected:
  FailingDesktopTest() { TheServices().desktop = failing; }

  std::shared_ptr<FailingDesktop> failing = std::make_shared<FailingDesktop>();
};

TEST_F(FailingDesktopTest, AQuestionIsAskedAgainOnRetry) {
  failing->messages_to_fail = 1;
  dialog->answers = {"RETRY"};
  failing->answers = {MessageAnswer::kNo};
  EXPECT_TRUE(Form()->CloseHelpViewer("T"));
  EXPECT_EQ(failing->messages.size(), 1U);
}

TEST_F(FailingDesktopTest, AnIgnoredQuestionCountsAsNo) {
  failing->messages_to_fail = 1;
  dialog->answers = {"IGNORE"};
  EXPECT_TRUE(Form()->CloseHelpViewer("T"));
  EXPECT_TRUE(LastReportIsFrom("CloseHelpViewer"));

  site.open = {{"a", true}};
  failing->messages_to_fail = 1;
  dialog->answers = {"IGNORE"};
  Form()->SaveModifiedPages();
  EXPECT_EQ(site.CountOf("Save a overwrite"), 0);
  EXPECT_TRUE(LastReportIsFrom("SaveModifiedPages"));
}

TEST_F(FailingDesktopTest, AnAbortedQuestionGivesTheDefaultResult) {
  failing->messages_to_fail = 1;
  EXPECT_FALSE(Form()->CloseHelpViewer("T"));
}

TEST_F(FailingDesktopTest, AViewerIsSearchedAgainOnRetryAndMissingOnIgnore) {
  failing->windows["HH Parent|T"] = 9;
  failing->answers = {MessageAnswer::kYes, MessageAnswer::kYes};
  failing->searches_to_fail = 1;
  dialog->answers = {"RETRY"};
  EXPECT_FALSE(Form()->CloseHelpViewer("T"));
  EXPECT_EQ(failing->sent.size(), 1U);
  failing->searches_to_fail = 1;
  dialog->answers = {"IGNORE"};
  EXPECT_TRUE(Form()->CloseHelpViewer("T"));
}

TEST_F(FailingDesktopTest, AViewerThatCannotBeClosedIsAnsweredByTheUser) {
  failing->windows["HH Parent|T"] = 9;
  failing->answers = {MessageAnswer::kYes, MessageAnswer::kYes};
  failing->sendings_to_fail = 1;
  dialog->answers = {"IGNORE"};
  EXPECT_FALSE(Form()->CloseHelpViewer("T"));
  EXPECT_TRUE(failing->sent.empty());
  failing->sendings_to_fail = 1;
  dialog->answers = {"RETRY"};
  EXPECT_FALSE(Form()->CloseHelpViewer("T"));
  EXPECT_EQ(failing->sent.size(), 1U);
}

TEST_F(FailingDesktopTest, AnErrorThatLeavesTheClosingOfTheViewerIsIgnored) {
  InstallCompiler();
  const std::string output = Form()->suiParams()["OUTPUT"].text;
  files->files[output] = "old";
  files->locked.insert(output);
  failing->messages_to_fail = 1;
  dialog->answers = {"THROW"};
  Form()->Generate();
  EXPECT_EQ(Reports(), 1);
  EXPECT_TRUE(LastReportIsFrom("CloseHelpViewer"));
  EXPECT_EQ(processes->requests.size(), 1U);
}

TEST_F(FailingDesktopTest, AViewerThatDoesNotOpenTheResultIsReportedByTheDriver) {
  InstallCompiler();
  const std::string output = Form()->suiParams()["OUTPUT"].text;
  processes->on_start = [&] { files->files[output] = "compiled"; };
  failing->helps_to_fail = 2;
  dialog->answers = {"RETRY", "IGNORE"};
  Form()->Generate();
  EXPECT_EQ(Reports(), 2);
  EXPECT_TRUE(LastReportIsFrom("Generate"));
  EXPECT_TRUE(failing->help_calls.empty());
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(FailingDesktopTest, AMessageAboutMissingKeywordsMayFail) {
  const auto form = Form();
  form->UseIndex(true);
  failing->messages_to_fail = 1;
  dialog->answers = {"IGNORE"};
  EXPECT_TRUE(form->BuildIndexFile());
  EXPECT_FALSE(form->UseIndex());
  form->UseIndex(true);
  failing->messages_to_fail = 1;
  EXPECT_FALSE(form->BuildIndexFile());
  EXPECT_TRUE(form->UseIndex());
}

TEST_F(FailingDesktopTest, AMessageAboutAMissingCompilerMayFail) {
  for (const char* answer : {"IGNORE", "ABORT"}) {
    failing->messages_to_fail = 1;
    dialog->answers = {answer};
    EXPECT_FALSE(Form()->FindCompiler());
    EXPECT_TRUE(LastReportIsFrom("FindCompiler"));
  }
}

TEST_F(FailingDesktopTest, AFailingOfferToSaveTheLocationLeavesTheChoice) {
  failing->file_result = 1;
  failing->file_answer.file_buffer = std::string("C:\\HHW\\hhc.exe\0", 15);
  for (const char* answer : {"IGNORE", "ABORT"}) {
    failing->messages_to_fail = 1;
    dialog->answers = {answer};
    EXPECT_TRUE(Form()->SelectCompiler()) << answer;
    EXPECT_EQ(Globals().compiler_path, "C:\\HHW\\hhc.exe");
    EXPECT_TRUE(LastReportIsFrom("SelectCompiler"));
  }
}

TEST_F(FailingDesktopTest, TheMessageAboutNoOpenWebMayFail) {
  site.is_open = false;
  failing->messages_to_fail = 1;
  dialog->answers = {"RETRY"};
  EXPECT_FALSE(frmMain::Load()->BuildUI());
  EXPECT_EQ(failing->messages.size(), 1U);
}

}  // namespace
}  // namespace scrivo

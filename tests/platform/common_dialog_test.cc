#include "platform/common_dialog.h"

#include <string>

#include "system/error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

using std::string_literals::operator""s;

// A desktop whose file dialogs and folder browser fail before they show anything.
class BrokenDesktop : public FakeDesktop {
 public:
  std::int32_t OpenFileDialog(FileDialogRecord*) override { throw Fault(); }
  std::int32_t SaveFileDialog(FileDialogRecord*) override { throw Fault(); }
  std::uintptr_t BrowseForFolder(const BrowseRecord&) override { throw Fault(); }

 private:
  static Error Fault() { return Error(kOutOfMemory, "desktop", "Out of memory"); }
};

class CommonDialogTest : public WithFakeServices {
 protected:
  // The user confirms with this in the buffers.
  void Confirm(const std::string& file, const std::string& title) {
    desktop->file_result = 1;
    desktop->file_answer.file_buffer = file;
    desktop->file_answer.title_buffer = title;
    desktop->file_answer.filter_index = 1;
  }

  const FileDialogRecord& Opened() { return desktop->opened.at(0); }
};

TEST_F(CommonDialogTest, AParameterThatIsLeftOutHasItsUsualMeaning) {
  FileDialogParameters dialog;
  EXPECT_FALSE(VBGetOpenFileName(&dialog));
  ASSERT_EQ(desktop->opened.size(), 1u);
  EXPECT_EQ(Opened().structure_size, 76u);
  EXPECT_EQ(Opened().owner, 0u);
  EXPECT_EQ(Opened().flags, kFileDialogFileMustExist + 0u);
  EXPECT_EQ(Opened().filter, "All (*.*)\0*.*\0\0"s);
  EXPECT_EQ(Opened().filter_index, 1);
}

TEST_F(CommonDialogTest, TheRecordCarriesEveryTextAndTheOwner) {
  FileDialogParameters dialog{.FileName = "*.EXE",
                              .FileTitle = "title",
                              .FilterIndex = 2,
                              .InitDir = "C:\\Start",
                              .DlgTitle = "Choose",
                              .DefaultExt = "*.CHM",
                              .Owner = 77};
  VBGetOpenFileName(&dialog);
  EXPECT_EQ(Opened().owner, 77u);
  EXPECT_EQ(Opened().initial_folder, "C:\\Start");
  EXPECT_EQ(Opened().dialog_title, "Choose");
  EXPECT_EQ(Opened().default_extension, "*.CHM");
  EXPECT_EQ(Opened().filter_index, 2);
  EXPECT_EQ(Opened().file_buffer, "*.EXE" + std::string(255, '\0'));
  EXPECT_EQ(Opened().title_buffer, "title" + std::string(255, '\0'));
  EXPECT_EQ(Opened().file_buffer_size, 260u);
  EXPECT_EQ(Opened().title_buffer_size, 260u);
}

TEST_F(CommonDialogTest, EachSwitchAddsItsFlag) {
  const struct {
    bool must_exist, multi_select, read_only, hide_read_only;
    std::uint32_t flags;
  } cases[] = {
      {false, false, false, false, 0},  {true, false, false, false, 4096},
      {false, true, false, false, 512}, {false, false, true, false, 1},
      {false, false, false, true, 4},   {true, true, true, true, 4096 + 512 + 1 + 4},
  };
  for (const auto& one : cases) {
    desktop->opened.clear();
    FileDialogParameters dialog{.FileMustExist = one.must_exist,
                                .MultiSelect = one.multi_select,
                                .ReadOnly = one.read_only,
                                .HideReadOnly = one.hide_read_only};
    VBGetOpenFileName(&dialog);
    EXPECT_EQ(Opened().flags, one.flags);
  }
}

TEST_F(CommonDialogTest, HookAndTemplateFlagsAreTakenOutAndOthersStay) {
  FileDialogParameters dialog{.FileMustExist = false, .Flags = 32 + 64 + 2 + 0x80000};
  VBGetOpenFileName(&dialog);
  EXPECT_EQ(Opened().flags, 2u + 0x80000u);
}

TEST_F(CommonDialogTest, BarsAndColonsSplitTheFilter) {
  FileDialogParameters dialog{.Filter = "Pages: all|*.htm|Disk C:|C:*.*"};
  VBGetOpenFileName(&dialog);
  EXPECT_EQ(Opened().filter, "Pages\0 all\0*.htm\0Disk C\0\0C\0*.*\0\0"s);
}

TEST_F(CommonDialogTest, AMultipleSelectionHasLargerBuffers) {
  FileDialogParameters dialog{.FileName = "a", .MultiSelect = true};
  VBGetOpenFileName(&dialog);
  EXPECT_EQ(Opened().file_buffer, "a" + std::string(8191, '\0'));
  EXPECT_EQ(Opened().file_buffer_size, 8192u);
  EXPECT_EQ(Opened().title_buffer, std::string(8192, '\0'));
  EXPECT_EQ(Opened().title_buffer_size, 8192u);
}

TEST_F(CommonDialogTest, TheSaveDialogIsUsedOnlyWhenAskedFor) {
  FileDialogParameters open, save{.Save = true};
  VBGetOpenFileName(&open);
  EXPECT_EQ(desktop->saved.size(), 0u);
  VBGetOpenFileName(&save);
  EXPECT_EQ(desktop->opened.size(), 1u);
  EXPECT_EQ(desktop->saved.size(), 1u);
}

TEST_F(CommonDialogTest, CancelClearsWhatIsGivenBack) {
  FileDialogParameters dialog{
      .FileName = "a.chm", .FileTitle = "a", .Filter = "A|*.a", .FilterIndex = 3, .Flags = 4};
  EXPECT_FALSE(VBGetOpenFileName(&dialog));
  EXPECT_EQ(dialog.FileName, "");
  EXPECT_EQ(dialog.FileTitle, "");
  EXPECT_EQ(dialog.Filter, "");
  EXPECT_EQ(dialog.Flags, 0u);
  EXPECT_EQ(dialog.FilterIndex, -1);
  EXPECT_EQ(LastDialogResult(), 0);
  EXPECT_EQ(LastExtendedDialogError(), 0u);
}

TEST_F(CommonDialogTest, ConfirmingGivesTheChoiceBack) {
  Confirm("C:\\out\\site.chm\0rest"s, "site.chm\0rest"s);
  desktop->file_answer.filter_index = 2;
  desktop->file_answer.flags = 0x401;
  FileDialogParameters dialog{.Filter = "Microsoft HTML Help (*.CHM)|*.CHM|All(*.*)|*.*"};
  EXPECT_TRUE(VBGetOpenFileName(&dialog));
  EXPECT_EQ(dialog.FileName, "C:\\out\\site.chm");
  EXPECT_EQ(dialog.FileTitle, "site.chm");
  EXPECT_EQ(dialog.Filter, "All(*.*)\0*.*"s);
  EXPECT_EQ(dialog.FilterIndex, 2);
  EXPECT_EQ(dialog.Flags, 0x401u);
  EXPECT_TRUE(dialog.ReadOnly);
  EXPECT_EQ(LastDialogResult(), 1);
}

TEST_F(CommonDialogTest, ReadOnlyKeepsItsValueWhenTheUserDidNotTickIt) {
  Confirm("a", "a");
  FileDialogParameters ticked_before{.ReadOnly = true}, never;
  VBGetOpenFileName(&ticked_before);
  VBGetOpenFileName(&never);
  EXPECT_TRUE(ticked_before.ReadOnly);
  EXPECT_FALSE(never.ReadOnly);
}

TEST_F(CommonDialogTest, SeveralFilesComeAsFolderAndNames) {
  Confirm("C:\\in\0one.htm\0two.htm\0\0\0\0"s, "one.htm");
  FileDialogParameters dialog{.MultiSelect = true};
  EXPECT_TRUE(VBGetOpenFileName(&dialog));
  EXPECT_EQ(dialog.FileName, "C:\\in\0one.htm\0two.htm"s);
  EXPECT_EQ(dialog.FileTitle, "");
}

TEST_F(CommonDialogTest, OneFileOfAMultipleSelectionIsItsFullPath) {
  Confirm("C:\\in\\one.htm"s + std::string(20, '\0'), "");
  FileDialogParameters padded{.MultiSelect = true};
  VBGetOpenFileName(&padded);
  EXPECT_EQ(padded.FileName, "C:\\in\\one.htm");

  Confirm("C:\\in\\one.htm\0x"s, "");
  FileDialogParameters without_double_nul{.MultiSelect = true};
  VBGetOpenFileName(&without_double_nul);
  EXPECT_EQ(without_double_nul.FileName, "C:\\in\\one.htm");
}

TEST_F(CommonDialogTest, AFailedDialogLeavesItsExtendedErrorUntilTheNextCall) {
  desktop->file_result = 2;
  desktop->extended_error = 0x3003;
  FileDialogParameters dialog{.FileName = "a.chm", .FilterIndex = 3, .Flags = 4};
  EXPECT_FALSE(VBGetOpenFileName(&dialog));
  EXPECT_EQ(LastDialogResult(), 2);
  EXPECT_EQ(LastExtendedDialogError(), 0x3003u);
  EXPECT_EQ(dialog.FileName, "");
  EXPECT_EQ(dialog.Filter, "");
  EXPECT_EQ(dialog.FilterIndex, -1);
  EXPECT_EQ(dialog.Flags, 0u);

  desktop->file_result = 0;
  VBGetOpenFileName(&dialog);
  EXPECT_EQ(LastDialogResult(), 0);
  EXPECT_EQ(LastExtendedDialogError(), 0u);
}

TEST_F(CommonDialogTest, ANameLongerThanTheBufferIsReportedAndNothingIsShown) {
  FileDialogParameters dialog{.FileName = std::string(261, 'n')};
  EXPECT_FALSE(VBGetOpenFileName(&dialog));
  EXPECT_TRUE(desktop->opened.empty());
  EXPECT_NE(ErrorLog().find("Error: 5, (Invalid procedure call or argument)\r\n\tin "
                            "Kestrel.mCommonDialog.VBGetOpenFileName at line 0"),
            std::string::npos);
}

TEST_F(CommonDialogTest, TextsAreInTheAnsiCodePageAndComeBackFromThere) {
  system->code_page = 936;
  FileDialogParameters dialog{.FileName = "\xE7\x9B\xAE",
                              .Filter = "\xE5\xBD\x95|*.x",
                              .DlgTitle = "\xE5\xBD\x95"};  // 目, 录
  Confirm("C:\\\xC2\xBC.chm\0"s, "\xC2\xBC.chm\0"s);
  EXPECT_TRUE(VBGetOpenFileName(&dialog));
  EXPECT_EQ(Opened().file_buffer.substr(0, 3), "\xC4\xBF\0"s);
  EXPECT_EQ(Opened().dialog_title, "\xC2\xBC");
  EXPECT_EQ(Opened().filter, "\xC2\xBC\0*.x\0\0"s);
  EXPECT_EQ(dialog.FileName, "C:\\\xE5\xBD\x95.chm");
  EXPECT_EQ(dialog.FileTitle, "\xE5\xBD\x95.chm");
  EXPECT_EQ(dialog.Filter, "\xE5\xBD\x95\0*.x"s);
}

TEST_F(CommonDialogTest, ABarThatIsTheSecondByteOfACharacterSplitsNoFilter) {
  system->code_page = 932;
  FileDialogParameters dialog{.Filter = "\xE3\x83\x9D|*.x"};  // ポ, in bytes 83 7C
  VBGetOpenFileName(&dialog);
  EXPECT_EQ(Opened().filter, "\x83|\0*.x\0\0"s);
}

TEST_F(CommonDialogTest, ANameFitsTheBufferByItsAnsiBytes) {
  std::string name;
  for (int i = 0; i < 260; ++i) name += "\xC3\xA9";
  FileDialogParameters dialog{.FileName = name};
  VBGetOpenFileName(&dialog);
  ASSERT_EQ(desktop->opened.size(), 1u);
  EXPECT_EQ(Opened().file_buffer, std::string(260, '\xE9'));
}

TEST_F(CommonDialogTest, AnUnexpectedFailureGoesToTheErrorHandler) {
  TheServices().desktop = std::make_shared<BrokenDesktop>();
  FileDialogParameters open, save{.Save = true};
  EXPECT_FALSE(VBGetOpenFileName(&open));
  EXPECT_FALSE(VBGetOpenFileName(&save));
  EXPECT_EQ(BrowseFolder(0, ""), "");
  std::size_t reports = 0;
  for (std::size_t at = 0;
       (at = ErrorLog().find("Error: 7, (Out of memory)", at)) != std::string::npos; ++at)
    ++reports;
  EXPECT_EQ(reports, 3u);
}

TEST_F(CommonDialogTest, TextEndsAtItsFirstNul) {
  EXPECT_EQ(StrZToStr("abc\0def\0"s), "abc");
  EXPECT_EQ(StrZToStr("abc"), "abc");
  EXPECT_EQ(StrZToStr("\0abc"s), "");
  EXPECT_EQ(StrZToStr(""), "");
}

TEST_F(CommonDialogTest, FilterLookupGivesTheEntryWithThatNumber) {
  const std::string list = "Microsoft HTML Help (*.CHM)\0*.CHM\0All(*.*)\0*.*\0\0"s;
  EXPECT_EQ(FilterLookup(list, 1), "Microsoft HTML Help (*.CHM)\0*.CHM"s);
  EXPECT_EQ(FilterLookup(list, 2), "All(*.*)\0*.*"s);
  EXPECT_EQ(FilterLookup(list, 3), "\0"s);  // the list's own end reads as one more entry
  EXPECT_EQ(FilterLookup(list, 4), "");
  EXPECT_EQ(FilterLookup(list, 0), "");
  EXPECT_EQ(FilterLookup(list, -1), "");
}

TEST_F(CommonDialogTest, FilterLookupTakesAnOpenEndAndRefusesALoneDescription) {
  EXPECT_EQ(FilterLookup("A\0*.a\0B\0*.b"s, 2), "B\0*.b"s);
  EXPECT_EQ(FilterLookup("A\0*.a\0B\0*.b"s, 3), "");
  EXPECT_EQ(FilterLookup("A", 1), "");
  EXPECT_EQ(FilterLookup("", 1), "");
}

TEST_F(CommonDialogTest, TheFolderBrowserGivesTheChosenPath) {
  desktop->browse_result = 9;
  desktop->browse_path = "C:\\Webs";
  EXPECT_EQ(BrowseFolder(55, "Select output directory"), "C:\\Webs");
  ASSERT_EQ(desktop->browsed.size(), 1u);
  EXPECT_EQ(desktop->browsed[0].owner, 55u);
  EXPECT_EQ(desktop->browsed[0].title, "Select output directory");
  EXPECT_EQ(desktop->browsed[0].flags, 69u);
}

TEST_F(CommonDialogTest, CancellingTheFolderBrowserGivesNothing) {
  desktop->browse_path = "C:\\Webs";
  EXPECT_EQ(BrowseFolder(0, ""), "");
}

TEST_F(CommonDialogTest, AnItemWithoutAPathGivesNothing) {
  desktop->browse_result = 9;
  EXPECT_EQ(BrowseFolder(0, ""), "");
}

TEST_F(CommonDialogTest, EveryFunctionIsTracedUnderItsOwnName) {
  ErrorHandler().TracingEnabled(true);
  Confirm("a", "a");
  FileDialogParameters dialog;
  VBGetOpenFileName(&dialog);
  desktop->browse_result = 9;
  BrowseFolder(0, "");
  const std::string trace = files->files["/log/trace.txt"];
  for (const char* name : {"VBGetOpenFileName", "StrZToStr", "FilterLookup", "BrowseFolder"}) {
    const std::string qualified = "Kestrel.mCommonDialog."s + name + "\r\n";
    EXPECT_NE(trace.find("Entered routine: " + qualified), std::string::npos) << name;
    EXPECT_NE(trace.find("Exited routine: " + qualified), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace scrivo

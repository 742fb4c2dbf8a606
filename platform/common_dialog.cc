#include "platform/common_dialog.h"

#include <algorithm>
#include <cstddef>

#include "errors/frame.h"
#include "system/error.h"
#include "system/services.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kRecordSize = 76;  // OPENFILENAME as 32-bit programs of Windows 95 know it
constexpr std::uint32_t kBufferSize = 260;
constexpr std::uint32_t kMultiSelectBufferSize = 8192;

// BROWSEINFO flags.
constexpr std::uint32_t kOnlyFileSystemFolders = 1;
constexpr std::uint32_t kStatusText = 4;
constexpr std::uint32_t kNewDialogStyle = 64;
constexpr std::size_t kPathBufferSize = 260;

std::int32_t last_result = 0;
std::uint32_t last_extended_error = 0;

// The name in the ANSI code page, with NULs up to `size` bytes.
std::string Buffer(const std::string& name, std::uint32_t size) {
  const std::string text = ToAnsi(name);
  if (text.size() > size) {
    throw Error(kInvalidProcedureCall, "mCommonDialog", "Invalid procedure call or argument");
  }
  std::string buffer = text;
  buffer.resize(size, '\0');
  return buffer;
}

std::string SplitFilter(std::string filter) {
  // Before it is ANSI text: there a "|" may be the second half of a character.
  std::replace_if(
      filter.begin(), filter.end(), [](char c) { return c == '|' || c == ':'; }, '\0');
  return ToAnsi(filter.append(2, '\0'));
}

std::uint32_t FlagsOf(const FileDialogParameters& dialog) {
  std::uint32_t flags = dialog.Flags & ~(kFileDialogEnableHook | kFileDialogEnableTemplate);
  if (dialog.FileMustExist) flags |= kFileDialogFileMustExist;
  if (dialog.MultiSelect) flags |= kFileDialogAllowMultiSelect;
  if (dialog.ReadOnly) flags |= kFileDialogReadOnly;
  if (dialog.HideReadOnly) flags |= kFileDialogHideReadOnly;
  return flags;
}

FileDialogRecord RecordOf(const FileDialogParameters& dialog) {
  FileDialogRecord record;
  record.structure_size = kRecordSize;
  if (dialog.Owner != kNoOwner) record.owner = dialog.Owner;
  record.flags = FlagsOf(dialog);
  record.initial_folder = ToAnsi(dialog.InitDir);
  record.dialog_title = ToAnsi(dialog.DlgTitle);
  record.default_extension = ToAnsi(dialog.DefaultExt);
  record.filter = SplitFilter(dialog.Filter);
  record.filter_index = dialog.FilterIndex;
  record.file_buffer_size = dialog.MultiSelect ? kMultiSelectBufferSize : kBufferSize;
  record.title_buffer_size = record.file_buffer_size;
  record.file_buffer = Buffer(dialog.FileName, record.file_buffer_size);
  record.title_buffer = Buffer(dialog.FileTitle, record.title_buffer_size);
  return record;
}

// The folder and the names of a multiple selection, which two NULs close.
std::string MultipleNames(const std::string& buffer) {
  const std::size_t end = buffer.find(std::string(2, '\0'));
  return end == std::string::npos ? StrZToStr(buffer) : buffer.substr(0, end);
}

void TakeChoice(const FileDialogRecord& record, FileDialogParameters* dialog) {
  if (dialog->MultiSelect) {
    dialog->FileTitle.clear();
    dialog->FileName = FromAnsi(MultipleNames(record.file_buffer));
  } else {
    dialog->FileName = FromAnsi(StrZToStr(record.file_buffer));
    dialog->FileTitle = FromAnsi(StrZToStr(record.title_buffer));
  }
  dialog->Flags = record.flags;
  dialog->FilterIndex = record.filter_index;
  dialog->Filter = FilterLookup(FromAnsi(record.filter), record.filter_index);
  if (record.flags & kFileDialogReadOnly) dialog->ReadOnly = true;
}

void ClearChoice(FileDialogParameters* dialog) {
  dialog->FileName.clear();
  dialog->FileTitle.clear();
  dialog->Filter.clear();
  dialog->Flags = 0;
  dialog->FilterIndex = -1;
}

}  // namespace

bool VBGetOpenFileName(FileDialogParameters* dialog) {
  const auto ask = [&](Steps& step, bool& confirmed) {
    Desktop& desktop = *TheServices().desktop;
    last_result = 0;
    last_extended_error = 0;
    FileDialogRecord record = step([&] { return RecordOf(*dialog); });
    last_result = step([&] {
      return dialog->Save ? desktop.SaveFileDialog(&record) : desktop.OpenFileDialog(&record);
    });
    confirmed = last_result == 1;
    if (confirmed) {
      step([&] { TakeChoice(record, dialog); });
    } else {
      if (last_result != 0) step([&] { last_extended_error = desktop.ExtendedDialogError(); });
      ClearChoice(dialog);
    }
  };
  return Procedure<bool>("Kestrel.mCommonDialog.VBGetOpenFileName", ask);
}

std::int32_t LastDialogResult() { return last_result; }

std::uint32_t LastExtendedDialogError() { return last_extended_error; }

std::string StrZToStr(const std::string& text) {
  return Procedure<std::string>("Kestrel.mCommonDialog.StrZToStr",
                                [&](Steps& step, std::string& result) {
                                  result = step([&] { return text.substr(0, text.find('\0')); });
                                });
}

std::string FilterLookup(const std::string& Filters, std::int32_t Index) {
  const auto look_up = [&](Steps& step, std::string& entry) {
    step([&] {
      std::size_t start = 0;
      for (std::int64_t left = Index; left != 0; --left) {
        const std::size_t middle = Filters.find('\0', start);
        if (middle == std::string::npos) return;
        const std::size_t end = Filters.find('\0', middle + 1);
        if (left == 1) entry = Filters.substr(start, end - start);
        if (left == 1 || end == std::string::npos) return;
        start = end + 1;
      }
    });
  };
  return Procedure<std::string>("Kestrel.mCommonDialog.FilterLookup", look_up);
}

std::string BrowseFolder(WindowHandle Owner, const std::string& Title) {
  const auto browse = [&](Steps& step, std::string& folder) {
    Desktop& desktop = *TheServices().desktop;
    BrowseRecord record;
    record.owner = Owner;
    record.title = Title;
    record.flags = kOnlyFileSystemFolders | kStatusText | kNewDialogStyle;
    const std::uintptr_t item_list = step([&] { return desktop.BrowseForFolder(record); });
    if (item_list == 0) return;
    // The item list is left to the process on purpose; it is small and folders are chosen rarely.
    std::string buffer(kPathBufferSize, ' ');
    step([&] { desktop.PathFromItemList(item_list, buffer.data()); });
    folder = step([&] { return FromAnsi(StrZToStr(buffer)); });
  };
  return Procedure<std::string>("Kestrel.mCommonDialog.BrowseFolder", browse);
}

}  // namespace scrivo

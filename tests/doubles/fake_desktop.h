#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "system/desktop.h"

namespace scrivo {

// A user who answers from a list, in order, and remembers what was shown.
class FakeDesktop : public Desktop {
 public:
  struct Shown {
    std::string text;
    std::uint32_t style;
    std::string caption;
  };
  struct HelpCall {
    WindowHandle owner;
    std::string file;
    std::uint32_t command;
    std::string data;
  };

  std::vector<Shown> messages;
  std::function<void()> on_message;   // runs while a message is shown
  std::deque<MessageAnswer> answers;  // kOk once they are used up
  int beeps = 0;
  int message_passes = 0;
  std::function<void()> on_pass;                // runs in each pass of the message loop
  std::map<std::string, WindowHandle> windows;  // "class|caption" → handle
  std::vector<std::pair<WindowHandle, std::uint32_t>> sent;
  std::vector<HelpCall> help_calls;
  std::vector<FileDialogRecord> opened, saved;  // what the dialogs were given
  FileDialogRecord file_answer;  // what the user leaves in the record on a confirmation
  std::int32_t file_result = 0;
  std::uint32_t extended_error = 0;
  std::vector<BrowseRecord> browsed;
  std::uintptr_t browse_result = 0;
  std::string browse_path;

  MessageAnswer ShowMessage(const std::string& text, std::uint32_t style,
                            const std::string& caption) override {
    messages.push_back({text, style, caption});
    if (on_message) on_message();
    if (answers.empty()) return MessageAnswer::kOk;
    const MessageAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void Beep() override { ++beeps; }
  void ProcessMessages() override {
    ++message_passes;
    if (on_pass) on_pass();
  }
  WindowHandle FindTopLevelWindow(const std::string& class_name,
                                  const std::string& caption) override {
    const auto window = windows.find(class_name + "|" + caption);
    return window == windows.end() ? 0 : window->second;
  }
  void SendToWindow(WindowHandle window, std::uint32_t message) override {
    sent.emplace_back(window, message);
  }
  std::int32_t OpenFileDialog(FileDialogRecord* record) override {
    opened.push_back(*record);
    return Answer(record);
  }
  std::int32_t SaveFileDialog(FileDialogRecord* record) override {
    saved.push_back(*record);
    return Answer(record);
  }
  std::uint32_t ExtendedDialogError() override { return extended_error; }
  std::uintptr_t BrowseForFolder(const BrowseRecord& record) override {
    browsed.push_back(record);
    return browse_result;
  }
  bool PathFromItemList(std::uintptr_t, char* buffer) override {
    buffer[browse_path.copy(buffer, 259)] = '\0';
    return !browse_path.empty();
  }
  WindowHandle HtmlHelp(WindowHandle owner, const std::string& file, std::uint32_t command,
                        const std::string& data) override {
    help_calls.push_back({owner, file, command, data});
    return 0;
  }

 private:
  std::int32_t Answer(FileDialogRecord* record) {
    if (file_result == 1) {
      record->file_buffer = file_answer.file_buffer;
      record->title_buffer = file_answer.title_buffer;
      record->flags = file_answer.flags;
      record->filter_index = file_answer.filter_index;
    }
    return file_result;
  }
};

}  // namespace scrivo

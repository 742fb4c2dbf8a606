#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "ui/console/console.h"
#include "ui/run_view.h"

namespace scrivo {

// The run window on a terminal: its status line tells the percentage and the line that the tool
// has printed last. The transcript itself is not shown; `on_line`, unless it is empty, is given
// each line that the tool has completed.
class ConsoleRunView : public RunView {
 public:
  // `step` is what the run does, such as "Compiling". The console must outlive the view.
  ConsoleRunView(Console& console, std::string step,
                 std::function<void(const std::string& line)> on_line = {})
      : console_(console), step_(std::move(step)), on_line_(std::move(on_line)) {}

  void ShowModeless() override { console_.BeginStep(step_); }
  void ShowBusy(bool busy) override;
  void EnableClose(bool) override {}
  void SetProgress(const std::string& caption, int flood_percent) override;
  void ReplaceTranscript(const std::string& text) override;
  void AppendTranscript(const std::string& text) override;
  void ShowHeldBack() override {}
  void Repaint() override {}

 private:
  Console& console_;
  std::string step_;
  std::function<void(const std::string& line)> on_line_;
  std::string percentage_;
  std::string last_line_;  // the last complete line that is not empty
  std::string line_;       // the line that has begun
};

// Makes the views of a command line.
class ConsoleViews : public ViewFactory {
 public:
  ConsoleViews(Console& console, std::string step,
               std::function<void(const std::string& line)> on_line = {})
      : console_(console), step_(std::move(step)), on_line_(std::move(on_line)) {}

  std::unique_ptr<RunView> MakeRunView() override {
    return std::make_unique<ConsoleRunView>(console_, step_, on_line_);
  }

 private:
  Console& console_;
  std::string step_;
  std::function<void(const std::string& line)> on_line_;
};

}  // namespace scrivo

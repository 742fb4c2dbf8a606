#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/form_views.h"

namespace scrivo {

// What a run window shows, and the order in which it was told so.
struct ShownRun {
  std::string caption;
  int flood = -1;
  bool is_busy = false;
  bool may_close = true;
  bool is_shown = false;
  bool exists = false;
  std::string transcript;
  int repaints = 0;
  std::vector<std::string> log;  // "show", "busy 1", "close 0", "progress 5 %|5", "repaint", …
};

class FakeRunView : public RunView {
 public:
  explicit FakeRunView(ShownRun& shown) : shown_(shown) {
    shown_ = ShownRun();
    shown_.exists = true;
  }
  ~FakeRunView() override { shown_.exists = false; }

  void ShowModeless() override {
    shown_.is_shown = true;
    shown_.log.push_back("show");
  }
  void ShowBusy(bool busy) override {
    shown_.is_busy = busy;
    shown_.log.push_back(busy ? "busy 1" : "busy 0");
  }
  void EnableClose(bool enabled) override {
    shown_.may_close = enabled;
    shown_.log.push_back(enabled ? "close 1" : "close 0");
  }
  void SetProgress(const std::string& caption, int flood_percent) override {
    shown_.caption = caption;
    shown_.flood = flood_percent;
    shown_.log.push_back("progress " + caption + "|" + std::to_string(flood_percent));
  }
  void ReplaceTranscript(const std::string& text) override {
    shown_.transcript = text;
    shown_.log.push_back("replace");
  }
  void AppendTranscript(const std::string& text) override {
    shown_.transcript += text;
    shown_.log.push_back("append");
  }
  void ShowHeldBack() override { shown_.log.push_back("show held back"); }
  void Repaint() override {
    ++shown_.repaints;
    shown_.log.push_back("repaint");
  }

 private:
  ShownRun& shown_;
};

// Makes run views that show themselves in `run`.
class FakeViews : public FormViews {
 public:
  ShownRun run;
  std::function<void()> on_make_run;  // runs while a run view is made

  std::unique_ptr<RunView> MakeRunView() override {
    if (on_make_run) on_make_run();
    return std::make_unique<FakeRunView>(run);
  }
};

}  // namespace scrivo

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "system/error.h"
#include "tests/doubles/fake_run_view.h"
#include "ui/form_views.h"

namespace scrivo {

// What the compile dialog's window shows, and the order in which it was told so. It outlives the
// window.
struct ShownParameters {
  ParameterViewEvents* events = nullptr;  // null once the window is gone
  ItemPanel* panel = nullptr;
  ButtonStrip* strip = nullptr;
  float left = 100, top = 200, width = 5000, height = 6000.5F;
  WindowHandle window = 77;
  std::function<void()> on_show;  // what the user does while the dialog is shown
  std::function<void()> on_close;
  bool fails = false;            // every place and size fails
  bool rows_fail = false;        // no row can be shown
  std::vector<std::string> log;  // "show", "hide", "close", "left 5", "item OUTPUT", …
};

class FakeParameterView : public ParameterView {
 public:
  FakeParameterView(ShownParameters& shown, ParameterViewEvents& events, ItemPanel& panel,
                    ButtonStrip& strip)
      : shown_(shown) {
    shown_.events = &events;
    shown_.panel = &panel;
    shown_.strip = &strip;
  }
  ~FakeParameterView() override { shown_.events = nullptr; }

  void ShowModal() override {
    shown_.log.push_back("show");
    if (shown_.on_show) shown_.on_show();
    shown_.log.push_back("shown");  // still there, whatever happened meanwhile
  }
  void Hide() override { shown_.log.push_back("hide"); }
  void Close() override {
    shown_.log.push_back("close");
    if (shown_.on_close) shown_.on_close();
  }
  WindowHandle Window() override { return shown_.window; }

  float Left() override { return Get(shown_.left); }
  void Left(float twips) override { Set("left", twips, &shown_.left); }
  float Top() override { return Get(shown_.top); }
  void Top(float twips) override { Set("top", twips, &shown_.top); }
  float Width() override { return Get(shown_.width); }
  void Width(float twips) override { Set("width", twips, &shown_.width); }
  float Height() override { return Get(shown_.height); }
  void Height(float twips) override { Set("height", twips, &shown_.height); }

  void Enable(bool enabled) override { shown_.log.push_back(enabled ? "enable" : "disable"); }

  void ShowItem(const std::string& key) override {
    FailIf(shown_.rows_fail);
    shown_.log.push_back("item " + key);
  }

 private:
  static void FailIf(bool fails) {
    if (fails) throw Error(kInternalError, "FakeParameterView", "The window is in a bad way");
  }
  float Get(float value) const {
    FailIf(shown_.fails);
    return value;
  }
  void Set(const char* what, float twips, float* value) {
    *value = Get(twips);
    shown_.log.push_back(std::string(what) + " " + std::to_string(static_cast<int>(twips)));
  }

  ShownParameters& shown_;
};

// Makes run windows that show themselves in `run` and a compile dialog that does in `main`.
class FakeMainViews : public FakeViews {
 public:
  ShownParameters main;
  bool has_windows = true;
  bool main_fails = false;  // no window can be made for the compile dialog

  std::unique_ptr<ParameterView> MakeCompileView(ParameterViewEvents& events, ItemPanel& panel,
                                                 ButtonStrip& strip) override {
    if (!has_windows) return nullptr;
    if (main_fails) throw Error(kOutOfMemory, "FakeMainViews", "There is no window left");
    return std::make_unique<FakeParameterView>(main, events, panel, strip);
  }
};

}  // namespace scrivo

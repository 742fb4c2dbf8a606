#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/doubles/fake_parameter_view.h"

namespace scrivo {

// What the error dialog's window shows. It outlives the window.
struct ShownError {
  ErrorViewEvents* events = nullptr;
  ButtonStrip* strip = nullptr;
  std::string title, message;
  std::vector<std::string> buttons;  // keys, as they were shown last
  bool is_hidden = false;
  std::set<std::string> failing;  // what fails once: "title", "message", "buttons", "hide"
  std::function<void()> on_show;  // what the user does while the dialog is shown
};

class FakeErrorView : public ErrorView {
 public:
  FakeErrorView(ShownError& shown, ErrorViewEvents& events, ButtonStrip& strip) : shown_(shown) {
    shown_ = {&events, &strip, "", "", {}, false, {}, shown_.on_show};
  }
  ~FakeErrorView() override { shown_.events = nullptr; }

  void SetTitle(const std::string& caption) override {
    MayFail("title");
    shown_.title = caption;
  }
  void SetMessage(const std::string& text) override {
    MayFail("message");
    shown_.message = text;
  }
  std::string Message() override { return shown_.message; }
  void ShowButtons() override {
    MayFail("buttons");
    shown_.buttons.clear();
    for (const StripItem& item : shown_.strip->Items()) shown_.buttons.push_back(item.key);
  }
  void ShowModal() override {
    shown_.events->Activated();
    if (shown_.on_show) shown_.on_show();
  }
  void Hide() override {
    MayFail("hide");
    shown_.is_hidden = true;
  }

 private:
  void MayFail(const std::string& call) {
    if (shown_.failing.erase(call)) {
      throw Error(kInternalError, "FakeErrorView", "The window is in a bad way");
    }
  }

  ShownError& shown_;
};

// Makes all forms' views.
class FakeFormViews : public FakeMainViews {
 public:
  ShownParameters decompile;
  ShownError error;

  std::unique_ptr<ParameterView> MakeDecompileView(ParameterViewEvents& events, ItemPanel& panel,
                                                   ButtonStrip& strip) override {
    if (!has_windows) return nullptr;
    return std::make_unique<FakeParameterView>(decompile, events, panel, strip);
  }
  std::unique_ptr<ErrorView> MakeErrorView(ErrorViewEvents& events, ButtonStrip& strip) override {
    return std::make_unique<FakeErrorView>(error, events, strip);
  }
};

// How often a window was told this, such as "show".
inline auto CountOf(const ShownParameters& shown, const std::string& what) {
  return std::count(shown.log.begin(), shown.log.end(), what);
}

}  // namespace scrivo

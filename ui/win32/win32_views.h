#pragma once

#include <functional>

#include "ui/form_views.h"

namespace scrivo {

// The forms as real windows.
class Win32Views : public FormViews {
 public:
  // `close_run` unloads the run window's form; called when the user closes that window.
  explicit Win32Views(std::function<void()> close_run);

  std::unique_ptr<RunView> MakeRunView() override;
  std::unique_ptr<ParameterView> MakeCompileView(ParameterViewEvents& events, ItemPanel& panel,
                                                 ButtonStrip& strip) override;
  std::unique_ptr<ParameterView> MakeDecompileView(ParameterViewEvents& events, ItemPanel& panel,
                                                   ButtonStrip& strip) override;
  std::unique_ptr<ErrorView> MakeErrorView(ErrorViewEvents& events, ButtonStrip& strip) override;

 private:
  std::function<void()> close_run_;
};

}  // namespace scrivo

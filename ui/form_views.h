#pragma once

#include <memory>

#include "ui/error_view.h"
#include "ui/parameter_view.h"
#include "ui/run_view.h"

namespace scrivo {

// Makes the views that this program shows its forms through. Set once by the entry point.
class FormViews {
 public:
  virtual ~FormViews() = default;

  virtual std::unique_ptr<RunView> MakeRunView() = 0;
  // The window of the compile dialog, hidden; null in a program without windows. All three
  // arguments outlive it.
  virtual std::unique_ptr<ParameterView> MakeCompileView(ParameterViewEvents& events,
                                                         ItemPanel& panel, ButtonStrip& strip);
  // The window of the decompile dialog, as above.
  virtual std::unique_ptr<ParameterView> MakeDecompileView(ParameterViewEvents& events,
                                                           ItemPanel& panel, ButtonStrip& strip);
  // The window of the error dialog, hidden; null in a program without windows.
  virtual std::unique_ptr<ErrorView> MakeErrorView(ErrorViewEvents& events, ButtonStrip& strip);
};

}  // namespace scrivo

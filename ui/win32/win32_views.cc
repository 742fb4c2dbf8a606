#include "ui/win32/win32_views.h"

#include "ui/win32/error_window.h"
#include "ui/win32/parameter_window.h"
#include "ui/win32/run_window.h"

namespace scrivo {
namespace {

const ParameterDesign kMainDesign = {.title = "Scrivo - compile the open web",
                                     .default_key = "GENERATE",
                                     .cancel_key = "CLOSE",
                                     .width = 6750,
                                     .smallest_width = 5400};
const ParameterDesign kDecompileDesign = {.title = "Scrivo - decompile a help file",
                                          .default_key = "DECOMPILE",
                                          .cancel_key = "CLOSE",
                                          .width = 6750,
                                          .smallest_width = 5400};

}  // namespace

Win32Views::Win32Views(std::function<void()> close_run) : close_run_(std::move(close_run)) {}

std::unique_ptr<RunView> Win32Views::MakeRunView() {
  return std::make_unique<RunWindow>(close_run_);
}

std::unique_ptr<ParameterView> Win32Views::MakeCompileView(ParameterViewEvents& events,
                                                           ItemPanel& panel, ButtonStrip& strip) {
  return std::make_unique<ParameterWindow>(kMainDesign, panel, strip, events);
}

std::unique_ptr<ParameterView> Win32Views::MakeDecompileView(ParameterViewEvents& events,
                                                             ItemPanel& panel, ButtonStrip& strip) {
  return std::make_unique<ParameterWindow>(kDecompileDesign, panel, strip, events);
}

std::unique_ptr<ErrorView> Win32Views::MakeErrorView(ErrorViewEvents& events, ButtonStrip& strip) {
  return std::make_unique<ErrorWindow>(strip, events);
}

}  // namespace scrivo

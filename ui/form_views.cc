#include "ui/form_views.h"

namespace scrivo {

std::unique_ptr<ParameterView> FormViews::MakeCompileView(ParameterViewEvents&, ItemPanel&,
                                                          ButtonStrip&) {
  return nullptr;
}

std::unique_ptr<ParameterView> FormViews::MakeDecompileView(ParameterViewEvents&, ItemPanel&,
                                                            ButtonStrip&) {
  return nullptr;
}

std::unique_ptr<ErrorView> FormViews::MakeErrorView(ErrorViewEvents&, ButtonStrip&) {
  return nullptr;
}

}  // namespace scrivo

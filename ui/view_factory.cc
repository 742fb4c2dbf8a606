#include "ui/run_view.h"

namespace scrivo {

std::unique_ptr<MainView> ViewFactory::MakeMainView(MainViewEvents&, ItemPanel&, ButtonStrip&) {
  return nullptr;
}

std::unique_ptr<MainView> ViewFactory::MakeDecompileView(MainViewEvents&, ItemPanel&,
                                                         ButtonStrip&) {
  return nullptr;
}

std::unique_ptr<ErrorView> ViewFactory::MakeErrorView(ErrorViewEvents&, ButtonStrip&) {
  return nullptr;
}

}  // namespace scrivo

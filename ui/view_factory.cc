#include "ui/run_view.h"

namespace scrivo {

std::unique_ptr<MainView> ViewFactory::MakeMainView(MainViewEvents&, ItemPanel&, ButtonStrip&) {
  return nullptr;
}

}  // namespace scrivo

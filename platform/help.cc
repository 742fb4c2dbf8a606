#include "platform/help.h"

#include "errors/frame.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "system/services.h"

namespace scrivo {

void ShowHelp() {
  WindowHandle owner = 0;
  IgnoringErrors([&] {
    if (Globals().help_owner) owner = Globals().help_owner();
  });
  IgnoringErrors([&] {
    TheServices().desktop->HtmlHelp(owner,
                                    JoinPath(TheServices().system->ModuleFolder(), "Scrivo.CHM"),
                                    kHelpDisplayTopic, "index.html");
  });
}

}  // namespace scrivo

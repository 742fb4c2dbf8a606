#include "generator/relative_location.h"

#include "errors/frame.h"
#include "platform/globals.h"
#include "site/site.h"

namespace scrivo {

std::string RelativeLocation(const std::string& address) {
  std::string location;
  IgnoringErrors([&] {
    const std::shared_ptr<HostApplication> host = Globals().HostApplication;
    const std::shared_ptr<SiteWeb> web = host ? host->CurrentWeb() : nullptr;
    if (web) location = host->RelativeLocation(*web, address);
  });
  return location;
}

}  // namespace scrivo

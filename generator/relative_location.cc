#include "generator/relative_location.h"

#include "errors/frame.h"
#include "platform/globals.h"
#include "system/error.h"

namespace scrivo {
namespace {

HostApplication& ConnectedHost() {
  const std::shared_ptr<HostApplication>& host = Globals().HostApplication;
  if (!host) throw Error(kObjectNotSet, "Scrivo", "No host application is connected");
  return *host;
}

}  // namespace

std::string PageLocation(SiteWeb& web, const std::string& address) {
  return ConnectedHost().RelativeLocation(web, address);
}

std::string RelativeLocation(const std::string& address) {
  std::string location;
  IgnoringErrors([&] {
    const std::shared_ptr<SiteWeb> web = ConnectedHost().CurrentWeb();
    if (web) location = PageLocation(*web, address);
  });
  return location;
}

}  // namespace scrivo

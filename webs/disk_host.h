#pragma once

#include <memory>
#include <string>

#include "platform/globals.h"
#include "site/site.h"

namespace scrivo {

// The host application where there is none: it has one web on disk open.
class DiskHost : public HostApplication {
 public:
  // `web` may be null: no web is open.
  explicit DiskHost(std::shared_ptr<SiteWeb> web, PathStyle style = Globals().path_style)
      : web_(std::move(web)), style_(style) {}

  std::shared_ptr<SiteWeb> CurrentWeb() override { return web_; }
  // The part of `address`, or of a path on disk, after the web's own; "" for the web itself. What
  // lies outside the web comes back as it is. In the Windows style the web's part is compared
  // without regard to the case of ASCII letters.
  std::string RelativeLocation(SiteWeb& web, const std::string& address) override;
  // This program's own version.
  std::string Version() override;

 private:
  std::shared_ptr<SiteWeb> web_;
  PathStyle style_;
};

}  // namespace scrivo

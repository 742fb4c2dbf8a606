#pragma once

#include <memory>

#include "com/win32/variant.h"
#include "host/session.h"

namespace scrivo::host {

class HostWorld;

// WebWindow, WebWindows, PageWindow and PageWindows. Each open web has one web window.

// The windows of one web, or of all when `web` is null.
Variant WebWindowsOf(const std::shared_ptr<HostWorld>& world,
                     const std::shared_ptr<HostedWeb>& web);
// `web` may be null: then there is no object.
Variant WebWindowOrNone(const std::shared_ptr<HostWorld>& world,
                        const std::shared_ptr<HostedWeb>& web);
// `page` may be null: then there is no object.
Variant PageWindowOrNone(const std::shared_ptr<HostWorld>& world,
                         const std::shared_ptr<HostedWeb>& web,
                         const std::shared_ptr<EditedPage>& page);

}  // namespace scrivo::host

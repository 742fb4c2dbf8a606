#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "com/win32/variant.h"
#include "site/site.h"

namespace scrivo::host {

class HostWorld;

// Properties: keys of the server extensions ("vti_…") and their values.
Variant PropertiesOf(const std::shared_ptr<HostWorld>& world,
                     std::vector<std::pair<std::string, std::string>> properties);

// MetaTags of a page: its names, and the content by name. `path` is that of the file on disk.
Variant MetaTagsOf(const std::shared_ptr<HostWorld>& world, std::shared_ptr<SiteFile> file,
                   const std::string& path);

}  // namespace scrivo::host

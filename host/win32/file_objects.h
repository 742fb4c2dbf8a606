#pragma once

#include <memory>

#include "com/win32/variant.h"
#include "host/session.h"
#include "site/site.h"

namespace scrivo::host {

class HostWorld;

// WebFile, WebFiles, WebFolder and WebFolders of an open web. They keep it alive.

// `file` may be null: then there is no object.
Variant FileOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                   const std::shared_ptr<SiteFile>& file);
Variant FilesOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                SiteFiles files);
// `folder` may be null: then there is no object.
Variant FolderOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                     const std::shared_ptr<SiteFolder>& folder);
Variant FoldersOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                  SiteFolders folders);

}  // namespace scrivo::host

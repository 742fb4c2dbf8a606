#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "com/win32/variant.h"
#include "host/bar_model.h"
#include "host/session.h"
#include "site/site.h"

namespace scrivo::host {

class HostWorld;
struct Addin;

// The objects that add-ins see, as values that a call gives: each function makes an object of a
// world, or finds the living one.

// The Application object of a world.
Variant ApplicationOf(const std::shared_ptr<HostWorld>& world);

// COMAddIns; its numbers start at 1.
Variant ComAddInsOf(const std::shared_ptr<HostWorld>& world);
// COMAddIn, also what an add-in is told to be itself.
Variant ComAddInOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Addin>& addin);

// CommandBars, CommandBar and CommandBarControls. Their numbers start at 1.

Variant CommandBarsOf(const std::shared_ptr<HostWorld>& world);
Variant CommandBarOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Bar>& bar);
Variant ControlsOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<Bar>& bar);

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

// NavigationNode and NavigationNodes of an open web, as its tree was when they were asked for.

// No object for NavigationIndex::kNone.
Variant NodeOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                   const std::shared_ptr<const NavigationIndex>& navigation, std::size_t place);
Variant NodesOf(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web,
                const std::shared_ptr<const NavigationIndex>& navigation,
                std::vector<std::size_t> places);

// Properties: keys of the server extensions ("vti_…") and their values.
Variant PropertiesOf(const std::shared_ptr<HostWorld>& world,
                     std::vector<std::pair<std::string, std::string>> properties);

// MetaTags of a page: its names, and the content by name. `path` is that of the file on disk.
Variant MetaTagsOf(const std::shared_ptr<HostWorld>& world, std::shared_ptr<SiteFile> file,
                   const std::string& path);

// Webs, the open webs.
Variant WebsOf(const std::shared_ptr<HostWorld>& world);

// Web. `web` may be null: then there is no object.
Variant WebOrNone(const std::shared_ptr<HostWorld>& world, const std::shared_ptr<HostedWeb>& web);

// Lets the call fail when the web has been closed since.
void RequireOpen(const HostedWeb& web);

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

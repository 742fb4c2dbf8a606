#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "site/site.h"

namespace scrivo::host {

// One line of a web as the window shows it.
struct OutlineRow {
  std::string label;     // of a navigation node; the page's title elsewhere
  std::string title;     // of the page; "" when there is none
  std::string location;  // inside the web; "" for a node without a page
  std::string path;      // on disk; "" likewise
  int depth = 0;         // of a navigation node, 0 for the top level
};

// What the window shows of a web.
struct WebOutline {
  std::vector<OutlineRow> navigation;  // each node before its children
  std::vector<OutlineRow> outside;     // the pages that no node shows

  // "5 pages", and how many of them stand outside the navigation.
  std::string PageCountText() const;
};

// Reads what is to be shown. Throws Error.
WebOutline OutlineOf(HostedWeb* web, PathStyle style = Globals().path_style);

}  // namespace scrivo::host

#include "host/web_outline.h"

#include <set>

#include "host/web_address.h"
#include "platform/paths.h"

namespace scrivo::host {
namespace {

void FillFrom(SiteFile& file, const std::string& web_url, PathStyle style, OutlineRow* row) {
  row->title = file.Title();
  row->location = MakeRelative(web_url, true, file.Url());
  std::string address = file.Url();
  row->path = UrlToPath(address, style);
}

std::string Counted(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " page" : " pages");
}

}  // namespace

std::string WebOutline::PageCountText() const {
  std::set<std::string> shown;
  for (const OutlineRow& row : navigation) {
    if (!row.location.empty()) shown.insert(row.location);
  }
  std::string text = Counted(shown.size() + outside.size());
  if (!outside.empty()) {
    text.append(", ").append(std::to_string(outside.size())).append(" outside the navigation");
  }
  return text;
}

WebOutline OutlineOf(HostedWeb* web, PathStyle style) {
  WebOutline outline;
  const std::string url = web->Url();
  const auto navigation = web->Navigation();
  std::vector<int> depths(navigation->Places().size(), -1);
  for (std::size_t i = 1; i < navigation->Places().size(); ++i) {
    const NavigationIndex::Place& place = navigation->At(i);
    OutlineRow row;
    row.depth = depths[i] = depths[place.parent] + 1;
    row.label = place.node->Label();
    if (const auto file = place.node->File()) FillFrom(*file, url, style, &row);
    outline.navigation.push_back(std::move(row));
  }
  for (const auto& file : web->Web().PagesOutsideContents()) {
    OutlineRow row;
    FillFrom(*file, url, style, &row);
    row.label = row.title;
    outline.outside.push_back(std::move(row));
  }
  return outline;
}

}  // namespace scrivo::host

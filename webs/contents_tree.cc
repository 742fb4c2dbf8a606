#include "webs/contents_tree.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "html/page_kind.h"

namespace scrivo {
namespace {

constexpr std::string_view kWelcomeNames[] = {
    "index.htm",    "index.html", "default.htm", "default.html", "welcome.htm",
    "welcome.html", "home.htm",   "home.html",   "index.shtml",  "index.shtm",
    "default.asp",  "index.asp",  "default.aspx"};

}  // namespace

int WelcomeRank(const std::string& name) {
  const auto found = std::find(std::begin(kWelcomeNames), std::end(kWelcomeNames), name);
  return found == std::end(kWelcomeNames) ? -1
                                          : static_cast<int>(found - std::begin(kWelcomeNames));
}

WebListing::Index WelcomePage(const WebListing& listing, WebListing::Index folder) {
  WebListing::Index best = WebListing::kNone;
  int best_rank = -1;
  const WebListing::Range files = listing.FilesOf(folder);
  for (WebListing::Index file = files.begin; file != files.end; ++file) {
    const int rank = WelcomeRank(listing.FileKey(file));
    if (rank >= 0 && (best_rank < 0 || rank < best_rank)) {
      best = file;
      best_rank = rank;
    }
  }
  return best;
}

bool IsHelpPage(const WebListing& listing, WebListing::Index file) {
  return KindOfPage(listing.FileName(file)) == PageKind::kPlain;
}

}  // namespace scrivo

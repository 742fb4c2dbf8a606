#include "webs/welcome_names.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/fold_case.h"
#include "webs/contents_tree.h"

namespace scrivo {
namespace {

constexpr const char* kUsualNames[] = {"index.htm",   "index.html",   "default.htm", "default.html",
                                       "welcome.htm", "welcome.html", "home.htm",    "home.html",
                                       "index.shtml", "index.shtm",   "default.asp", "index.asp",
                                       "default.aspx"};

}  // namespace

WelcomeNames::WelcomeNames(const WebListing& listing,
                           const std::function<std::vector<std::string>(Index web)>& noted)
    : listing_(listing), list_of_(listing.FolderCount()) {
  Add(noted(0));
  // A folder stands before its subfolders in the listing.
  for (Index folder = 0; folder < listing.FolderCount(); ++folder) {
    const WebListing::Range below = listing.FoldersOf(folder);
    for (Index sub = below.begin; sub != below.end; ++sub) {
      list_of_[sub] = list_of_[folder];
      if (!listing.IsWeb(sub)) continue;
      list_of_[sub] = lists_.size();
      Add(noted(sub));
    }
  }
}

void WelcomeNames::Add(std::vector<std::string> noted) {
  for (std::string& name : noted) name = FoldCase(name);
  noted.insert(noted.end(), std::begin(kUsualNames), std::end(kUsualNames));
  lists_.push_back(std::move(noted));
}

int WelcomeNames::Rank(Index folder, std::string_view name) const {
  const std::vector<std::string>& names = Of(folder);
  const auto found = std::find(names.begin(), names.end(), FoldCase(name));
  return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

WebListing::Index WelcomeNames::PageOf(Index folder) const {
  Index best = WebListing::kNone;
  std::pair<bool, int> best_place;  // whether only a server shows it, and its rank
  const WebListing::Range files = listing_.FilesOf(folder);
  for (Index file = files.begin; file != files.end; ++file) {
    const int rank = Rank(folder, listing_.FileKey(file));
    if (rank < 0) continue;
    const std::pair<bool, int> place = {!IsHelpPage(listing_, file), rank};
    if (best != WebListing::kNone && best_place <= place) continue;
    best = file;
    best_place = place;
  }
  return best;
}

}  // namespace scrivo

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "webs/web_listing.h"

namespace scrivo {

// The names that the home page of a web and the start page of a folder go by: those that the host
// noted for the web that the folder belongs to, then the usual ones.
class WelcomeNames {
 public:
  using Index = WebListing::Index;

  // `noted` gives what the host noted for the web in a folder, in any letter case; it is asked for
  // the listing's own web and for each below that. The listing must outlive the object.
  WelcomeNames(const WebListing& listing,
               const std::function<std::vector<std::string>(Index web)>& noted);

  // The names for a folder in small letters, the best first.
  const std::vector<std::string>& Of(Index folder) const { return lists_[list_of_[folder]]; }
  // The place of a file name, in any letter case, among the names for the folder; -1 when it is
  // none of them.
  int Rank(Index folder, std::string_view name) const;
  // The file of the folder with the best name: a page that a help file can show if there is one,
  // else one that a server makes; kNone when there is neither.
  Index PageOf(Index folder) const;

 private:
  void Add(std::vector<std::string> noted);

  const WebListing& listing_;
  std::vector<std::vector<std::string>> lists_;
  std::vector<std::size_t> list_of_;  // by folder
};

}  // namespace scrivo

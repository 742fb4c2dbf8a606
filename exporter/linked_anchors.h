#pragma once

// The places within the pages of a site that links lead to, so that a text made of the pages can
// name those and no others.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "exporter/site_names.h"

namespace scrivo {

class LinkedAnchors {
 public:
  // Notes the anchors of the page at `place`, and where its links lead. `html` is the page as the
  // site has it; `places` resolves its addresses. `on_link` is told the places of the files that
  // it links to. A page may be read again when its links change.
  void ReadPage(std::string_view html, std::string_view place, const SiteNames& places,
                const std::function<void(const std::string& place)>& on_link);

  // Notes a link to the page at `place`; `rest` is what follows the page in the address.
  void AddLink(std::string_view place, std::string_view rest);

  // Ends the noting.
  void Finish();

  // The anchor that an address with `rest` leads to within the page at `place`, as the page names
  // it; empty when it leads to the page itself. After Finish.
  std::string Find(std::string_view place, std::string_view rest) const;

  // Whether links lead to the page's anchor `name`. After Finish.
  bool Has(std::string_view place, std::string_view name) const;

 private:
  std::unordered_set<std::string> anchors_, linked_;  // keys of place and name
};

}  // namespace scrivo

#include "webs/contents_tree.h"

#include "html/page_kind.h"

namespace scrivo {

bool IsHelpPage(const WebListing& listing, WebListing::Index file) {
  return KindOfPage(listing.FileName(file)) == PageKind::kPlain;
}

}  // namespace scrivo

#include "exporter/book_targets.h"

#include "text/ascii_text.h"

namespace scrivo {

BookTargets::BookTargets(const std::vector<PlannedFile>& files) : names_("") {
  for (const PlannedFile& file : files) {
    const std::string place = names_.Add(file.entry->name, IsPageName(file.entry->name));
    if (!place.empty()) paths_.emplace(place, file.path);
  }
}

BookTarget BookTargets::Of(const SitemapItem& item, std::string_view from) const {
  BookTarget outside;
  for (const SitemapTarget& target : item.targets) {
    BookTarget found = Of(target, from);
    if (found.kind == BookTarget::Kind::kFile) return found;
    if (outside.kind == BookTarget::Kind::kNone) outside = std::move(found);
  }
  return outside;
}

BookTarget BookTargets::Of(const SitemapTarget& target, std::string_view from) const {
  const BookTarget local = Resolve(target.local, from);
  return local.kind == BookTarget::Kind::kNone ? Resolve(target.url, from) : local;
}

BookTarget BookTargets::Resolve(std::string_view address, std::string_view from) const {
  address = Trimmed(address);
  if (address.empty()) return {};
  const LinkTarget link = ResolveLink(names_, address, from);
  BookTarget target;
  switch (link.kind) {
    case LinkTarget::Kind::kPage:
      if (const auto path = paths_.find(link.place); path != paths_.end()) {
        target.kind = BookTarget::Kind::kFile;
        target.path = path->second;
        target.has_anchor = !link.rest.empty();
      }
      break;
    case LinkTarget::Kind::kOutside:
    case LinkTarget::Kind::kOtherHelp:
      target.kind = BookTarget::Kind::kOutside;
      target.path = address;
      break;
    case LinkTarget::Kind::kSamePage:
    case LinkTarget::Kind::kScript:
    case LinkTarget::Kind::kMissing:
      break;
  }
  return target;
}

}  // namespace scrivo

#include "checker/link_check.h"

#include <algorithm>

#include "html/page_kind.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/fold_case.h"

namespace scrivo {
namespace {

// Folders of a web server whose files are programs.
constexpr std::string_view kServerFolders[] = {"_vti_bin/", "cgi-bin/"};

bool LeadsToServer(std::string_view path) {
  const std::string lowered = AsciiLowered(path);
  return std::any_of(std::begin(kServerFolders), std::end(kServerFolders),
                     [&](std::string_view folder) {
                       const std::size_t at = lowered.find(folder);
                       return at != std::string::npos && (at == 0 || lowered[at - 1] == '/');
                     });
}

bool LeadsToOwnDisk(std::string_view address, const Reference& reference) {
  if (reference.external) return StartsWithIgnoringCase(address, "file:");
  return reference.path.size() >= 2 && IsAsciiLetter(reference.path[0]) && reference.path[1] == ':';
}

// Whether a program on the server was to put the address there.
bool IsMadeByServer(std::string_view address) {
  return address.find("<%") != std::string_view::npos ||
         address.find("<?") != std::string_view::npos;
}

}  // namespace

LinkCheck::LinkCheck(ProjectTree& web, std::string_view location, const std::string& base,
                     int code_page, const std::vector<std::string>& welcome_names)
    : web_(web), folder_(FolderOf(location)), code_page_(code_page), welcome_names_(welcome_names) {
  if (base.empty()) return;
  const Reference reference = TakeApart(base);
  base_is_elsewhere_ = reference.external;
  folder_ = NormalPath(folder_ + "/" + FolderOf(reference.path));
}

bool LinkCheck::IsFine(const PageLink& link, LinkFault* fault) {
  const Reference reference = TakeApart(link.address);
  fault->subject = IsUtf8(link.address) ? link.address : ToUtf8(link.address, code_page_);
  const auto wrong = [&](LinkFault::Kind kind, std::string text) {
    fault->kind = kind;
    fault->text = std::move(text);
    return false;
  };
  if (LeadsToOwnDisk(link.address, reference)) {
    return wrong(LinkFault::Kind::kMissing,
                 fault->subject + " lies on the author's own disk, where no reader can get at it");
  }
  if (reference.external || base_is_elsewhere_ || reference.path.empty()) return true;
  if (IsMadeByServer(link.address)) return true;
  if (LeadsToServer(reference.path)) {
    return wrong(LinkFault::Kind::kServer, fault->subject + " is a program of a web server");
  }
  bool is_withheld = false;
  const std::optional<FoundFile> found =
      web_.Find(reference.path, folder_, code_page_, &is_withheld);
  if (is_withheld) {
    return wrong(LinkFault::Kind::kMissing, fault->subject + " is left out of the help file");
  }
  if (!found) {
    std::string page;
    if (LeadsToFolder(std::string(reference.path), &page)) {
      return wrong(LinkFault::Kind::kMissing,
                   fault->subject + " is a folder; only a server finds its page " + page);
    }
    return wrong(LinkFault::Kind::kMissing, fault->subject + " does not exist");
  }
  if (KindOfPage(found->archive_path) == PageKind::kByServer) {
    return wrong(LinkFault::Kind::kServer,
                 fault->subject + " is a page that only a web server can make");
  }
  if (found->address != found->archive_path &&
      FoldCase(found->address) == FoldCase(found->archive_path)) {
    return wrong(LinkFault::Kind::kOtherCase,
                 fault->subject + " is the file " + found->archive_path);
  }
  return true;
}

std::optional<FoundFile> LinkCheck::Target(const PageLink& link) {
  const Reference reference = TakeApart(link.address);
  if (reference.external || base_is_elsewhere_ || reference.path.empty()) return std::nullopt;
  return web_.Find(reference.path, folder_, code_page_);
}

bool LinkCheck::LeadsToFolder(const std::string& path, std::string* page) {
  for (const std::string& name : welcome_names_) {
    if (const auto found = web_.Find(path + "/" + name, folder_, code_page_)) {
      *page = found->archive_path;
      return true;
    }
  }
  return false;
}

}  // namespace scrivo

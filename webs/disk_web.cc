#include "webs/disk_web.h"

#include <algorithm>
#include <map>
#include <utility>

#include "html/charset.h"
#include "html/page_kind.h"
#include "system/error.h"
#include "system/services.h"
#include "text/code_page.h"
#include "webs/contents_tree.h"
#include "webs/page_head.h"
#include "webs/web_snapshot.h"

namespace scrivo {
namespace {

// `path` with the separators of its style, none at its end.
std::string FolderPathOf(std::string path, PathStyle style) {
  const char separator = Separator(style);
  if (style == PathStyle::kWindows) std::replace(path.begin(), path.end(), '/', separator);
  while (path.size() > 1 && path.back() == separator) path.pop_back();
  return path;
}

std::string UrlOf(const std::string& path, PathStyle style) {
  if (style == PathStyle::kPosix) return "file://" + path;
  std::string url = "file:///" + path;
  std::replace(url.begin(), url.end(), '\\', '/');
  return url;
}

[[noreturn]] void ThrowUnreadable(const std::string& folder, const Error& error) {
  throw Error(error.number, "DiskWeb",
              folder + ": the web cannot be read: " + error.description +
                  ". Ask for permission to read the folder.");
}

// A folder behind one that may not be entered looks as if it did not exist.
void ThrowIfOutOfReach(Files& files, const std::string& folder) {
  try {
    files.List(folder);
  } catch (const Error& error) {
    if (error.number == kPermissionDenied) ThrowUnreadable(folder, error);
  }
}

class OpenedDiskWeb : public DiskWeb {
 public:
  explicit OpenedDiskWeb(std::shared_ptr<WebSource> source)
      : source_(std::move(source)), snapshot_(std::make_shared<WebSnapshot>(source_)) {}

  bool IsEmpty() const { return snapshot_->Listing().FileCount() == 0; }
  bool HasPages() const {
    const WebListing& listing = snapshot_->Listing();
    for (WebListing::Index file = 0; file < listing.FileCount(); ++file) {
      if (IsHelpPage(listing, file)) return true;
    }
    return false;
  }

  std::string Url() override { return source_->url; }
  std::shared_ptr<SiteFolder> BaseFolder() override { return Now().Folder(0); }
  std::shared_ptr<SiteNode> NavigationRoot() override { return Now().Node(0); }
  std::shared_ptr<SiteNode> HomeNode() override {
    const std::uint32_t home = Now().HomeNode();
    return home == 0 ? nullptr : Now().Node(home);
  }
  // Nothing edits a web on disk.
  scrivo::OpenPages OpenPages() override { return {}; }
  // The folders are listed anew when something is next asked for, and what is wrong there is
  // reported again.
  void Refresh() override { snapshot_ = nullptr; }

  const ContentsAccount& AccountOfContents() override { return Now().AccountOfContents(); }
  std::shared_ptr<SiteFile> HomePage() override;
  bool HasHostsNotes() override { return Now().Listing().IsWeb(0); }
  std::vector<std::string> Subwebs() override;
  std::vector<std::pair<std::string, std::size_t>> LeftOut() override;
  SiteFiles PagesOutsideContents() override;
  std::size_t LineOf(const SiteNode& node) override { return Now().LineOf(node); }
  const std::vector<std::string>& WelcomeNames() override { return Now().Welcome().Of(0); }
  bool ReportLostCharacters() override;
  std::optional<int> CodePageOfPages() override;

 private:
  WebSnapshot& Now() {
    if (!snapshot_) snapshot_ = std::make_shared<WebSnapshot>(source_);
    return *snapshot_;
  }

  const std::shared_ptr<WebSource> source_;
  std::shared_ptr<WebSnapshot> snapshot_;  // null after a Refresh
  bool has_reported_losses_ = false;
};

SiteFiles OpenedDiskWeb::PagesOutsideContents() {
  SiteFiles pages = AllFiles(*this);
  std::erase_if(pages, [](const std::shared_ptr<SiteFile>& file) {
    return KindOfExtension(file->Extension()) != PageKind::kPlain ||
           file->NavigationEntry() != nullptr;
  });
  return pages;
}

std::shared_ptr<SiteFile> OpenedDiskWeb::HomePage() {
  const WebListing& listing = Now().Listing();
  const WebListing::Index page = Now().Welcome().PageOf(0);
  const bool is_shown =
      page != WebListing::kNone && IsHelpPage(listing, page) && Now().FirstNodeOf(page) != 0;
  return is_shown ? Now().File(page) : nullptr;
}

std::vector<std::string> OpenedDiskWeb::Subwebs() {
  std::vector<std::string> subwebs;
  const WebListing& listing = Now().Listing();
  for (WebListing::Index folder = 1; folder < listing.FolderCount(); ++folder) {
    if (listing.IsWeb(folder)) subwebs.push_back(listing.FolderLocation(folder));
  }
  return subwebs;
}

std::vector<std::pair<std::string, std::size_t>> OpenedDiskWeb::LeftOut() {
  std::vector<std::pair<std::string, std::size_t>> all;
  for (const WebListing::LeftOut& left_out : Now().Listing().AllLeftOut()) {
    all.emplace_back(left_out.location, left_out.files);
  }
  std::sort(all.begin(), all.end());  // folders are listed in the system's own order
  return all;
}

bool OpenedDiskWeb::ReportLostCharacters() {
  const WebText& text = source_->text;
  const std::size_t lost = text.Lost();
  if (lost == 0) return false;
  if (std::exchange(has_reported_losses_, true)) return true;
  std::string reason = std::to_string(lost) +
                       (lost == 1 ? " character of titles, labels and keywords is"
                                  : " characters of titles, labels and keywords are") +
                       " not in code page " + std::to_string(text.HelpCodePage()) +
                       " and will be \"?\" in the help file; the first is in \"" +
                       text.FirstLost() + "\" in " + text.PlaceOfFirstLost();
  const int better = text.CodePageOfScript();
  const std::size_t still_lost = text.LostIn(better);
  if (still_lost < lost) {
    reason += "; --code-page " + std::to_string(better) + " keeps ";
    reason += still_lost == 0 ? "them all" : "all but " + std::to_string(still_lost);
  } else {
    reason += "; no other code page keeps more of them";
  }
  source_->report.Problem({source_->path, 0, std::move(reason)});
  return true;
}

std::optional<int> OpenedDiskWeb::CodePageOfPages() {
  constexpr std::size_t kStart = 64 * 1024;
  std::map<int, std::size_t> of_all, of_telling;
  const WebListing& listing = Now().Listing();
  for (WebListing::Index file = 0; file < listing.FileCount(); ++file) {
    if (!IsHelpPage(listing, file)) continue;
    try {
      const std::string start =
          ReadWhole(*source_->files->OpenForReading(listing.FilePath(file)), kStart);
      const std::optional<int> declared = DeclaredCodePage(start);
      if (!declared || *declared == kUtf8CodePage) continue;
      ++of_all[*declared];
      if (AsciiPrefix(start) < start.size()) ++of_telling[*declared];
    } catch (const Error& error) {  // reported when the page is read
      if (error.number == kUserInterrupt) throw;
    }
  }
  const std::map<int, std::size_t>& counts = of_telling.empty() ? of_all : of_telling;
  const auto most =
      std::max_element(counts.begin(), counts.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == counts.end() ? std::nullopt : std::optional<int>(most->first);
}

}  // namespace

std::shared_ptr<DiskWeb> OpenDiskWeb(const std::string& path, const DiskWebOptions& options,
                                     WebReport& report, PathStyle style) {
  Services& services = TheServices();
  const std::string folder = FolderPathOf(path, style);
  if (!services.files->FolderExists(folder)) {
    if (services.files->FileExists(folder)) {
      throw Error(kPathNotFound, "DiskWeb",
                  folder + ": the web is a file. Name the folder that contains the web.");
    }
    ThrowIfOutOfReach(*services.files, folder);
    throw Error(kPathNotFound, "DiskWeb",
                folder + ": the web does not exist. Check the spelling of the path.");
  }
  const int ansi = services.system->AnsiCodePage();
  const auto source = std::make_shared<WebSource>(
      WebSource{services.files, folder, UrlOf(folder, style), style, options,
                WebText(options.undeclared_code_page != 0 ? options.undeclared_code_page : ansi,
                        options.help_code_page != 0 ? options.help_code_page : ansi),
                report});
  std::shared_ptr<OpenedDiskWeb> web;
  try {
    web = std::make_shared<OpenedDiskWeb>(source);
  } catch (const Error& error) {
    if (error.number == kUserInterrupt) throw;
    ThrowUnreadable(folder, error);
  }
  if (web->IsEmpty()) {
    throw Error(kFileNotFound, "DiskWeb",
                folder + ": the web has no files. Name the folder that contains its pages.");
  }
  if (!web->HasPages()) {
    throw Error(
        kFileNotFound, "DiskWeb",
        folder +
            ": the web has no pages (.htm or .html). Name the folder that contains its pages.");
  }
  return web;
}

}  // namespace scrivo

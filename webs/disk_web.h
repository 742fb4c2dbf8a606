#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/globals.h"
#include "platform/path_style.h"
#include "site/site.h"
#include "webs/web_report.h"

namespace scrivo {

// Where a web's contents tree comes from: the navigation structure that the host keeps, the
// folders on disk, or whichever says more (kAuto: the structure when it holds more than the home
// page, else the folders).
enum class ContentsChoice { kAuto, kNavigation, kFolders };

// Where a page's index entries come from. In a title or heading a blank stands for each comma and
// semicolon, which would part it into several entries.
enum class IndexSource { kKeywords, kTitles, kHeadings };

struct DiskWebOptions {
  ContentsChoice contents = ContentsChoice::kAuto;
  // What a file's Property("keywords") gives: the entries of these sources in this order.
  std::vector<IndexSource> index = {IndexSource::kKeywords};
  // Whether pages are read without the navigation that the host generated into them.
  bool without_bars = false;
  // The code page of texts of which nobody says what they are, and the one that the texts of the
  // help file will be in. 0 for the ANSI code page.
  int undeclared_code_page = 0;
  int help_code_page = 0;
};

// A FrontPage web in a folder on disk, as the site model sees it.
//
// The folders are listed when the web is opened; the navigation structure is read when the tree is
// first asked for; a page is read once, when its title or one of its properties is first asked
// for, and no further than needed. Names and addresses are the bytes on disk. The objects it hands
// out stay valid after the web itself is let go; those from before a Refresh keep showing what was
// there before it.
class DiskWeb : public SiteWeb {
 public:
  // Which tree NavigationRoot() shows: kNavigation or kFolders.
  virtual ContentsChoice ContentsUsed() = 0;
  // The pages (.htm and .html) that no node of the tree shows, in the order of AllFiles.
  virtual SiteFiles PagesOutsideContents() = 0;
  // Reports, once, how many characters of the labels, titles and keywords handed out so far the
  // help file's code page lacks ("?" stands for them there), the first text concerned, and the code
  // page to choose instead. False when none is lost.
  virtual bool ReportLostCharacters() = 0;
  // The code page, not UTF-8, that most of the pages declare; of those that hold more than ASCII,
  // if any do. Nothing when no page declares one.
  virtual std::optional<int> CodePageOfPages() = 0;
};

// Opens the web in the folder `path` (absolute, in `style`) through TheServices(). `report` must
// outlive the web and everything it handed out. Throws Error, with a text that names the path and
// what to do, when the folder does not exist, is a file, cannot be read, or holds no files or no
// pages.
std::shared_ptr<DiskWeb> OpenDiskWeb(const std::string& path, const DiskWebOptions& options,
                                     WebReport& report, PathStyle style = Globals().path_style);

}  // namespace scrivo

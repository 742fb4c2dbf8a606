#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/globals.h"
#include "site/site.h"
#include "webs/web_report.h"

namespace scrivo {

// Where a web's contents tree comes from: the navigation structure that the host keeps, the
// folders on disk, or (kAuto) the structure, unless its contents would lead to little of the web:
// to the home page only, to fewer than one page in four, or to nothing with most of their entries.
enum class ContentsChoice { kAuto, kNavigation, kFolders };

// What the choice of the contents was made from.
struct ContentsAccount {
  ContentsChoice used = ContentsChoice::kFolders;  // or kNavigation
  bool has_structure = false;                      // there is a file with the navigation structure
  bool is_readable = true;                         // and it could be read
  std::size_t pages = 0;                           // of the web (.htm and .html)
  std::size_t shown = 0;                           // those of them that the structure shows
  std::size_t entries = 0;                         // of the structure
  std::size_t missing = 0;                         // those of them whose page is not there
  bool is_home_only = false;  // the structure shows the home page and nothing else
};

// Where a page's index entries come from. In a title or heading a blank stands for each comma and
// semicolon, which would part it into several entries.
enum class IndexSource { kKeywords, kTitles, kHeadings };

struct DiskWebOptions {
  ContentsChoice contents = ContentsChoice::kAuto;
  // What a file's Property("keywords") gives: the entries of these sources in this order.
  std::vector<IndexSource> index = {IndexSource::kKeywords};
  // Whether pages are read without the navigation that the host generated into them.
  bool without_bars = false;
  // Whether files that are not for readers (webs/hidden_files.h) are no part of the web.
  bool leaves_out_hidden = false;
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
  ContentsChoice ContentsUsed() { return AccountOfContents().used; }
  // And why. What it says about the structure is told for kAuto only.
  virtual const ContentsAccount& AccountOfContents() = 0;
  // The page that readers of the web come to first, if a node of the tree shows it; else null.
  virtual std::shared_ptr<SiteFile> HomePage() = 0;
  // Whether the host keeps its notes in the web's folder, and the locations of the folders below
  // for which it does the same: webs of their own, whose files are listed with this one's.
  virtual bool HasHostsNotes() = 0;
  virtual std::vector<std::string> Subwebs() = 0;
  // What `leaves_out_hidden` has left out: the locations of files, and of folders with the number
  // of files in them.
  virtual std::vector<std::pair<std::string, std::size_t>> LeftOut() = 0;
  // The pages (.htm and .html) that no node of the tree shows, in the order of AllFiles.
  virtual SiteFiles PagesOutsideContents() = 0;
  // The line of the file with the navigation structure that a node of the tree comes from, counted
  // from 1; 0 when it comes from none.
  virtual std::size_t LineOf(const SiteNode& node) = 0;
  // The names of welcome pages in the web's own folder, in small letters, the best first.
  virtual const std::vector<std::string>& WelcomeNames() = 0;
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

#include "cli/web_account.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "cli/run_summary.h"
#include "platform/paths.h"

namespace scrivo {
namespace {

// "a, b and c"; of more than a few "a, b, c and 4 more".
std::string NameList(const std::vector<std::string>& names) {
  constexpr std::size_t kMostNamed = 3;
  const std::size_t named = std::min(names.size(), kMostNamed);
  std::string text;
  for (std::size_t i = 0; i < named; ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += NameText(names[i]);
  }
  return names.size() > named ? text + " and " + std::to_string(names.size() - named) + " more"
                              : text;
}

// Why the contents do not follow the structure, and what would come of it if they did.
std::string WhyFolders(const ContentsAccount& account) {
  const std::string no_contents = ". With --contents navigation there would be no contents.";
  const std::string take_it = ". To use it anyway, add --contents navigation.";
  const std::string pages = Counted(account.pages, "page", "pages");
  if (!account.has_structure) return "the web has no navigation structure" + no_contents;
  if (!account.is_readable) return "the navigation structure cannot be read" + no_contents;
  if (account.entries == 0) return "the navigation structure is empty" + no_contents;
  if (account.is_home_only) {
    return "the navigation structure holds only the home page of " + pages + take_it;
  }
  if (2 * account.missing > account.entries) {
    return "of " + Counted(account.entries, "entry", "entries") + " in the navigation structure " +
           std::to_string(account.missing) + " lead to pages that are missing" + take_it;
  }
  return "the navigation structure shows only " + std::to_string(account.shown) + " of " + pages +
         take_it;
}

void TellContents(DiskWeb& web, Console& console) {
  const ContentsAccount& account = web.AccountOfContents();
  if (account.used == ContentsChoice::kFolders) {
    console.Remark("Contents: the web's folders, because " + WhyFolders(account));
    return;
  }
  const bool shows_all = account.shown == account.pages;
  const std::string of = shows_all ? "all of " : std::to_string(account.shown) + " of ";
  console.Remark("Contents: the navigation structure, because it shows " + of +
                 Counted(account.pages, "page", "pages") +
                 ". To follow the web's folders instead, add --contents folders.");
}

void TellLeftOut(DiskWeb& web, PagesGoTo pages, Console& console) {
  const auto left_out = web.LeftOut();
  std::size_t files = 0;
  std::vector<std::string> names;
  for (const auto& [location, count] : left_out) {
    if (count == 0) continue;
    files += count;
    names.push_back(location);
  }
  if (files == 0) return;
  const std::string them = files == 1 ? "it" : "them";
  console.Remark("Left out: " + Counted(files, "file", "files") + " (" + NameList(names) + "), " +
                 (pages == PagesGoTo::kThisCompiler
                      ? "also where pages link to " + them
                      : "unless the compiler takes in what pages link to") +
                 ". To take " + them + " in, add --with-hidden.");
}

void TellSubwebs(const CompileOptions& options, DiskWeb& web, Console& console) {
  const std::vector<std::string> subwebs = web.Subwebs();
  if (subwebs.empty()) return;
  const bool is_one = subwebs.size() == 1;
  if (web.HasHostsNotes()) {
    console.Remark("Subwebs: " + NameList(subwebs) +
                   (is_one ? ". Its files are" : ". Their files are") +
                   " taken in too. To compile a subweb by itself, name its folder.");
  } else {
    console.Warn(NameText(options.web) + ": not a FrontPage web: it has no _vti_pvt folder, but " +
                 NameList(subwebs) + (is_one ? " in it has" : " in it have") +
                 " one. To compile that web, name its folder.");
  }
}

}  // namespace

void TellOfWeb(const CompileOptions& options, DiskWeb& web, PagesGoTo pages, Console& console) {
  TellSubwebs(options, web, console);
  if (options.reading.contents == ContentsChoice::kAuto) TellContents(web, console);
  TellLeftOut(web, pages, console);
}

}  // namespace scrivo

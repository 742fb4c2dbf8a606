#pragma once

// Where the files of a help file lie in the exported site, and what addresses lead to.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scrivo {

// The names of a site: each file of the help file gets a path below the folder of the pages that
// every web server and system takes.
class SiteNames {
 public:
  // `file_name` is the help file's own name ("guide.chm"), as links in it may have it.
  explicit SiteNames(std::string_view file_name) : file_name_(file_name) {}

  // Gives the file `name` ("/folder/page.htm", UTF-8) its place, and returns that: relative to the
  // folder of the pages, with "/". Empty when the name could only lead out of the folder.
  // `is_page`: browsers must take it for a page, whatever its extension says.
  std::string Add(std::string_view name, bool is_page);

  // Takes a place of a site as the name of a file that lies there: addresses in the site's own
  // pages lead to such names.
  void AddPlace(const std::string& place);

  // The place of the file `name`, any case; null when there is none.
  const std::string* Find(std::string_view name) const;

  const std::string& FileName() const { return file_name_; }

 private:
  std::string file_name_;
  std::unordered_map<std::string, std::string> places_;  // by folded name
  std::unordered_map<std::string, int> taken_;           // folded places
};

// What an address in a page, in a style sheet or in the contents leads to.
struct LinkTarget {
  enum class Kind {
    kPage,       // `place` is a file of the site, `rest` its "?query" and "#anchor"
    kSamePage,   // a place in the page itself, or nothing
    kOutside,    // an address of its own: http, mailto and the like
    kOtherHelp,  // a page in another help file: `help_file`, `place` its name there
    kScript,     // would run as a script
    kMissing,    // no file of the site
  };
  Kind kind = Kind::kMissing;
  std::string place;
  std::string rest;
  std::string help_file;
};

// Resolves `address` (UTF-8, references replaced) as it stands in the file `from` of the help file
// ("/folder/page.htm"). Linear in the address for any input.
LinkTarget ResolveLink(const SiteNames& names, std::string_view address, std::string_view from);

// Whether browsers that are at the place `from` get to the place `to` by `address`, as it is
// written.
bool LeadsThere(std::string_view address, std::string_view from, std::string_view to);

// The address that leads from the file at `from` to the one at `to`, both places of the site.
std::string RelativeAddress(std::string_view from, std::string_view to);

// "../" for each folder that `place` lies in, for what lies beside the folder of the pages once
// more.
std::string UpFrom(std::string_view place);

}  // namespace scrivo

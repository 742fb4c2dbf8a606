#pragma once

#include <functional>
#include <string>

#include "site/site.h"

namespace scrivo {

// The literals of the contents and the index file, both sitemap text. Names and locations are
// written between them as they come: nothing is escaped or trimmed.

constexpr char kLineEnd[] = "\r\n";
constexpr char kSitemapStart[] =
    "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML><HEAD></HEAD><BODY>\r\n";
constexpr char kSitemapEnd[] = "</BODY></HTML>";
constexpr char kListStart[] = "<UL>\r\n";
constexpr char kListEnd[] = "</UL>\r\n";
constexpr char kEntryStart[] = "<LI><OBJECT TYPE=\"text/sitemap\">\r\n";
constexpr char kEntryEnd[] = "\r\n</OBJECT>\r\n";
constexpr char kNameStart[] = "<PARAM NAME=\"Name\" VALUE=\"";
constexpr char kLocalStart[] = "<PARAM NAME=\"Local\" VALUE=\"";
constexpr char kValueEnd[] = "\">";

// What one compile of a web is to be. Texts are UTF-8.
struct CompileJob {
  std::string title;
  std::string output;  // the help file's full path
  // The value of the project's Language option: the compiler reads its texts in the code page of
  // this language.
  std::string language = "0x409 English (United States)";
  std::string default_page;  // the address of the page that opens first, "" for none
  bool use_index = true;     // whether the pages' keywords make an index
  // Whether the contents are compiled too. Viewers that read them so show the pages' titles in
  // place of the labels.
  bool binary_contents = true;
  bool favorites = true;       // whether the viewer has a Favorites tab
  bool without_bars = false;   // whether pages are compiled without the host's navigation bars
  bool keep_charsets = false;  // whether pages may declare another charset than theirs
  bool with_hidden = false;    // whether files that are not for readers go in too
  bool keep_project = false;   // whether the project files stay where they were written
};

// Tells where a page lies inside the web by its address: relative, with "/" between folder names.
using Locator = std::function<std::string(const std::string& address)>;

// The location of the page that opens first; "" for none, about which no host is asked.
std::string StartPageLocation(const CompileJob& job, const Locator& locate);

// The title of a web whose user has chosen none: the label of its home page, else the last name of
// its address.
std::string DefaultTitle(SiteWeb& web);

// The name of the help file whose user has chosen none: the title with "_" in place of each "/"
// and ":", and ".CHM". Other characters that no file name can hold stay, on purpose.
std::string DefaultOutputName(std::string title);

}  // namespace scrivo

#include "hhc/auto_contents.h"

#include <algorithm>

#include "project/sitemap_encoding.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// A path as it stands in an address: what would end it or begin an escape is escaped.
std::string AsAddress(std::string_view path) {
  std::string address;
  for (const char c : path) {
    if (c == '%') {
      address += "%25";
    } else if (c == '#') {
      address += "%23";
    } else if (c == '?') {
      address += "%3F";
    } else {
      address.push_back(c);
    }
  }
  return address;
}

// A text as an attribute's value in `code_page`.
std::string AsValue(std::string_view utf8, int code_page, std::size_t* lost) {
  std::string value;
  while (!utf8.empty()) {
    std::string_view rest = utf8;
    const char32_t character = NextUtf8(&rest);
    const std::string_view bytes = utf8.substr(0, utf8.size() - rest.size());
    utf8 = rest;
    if (character == '&') {
      value += "&amp;";
    } else if (character == '"') {
      value += "&quot;";
    } else if (character == '<') {
      value += "&lt;";
    } else if (character == '>') {
      value += "&gt;";
    } else {
      value += EncodedWithReferences(bytes, code_page, lost, Undefined::kKept);
    }
  }
  return value;
}

}  // namespace

void AutoContents::AddPage(std::string_view address, const std::vector<PageHeading>& headings) {
  bool first = true;
  for (const PageHeading& heading : headings) {
    if (heading.level > depth_ || heading.text.empty()) continue;
    std::string local = AsAddress(address);
    if (!first && !heading.anchor.empty()) local.append("#").append(heading.anchor);
    first = false;
    items_.push_back({heading.level, heading.text, std::move(local)});
  }
}

std::string AutoContents::Write(int code_page, std::size_t* lost) const {
  std::string out =
      "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML>\r\n<HEAD>\r\n</HEAD>\r\n"
      "<BODY>\r\n";
  std::vector<int> open;  // levels of the lists that are open
  for (const Item& item : items_) {
    while (!open.empty() && open.back() > item.level) {
      // Of H1, H3, H2 the last is as deep as the second: there is no list between to go back to.
      if (open.size() == 1 || open[open.size() - 2] < item.level) {
        open.back() = item.level;
        break;
      }
      open.pop_back();
      out += "</UL>\r\n";
    }
    if (open.empty() || open.back() < item.level) {
      open.push_back(item.level);
      out += "<UL>\r\n";
    }
    out += "<LI> <OBJECT type=\"text/sitemap\">\r\n<param name=\"Name\" value=\"";
    out += AsValue(item.name, code_page, lost);
    out += "\">\r\n<param name=\"Local\" value=\"";
    out += AsValue(item.local, code_page, lost);
    out += "\">\r\n</OBJECT>\r\n";
  }
  for (std::size_t i = 0; i < open.size(); ++i) out += "</UL>\r\n";
  return out + "</BODY>\r\n</HTML>\r\n";
}

}  // namespace scrivo

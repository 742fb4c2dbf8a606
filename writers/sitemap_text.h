#pragma once

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

}  // namespace scrivo

// Pages as others write them: rewriting one, and making Markdown of it, must stand any bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "exporter/markdown.h"
#include "exporter/page_rewriter.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  const std::string html =
      PageInUtf8({reinterpret_cast<const char*>(data), size}, size % 2 == 0 ? 1252 : 932);
  SiteNames names("book.chm");
  names.Add("/a/page.htm", true);
  names.Add("/C#.htm", true);
  HelpTopics topics;
  topics.keywords["k"] = {{"Page", "a/page.htm", true}, {"C", "C_.htm", true}};
  topics.associations = topics.keywords;
  RewriteRules rules;
  const RewrittenPage page = RewritePage(html, "/a/x.htm", "a/x.htm", names, topics, rules);
  // What was rewritten once has nothing left to take out.
  const RewrittenPage again = RewritePage(page.html, "/a/x.htm", "a/x.htm", names, topics, rules);
  if (AsciiLowered(again.html).find("<script") != std::string::npos &&
      again.html.size() < page.html.size()) {
    std::abort();
  }
  for (const PageContent::Stretch& heading : page.content.headings) {
    if (heading.begin > heading.end || heading.end > page.content.text.size()) std::abort();
  }
  MarkdownRules markdown;
  markdown.link = [](std::string_view address) { return std::string(address); };
  markdown.picture = markdown.link;
  const std::string text = PageAsMarkdown(html, markdown);
  if (!text.empty() && text.back() != '\n') std::abort();
  RewriteStyleSheet(html, "/a/x.css", "a/x.css", names);
  return 0;
}

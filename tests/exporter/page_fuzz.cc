// Pages as others write them: rewriting one, and making Markdown of it, must stand any bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "exporter/markdown.h"
#include "exporter/page_rewriter.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// Whether a browser would find a script in the page, or a handler that is one.
bool HasScript(std::string_view html) {
  HtmlTokenizer tokens(html);
  HtmlToken token;
  while (tokens.Next(&token)) {
    if (token.kind != HtmlToken::Kind::kStartTag) continue;
    if (token.Is("script")) return true;
    if (token.Is("meta") || token.Is("base") || token.Is("param")) continue;  // they run nothing
    std::string_view content = token.content;
    HtmlAttribute attribute;
    while (NextAttribute(&content, &attribute)) {
      if (attribute.name.size() > 2 && StartsWithIgnoringCase(attribute.name, "on")) return true;
    }
  }
  return false;
}

}  // namespace
}  // namespace scrivo

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
  if (HasScript(page.html)) std::abort();
  for (const PageContent::Stretch& heading : page.content.headings) {
    if (heading.begin > heading.end || heading.end > page.content.text.size()) std::abort();
  }
  MarkdownRules markdown;
  markdown.link = [](std::string_view address) { return std::string(address); };
  markdown.picture = markdown.link;
  markdown.anchor = markdown.link;
  const std::string text = PageAsMarkdown(html, markdown);
  if (!text.empty() && text.back() != '\n') std::abort();
  RewriteStyleSheet(html, "/a/x.css", "a/x.css", names);
  return 0;
}

#include "exporter/page_keywords.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "html/charset.h"
#include "html/title.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

struct Stretch {
  std::size_t begin, end;
};

// Where a page's keywords stand, and what they are.
struct PageKeywords {
  std::vector<Stretch> tags;
  std::set<std::string> names;
  bool are_unique = true;
  std::size_t place = 0;  // for a tag, when there is none
};

bool IsKeywordsTag(const HtmlToken& token) {
  if (!token.Starts("meta")) return false;
  auto name = token.Attribute("name");
  if (!name) name = token.Attribute("http-equiv");
  return name && EqualsIgnoringCase(Trimmed(*name), "keywords");
}

void AddNames(std::string_view content, PageKeywords* found) {
  while (true) {
    const std::size_t end = std::min(content.find_first_of(",;"), content.size());
    const std::string name(Trimmed(content.substr(0, end)));
    if (!name.empty() && !found->names.insert(name).second) found->are_unique = false;
    if (end == content.size()) return;
    content.remove_prefix(end + 1);
  }
}

PageKeywords FindKeywords(std::string_view page, int code_page) {
  PageKeywords found;
  bool has_place = false, has_head = false;
  HtmlTokenizer tokens(page);
  HtmlToken token;
  while (tokens.Next(&token)) {
    const bool is_start = token.kind == HtmlToken::Kind::kStartTag;
    if (token.Ends("head") || (is_start && StartsBody(token.name))) break;
    if ((token.Starts("head") && !has_head) || (token.Starts("html") && !has_place)) {
      found.place = tokens.Position();
      has_place = true;
      has_head = token.Starts("head");
    } else if (is_start && !has_place) {
      found.place = token.offset;
      has_place = true;
    }
    if (!IsKeywordsTag(token)) continue;
    found.tags.push_back({token.offset, tokens.Position()});
    const std::string_view content = token.Attribute("content").value_or("");
    AddNames(DecodeEntities(ToUtf8(content, code_page), EntityPlace::kAttribute), &found);
  }
  if (!has_place) found.place = page.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
  return found;
}

// In ASCII, so that it is the same in every code page and changes nothing about the page's own.
std::string Tag(const std::set<std::string>& keywords) {
  std::string tag = "<meta name=\"keywords\" content=\"";
  bool is_first = true;
  for (const std::string& keyword : keywords) {
    if (!is_first) tag += ',';
    is_first = false;
    for (std::string_view rest = keyword; !rest.empty();) {
      const char32_t c = NextUtf8(&rest);
      if (c >= 0x80 || c == '&' || c == '"' || c == '<' || c == '>') {
        tag += "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
      } else {
        tag += static_cast<char>(c);
      }
    }
  }
  return tag + "\">";
}

}  // namespace

bool CanBeKeyword(const std::string& name) {
  return !Trimmed(name).empty() && name.find_first_of(",;") == std::string::npos &&
         std::none_of(name.begin(), name.end(),
                      [](char c) { return static_cast<unsigned char>(c) < 0x20; }) &&
         DecodeEntities(name) == name;
}

std::optional<std::string> WithKeywords(std::string_view page,
                                        const std::set<std::string>& keywords, int code_page) {
  if (Utf16AsUtf8(page)) return std::nullopt;
  const PageKeywords found = FindKeywords(page, CodePageOfPage(page).value_or(code_page));
  if (found.names == keywords && found.are_unique) return std::string(page);
  std::vector<Stretch> tags = found.tags;
  if (tags.empty()) tags.push_back({found.place, found.place});
  std::string changed;
  std::size_t at = 0;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    changed.append(page.substr(at, tags[i].begin - at));
    if (i == 0) changed += Tag(keywords);
    at = tags[i].end;
  }
  changed.append(page.substr(at));
  // The tag's quotes may close one that the page has left open.
  const PageKeywords now = FindKeywords(changed, CodePageOfPage(changed).value_or(code_page));
  if (now.names != keywords || TitleOfPage(changed, code_page) != TitleOfPage(page, code_page)) {
    return std::nullopt;
  }
  return changed;
}

std::string TitleOfPage(std::string_view page, int code_page) {
  if (const auto utf8 = Utf16AsUtf8(page)) return TitleOfPage(*utf8, code_page);
  TitleFinder title(CodePageOfPage(page).value_or(code_page));
  HtmlTokenizer tokens(page);
  HtmlToken token;
  while (title.Title().empty() && tokens.Next(&token)) title.See(token);
  return title.Title();
}

}  // namespace scrivo

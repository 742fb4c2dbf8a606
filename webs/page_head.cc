#include "webs/page_head.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "html/charset.h"
#include "html/headings.h"
#include "html/title.h"
#include "html/tokenizer.h"
#include "system/error.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

constexpr int kDeepestHeading = 3;

std::optional<MetaTag> NamedMeta(const HtmlToken& tag, int code_page) {
  auto name = tag.Attribute("name");
  if (!name) name = tag.Attribute("http-equiv");
  if (!name || Trimmed(*name).empty()) return std::nullopt;
  const auto text = [&](std::string_view value) {
    return DecodeEntities(ToUtf8(value, code_page), EntityPlace::kAttribute);
  };
  return MetaTag{text(AsciiLowered(Trimmed(*name))), text(tag.Attribute("content").value_or(""))};
}

bool EntersBody(const HtmlToken& token) {
  return token.Ends("head") || (token.kind == HtmlToken::Kind::kStartTag && StartsBody(token.name));
}

}  // namespace

PageHead FindPageHead(std::string_view page, Headings headings,
                      const std::function<int()>& default_code_page) {
  if (const auto utf8 = Utf16AsUtf8(page)) return FindPageHead(*utf8, headings, default_code_page);
  std::optional<int> code_page = CodePageOfPage(page);
  if (!code_page) {
    code_page = AsciiPrefix(page) == page.size() ? kUtf8CodePage : default_code_page();
  }
  PageHead head;
  HtmlTokenizer tokens(page);
  TitleFinder title(*code_page);
  HeadingFinder heading_finder(*code_page, kDeepestHeading);
  HtmlToken token;
  bool in_body = false;
  while (tokens.Next(&token)) {
    title.See(token);
    in_body = in_body || EntersBody(token);
    if (!in_body && token.Starts("meta")) {
      if (auto meta = NamedMeta(token, *code_page)) head.metas.push_back(std::move(*meta));
    }
    if (headings == Headings::kYes) {
      heading_finder.See(token);
    } else if (in_body && !title.Title().empty()) {
      break;
    }
  }
  head.title = title.Title();
  for (PageHeading& heading : heading_finder.Take()) head.headings.push_back(heading.text);
  return head;
}

std::string ReadWhole(FileReader& reader, std::size_t longest) {
  constexpr std::size_t kBlock = 32 * 1024;
  std::string bytes;
  while (bytes.size() < longest) {
    const std::size_t before = bytes.size(), wanted = std::min(kBlock, longest - before);
    bytes.resize(before + wanted);
    const std::size_t got = reader.Read(bytes.data() + before, wanted);
    bytes.resize(before + got);
    if (got == 0) break;
  }
  return bytes;
}

std::optional<std::string> ReadIfThere(Files& files, const std::string& path, std::size_t longest) {
  try {
    return ReadWhole(*files.OpenForReading(path), longest);
  } catch (const Error& error) {
    if (error.number == kFileNotFound || error.number == kPathNotFound) return std::nullopt;
    throw;
  }
}

}  // namespace scrivo

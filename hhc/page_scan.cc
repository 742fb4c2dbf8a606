#include "hhc/page_scan.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "html/charset.h"
#include "html/title.h"
#include "html/tokenizer.h"
#include "search/search_alphabet.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

// The text of a page on its way to the word breaker: character references replaced, the page's code
// page turned into the project's.
class PageText {
 public:
  PageText(int page_code_page, int project_code_page, WordCollector* words);

  // Adds a piece of text between two tags, as written.
  void Add(std::string_view content);

  // The same for text in which "&" is no more than that.
  void AddPlain(std::string_view content);

  // Ends the current word.
  void Break() { breaker_.Break(); }

  // Whether the words from here on stand in the title.
  void SetInTitle(bool in_title) { in_title_ = in_title; }

 private:
  void AddBytes(std::string_view bytes);
  void AddCharacter(char32_t character);

  int page_code_page_, project_code_page_;
  bool same_;  // the page's bytes are the project's
  bool in_title_ = false;
  WordBreaker breaker_;
  std::unordered_map<char32_t, std::string> known_;  // characters past ASCII in the project's bytes
};

PageText::PageText(int page_code_page, int project_code_page, WordCollector* words)
    : page_code_page_(page_code_page),
      project_code_page_(project_code_page),
      same_(page_code_page == project_code_page),
      breaker_(project_code_page, words) {}

void PageText::Add(std::string_view content) {
  breaker_.SetInTitle(in_title_);
  while (!content.empty()) {
    const std::size_t ampersand = content.find('&');
    AddBytes(content.substr(0, ampersand));
    if (ampersand == std::string_view::npos) return;
    content.remove_prefix(ampersand);
    std::size_t length = 0;
    const char32_t character = ReadEntity(content, EntityPlace::kText, &length);
    if (length == 0) {
      breaker_.Byte('&');
      length = 1;
    } else {
      AddCharacter(character);
    }
    content.remove_prefix(length);
  }
}

void PageText::AddPlain(std::string_view content) {
  breaker_.SetInTitle(in_title_);
  AddBytes(content);
}

void PageText::AddBytes(std::string_view bytes) {
  if (same_) {
    breaker_.Text(bytes);
    return;
  }
  while (!bytes.empty()) {
    const std::size_t ascii = AsciiPrefix(bytes);
    breaker_.Text(bytes.substr(0, ascii));
    bytes.remove_prefix(ascii);
    if (bytes.empty()) return;
    if (page_code_page_ == kUtf8CodePage) {
      AddCharacter(NextUtf8(&bytes));
      continue;
    }
    // Other pages: turn the run past ASCII (with what follows a lead byte) into UTF-8 first.
    const std::string utf8 = ToUtf8(bytes, page_code_page_);
    std::string_view rest = utf8;
    while (!rest.empty()) AddCharacter(NextUtf8(&rest));
    return;
  }
}

void PageText::AddCharacter(char32_t character) {
  if (character < 0x80) {
    breaker_.Byte(static_cast<unsigned char>(character));
    return;
  }
  auto [found, added] = known_.try_emplace(character);
  if (added) {
    std::string utf8;
    AppendUtf8(character, &utf8);
    std::size_t lost = 0;
    found->second = FromUtf8(utf8, project_code_page_, &lost);
    // What the project's code page lacks separates words.
    if (lost > 0) found->second.assign(1, ' ');
  }
  breaker_.Text(found->second);
}

constexpr std::string_view kIndexObjectClass = "1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e";
constexpr int kDeepestHeading = 6;

class Scanner {
 public:
  Scanner(std::string_view html, int page_code_page, int code_page, WordCollector* words)
      : code_page_(page_code_page),
        tokens_(html),
        undefined_(page_code_page == code_page ? Undefined::kKept : Undefined::kReplaced),
        title_(page_code_page, undefined_),
        links_(page_code_page),
        headings_(page_code_page, kDeepestHeading, undefined_),
        bad_tags_(html) {
    if (html.starts_with(kUtf8Mark)) tokens_.SetPosition(kUtf8Mark.size());
    if (words != nullptr) text_.emplace(page_code_page, code_page, words);
  }

  PageScan Scan();

 private:
  void Words(const HtmlToken& token, bool is_title);
  void RawWords(const HtmlToken& token, bool is_title);
  void IndexObject(const HtmlToken& token);
  void Param(const HtmlToken& token);
  std::string Value(std::string_view value) const {
    return DecodeEntities(ToUtf8(value, code_page_, undefined_), EntityPlace::kAttribute);
  }

  const int code_page_;  // of the page
  HtmlTokenizer tokens_;
  // A byte that has no meaning is kept where it goes back into the code page that it came from.
  const Undefined undefined_;
  TitleFinder title_;
  LinkFinder links_;
  HeadingFinder headings_;
  BadTagFinder bad_tags_;
  std::optional<PageText> text_;
  bool in_index_object_ = false;
  PageScan page_;
};

PageScan Scanner::Scan() {
  HtmlToken token;
  while (tokens_.Next(&token)) {
    const bool is_title = title_.See(token);
    links_.See(token);
    headings_.See(token);
    bad_tags_.See(token);
    if (text_) Words(token, is_title);
    IndexObject(token);
  }
  if (text_) text_->Break();
  page_.code_page = code_page_;
  page_.title = Trimmed(title_.Title());
  std::replace_if(
      page_.title.begin(), page_.title.end(),
      [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
  page_.base = links_.Base();
  page_.links = links_.Take();
  page_.headings = headings_.Take();
  page_.bad_tags = bad_tags_.Take();
  return std::move(page_);
}

void Scanner::Words(const HtmlToken& token, bool is_title) {
  switch (token.kind) {
    case HtmlToken::Kind::kText:
      text_->Add(token.content);
      break;
    case HtmlToken::Kind::kRaw:
      RawWords(token, is_title);
      break;
    case HtmlToken::Kind::kStartTag:
    case HtmlToken::Kind::kEndTag:
      if (!IsInlineElement(token.name)) text_->Break();
      break;
    case HtmlToken::Kind::kOther:
      break;
  }
}

void Scanner::RawWords(const HtmlToken& token, bool is_title) {
  if (token.Is("xmp")) {
    text_->AddPlain(token.content);
  } else if (token.Is("title") || token.Is("textarea")) {
    text_->SetInTitle(is_title);
    text_->Add(token.content);
    text_->SetInTitle(false);
    text_->Break();  // a title that is never closed has no end tag to do so
  }
}

void Scanner::IndexObject(const HtmlToken& token) {
  if (token.Ends("object")) {
    in_index_object_ = false;
  } else if (token.Starts("object")) {
    std::string_view id = Trimmed(token.Attribute("classid").value_or(""));
    if (StartsWithIgnoringCase(id, "clsid:")) id.remove_prefix(6);
    in_index_object_ = EqualsIgnoringCase(id, kIndexObjectClass);
  } else if (in_index_object_ && token.Starts("param")) {
    Param(token);
  }
}

void Scanner::Param(const HtmlToken& token) {
  const std::string_view name = Trimmed(token.Attribute("name").value_or(""));
  const std::string_view value = Trimmed(token.Attribute("value").value_or(""));
  if (value.empty()) return;
  if (EqualsIgnoringCase(name, "keyword")) page_.keywords.push_back(Value(value));
  if (EqualsIgnoringCase(name, "alink name")) page_.associations.push_back(Value(value));
}

}  // namespace

PageScan ScanPage(std::string_view html, int code_page, WordCollector* words) {
  return Scanner(html, CodePageOfPage(html).value_or(code_page), code_page, words).Scan();
}

}  // namespace scrivo

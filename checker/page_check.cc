#include "checker/page_check.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "checker/component_finder.h"
#include "checker/link_check.h"
#include "html/charset.h"
#include "html/links.h"
#include "html/title.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// The titles that the host gives to new pages, with a number behind them.
constexpr std::string_view kTitlesOfNewPages[] = {
    "new page", "untitled", "neue seite", "nouvelle page", "pagina nuova", "p\xC3\xA1gina nueva",
    "新建网页", "新網頁",   "新增網頁",
};

bool IsTitleOfNewPage(std::string_view title) {
  const std::size_t end = title.find_last_not_of("0123456789");
  if (end == std::string_view::npos) return false;
  const std::string_view name = Trimmed(title.substr(0, end + 1));
  return std::any_of(std::begin(kTitlesOfNewPages), std::end(kTitlesOfNewPages),
                     [&](std::string_view known) { return EqualsIgnoringCase(name, known); });
}

// A value without quotes around it, which are left over where a value is quoted twice.
std::string_view WithoutQuotes(std::string_view value) {
  constexpr std::string_view kQuotes = "\"' \t\r\n";
  const std::size_t start = std::min(value.find_first_not_of(kQuotes), value.size());
  return value.substr(start, value.find_last_not_of(kQuotes) + 1 - start);
}

// What a META element says of the charset, as it stands there; empty when it says nothing.
std::string_view CharsetLabel(const HtmlToken& meta) {
  if (const auto charset = meta.Attribute("charset")) return WithoutQuotes(*charset);
  constexpr std::string_view kName = "charset=";
  const std::string_view content = meta.Attribute("content").value_or("");
  for (std::size_t at = 0; at + kName.size() <= content.size(); ++at) {
    if (!StartsWithIgnoringCase(content.substr(at), kName)) continue;
    const std::string_view label = content.substr(at + kName.size());
    return WithoutQuotes(label.substr(0, label.find(';')));
  }
  return {};
}

bool Mentions(std::string_view text, std::string_view lowered) {
  return AsciiLowered(text).find(lowered) != std::string::npos;
}

std::string CodePageText(int code_page) {
  return code_page == kUtf8CodePage ? "UTF-8" : "code page " + std::to_string(code_page);
}

class PageCheck {
 public:
  PageCheck(std::string_view page, bool is_utf16, const std::string& location,
            int default_code_page, ProjectTree& web, const std::vector<std::string>& welcome_names)
      : page_(page),
        is_utf16_(is_utf16),
        location_(location),
        web_(web),
        welcome_names_(welcome_names) {
    actual_ = CodePageOfPage(page);
    code_page_ = actual_.value_or(default_code_page);
    for (std::size_t at = 0; (at = page.find('\n', at)) != std::string_view::npos; ++at) {
      line_ends_.push_back(at);
    }
  }

  PageFindings Find() {
    HtmlTokenizer tokens(page_);
    TitleFinder title(code_page_);
    LinkFinder links(code_page_);
    ComponentFinder components;
    HtmlToken token;
    while (tokens.Next(&token)) {
      if (title.See(token)) title_offset_ = token.offset;
      components.See(token);
      if (!components.IsInside()) links.See(token);
      SeeCharset(token, tokens.Position());
      SeeEnd(token);
    }
    CheckCharset();
    CheckEnd();
    CheckTitle(title.Title());
    CheckLinks(&links);
    for (const ServerComponent& component : components.Take()) {
      Add(FindingKind::kServerComponent, component.offset, component.name, "a " + component.name);
    }
    return {std::move(findings_), std::move(frames_)};
  }

 private:
  void Add(FindingKind kind, std::size_t offset, std::string subject, std::string text) {
    const auto line = std::lower_bound(line_ends_.begin(), line_ends_.end(), offset);
    findings_.push_back({kind, location_, static_cast<std::size_t>(line - line_ends_.begin()) + 1,
                         std::move(subject), std::move(text)});
  }

  // The first META element that is heard is the declaration, else the first that says anything.
  void SeeCharset(const HtmlToken& token, std::size_t end) {
    in_body_ = in_body_ || token.Ends("head") ||
               (token.kind == HtmlToken::Kind::kStartTag && StartsBody(token.name));
    if (in_body_ || declared_ || !token.Starts("meta")) return;
    const std::string_view label = CharsetLabel(token);
    if (label.empty()) return;
    declared_ = DeclaredCodePage(page_.substr(token.offset, end - token.offset));
    if (!declared_ && !label_.empty()) return;
    label_ = ToUtf8(label, code_page_);
    label_offset_ = token.offset;
  }

  void CheckCharset() {
    const std::size_t ascii = AsciiPrefix(page_);
    if (is_utf16_ || label_.empty() || ascii == page_.size()) return;
    std::string reason;
    if (!declared_) {
      reason = "which is not a known charset";
    } else if (declared_ == kUtf8CodePage && !IsUtf8(page_)) {
      reason = "but not all of its bytes are UTF-8";
    } else if (actual_ != declared_) {
      reason = "but its text is in " + CodePageText(code_page_);
    }
    if (reason.empty()) return;
    Add(FindingKind::kWrongCharset, label_offset_, label_, "declares " + label_ + ", " + reason);
  }

  // The host ends each page that it saves; other authors need not.
  void SeeEnd(const HtmlToken& token) {
    if (token.Starts("meta") && Mentions(token.Attribute("content").value_or(""), "frontpage")) {
      is_of_host_ = true;
    }
    has_start_ = has_start_ || token.Starts("html");
    has_end_ = has_end_ || token.Ends("html") || token.Ends("body");
  }

  void CheckEnd() {
    if (!is_of_host_ || !has_start_ || has_end_) return;
    Add(FindingKind::kCutOff, page_.size(), "", "ends within its text: there is no </html>");
  }

  void CheckTitle(const std::string& title) {
    if (title.empty()) {
      findings_.push_back({FindingKind::kNoTitle, location_, 0, "", "has no title"});
    } else if (const std::string_view name = Trimmed(title); IsTitleOfNewPage(name)) {
      Add(FindingKind::kNoTitle, title_offset_, std::string(name),
          "still has the title of a new page, \"" + std::string(name) + "\"");
    }
  }

  // An address that stands in the page several times counts once.
  void CheckLinks(LinkFinder* finder) {
    LinkCheck check(web_, location_, finder->Base(), code_page_, welcome_names_);
    std::set<std::string> told;
    for (const PageLink& link : finder->Take()) {
      LinkFault fault;
      if (link.kind == LinkKind::kPage) AddFrame(check.Target(link));
      if (check.IsFine(link, &fault) || !told.insert(link.address).second) continue;
      Add(KindOf(link, fault), link.offset, fault.subject, fault.text);
    }
  }

  void AddFrame(const std::optional<FoundFile>& file) {
    if (file) frames_.push_back(file->archive_path);
  }

  static FindingKind KindOf(const PageLink& link, const LinkFault& fault) {
    switch (fault.kind) {
      case LinkFault::Kind::kMissing:
        break;
      case LinkFault::Kind::kOtherCase:
        return FindingKind::kLinkCase;
      case LinkFault::Kind::kServer:
        return FindingKind::kServerComponent;
    }
    return link.kind == LinkKind::kImage ? FindingKind::kMissingPicture : FindingKind::kMissingLink;
  }

  const std::string_view page_;
  const bool is_utf16_;
  const std::string& location_;
  ProjectTree& web_;
  const std::vector<std::string>& welcome_names_;
  std::optional<int> actual_;  // the code page as far as the page tells it
  int code_page_ = 0;
  std::vector<std::size_t> line_ends_;
  std::size_t title_offset_ = 0;
  bool in_body_ = false;
  std::optional<int> declared_;
  std::string label_;  // of the declared charset
  std::size_t label_offset_ = 0;
  bool is_of_host_ = false, has_start_ = false, has_end_ = false;
  std::vector<Finding> findings_;
  std::vector<std::string> frames_;
};

}  // namespace

PageFindings CheckPage(std::string_view bytes, const std::string& location, int default_code_page,
                       ProjectTree& web, const std::vector<std::string>& welcome_names) {
  const std::optional<std::string> utf8 = Utf16AsUtf8(bytes);
  const std::string_view page = utf8 ? std::string_view(*utf8) : bytes;
  return PageCheck(page, utf8.has_value(), location, default_code_page, web, welcome_names).Find();
}

}  // namespace scrivo

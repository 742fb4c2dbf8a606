#include "exporter/page_rewriter.h"

#include <algorithm>
#include <optional>

#include "exporter/script_text.h"
#include "html/charset.h"
#include "html/links.h"
#include "html/title.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

template <std::size_t N>
bool IsOneOf(std::string_view name, const std::string_view (&names)[N]) {
  return std::any_of(std::begin(names), std::end(names),
                     [&](std::string_view other) { return EqualsIgnoringCase(name, other); });
}

// Attributes that hold an address, whatever element they belong to.
constexpr std::string_view kAddressAttributes[] = {
    "href", "src",  "background", "lowsrc", "dynsrc",     "poster",
    "data", "cite", "longdesc",   "action", "formaction", "xlink:href"};

class Rewriter {
 public:
  Rewriter(std::string_view html, std::string_view name, std::string_view place,
           const SiteNames& names, const HelpTopics& topics, const RewriteRules& rules)
      : html_(html), base_(name), place_(place), names_(names), topics_(topics), rules_(rules) {}

  RewrittenPage Rewrite();

 private:
  struct Tag {
    std::size_t begin, end;
  };

  void Text(std::string_view text, std::string* out);
  void Raw(const HtmlToken& token, Tag tag, bool is_title);
  void StartTag(const HtmlToken& token, Tag tag);
  void EndTag(const HtmlToken& token, Tag tag);
  void Attributes(const HtmlToken& token, Tag tag);
  void Address(const HtmlToken& token, const HtmlAttribute& attribute, Tag whole);
  void Meta(const HtmlToken& token);
  void Base(const HtmlToken& token);
  void OpenObject(const HtmlToken& token, Tag tag);
  void Param(const HtmlToken& token);
  void CloseObject(std::size_t end);
  void CollectObjects();
  void PutHead(std::size_t at);
  std::optional<std::string> Mapped(std::string_view address) const;
  std::string LinkTo(const HelpLink& link) const;
  void Remove(Tag part);
  void RemoveAttribute(Tag whole);
  void Replace(Tag part, std::string_view with);
  void ReplaceValue(const HtmlAttribute& attribute, std::string_view with);
  std::size_t OffsetOf(const char* at) const { return static_cast<std::size_t>(at - html_.data()); }

  std::string_view html_;
  std::string base_;  // the name that relative addresses start from
  std::string_view place_;
  const SiteNames& names_;
  const HelpTopics& topics_;
  const RewriteRules& rules_;

  RewrittenPage page_;
  std::size_t copied_ = 0;  // what is before it is in page_.html
  bool has_head_ = false, has_base_ = false;
  bool in_heading_ = false;
  bool blank_due_ = false;

  bool in_object_ = false, object_is_index_ = false;
  std::size_t object_start_ = 0;
  HelpObject object_;
  std::map<std::string, ObjectLinks> objects_;  // those of the whole page, by their id
  std::string after_link_;                      // what follows the end of the open link
};

void Rewriter::Replace(Tag part, std::string_view with) {
  if (part.begin < copied_) return;
  page_.html.append(html_, copied_, part.begin - copied_);
  page_.html.append(with);
  copied_ = part.end;
}

// A "<" in front that begins no tag must not begin one with what stands behind the part.
void Rewriter::Remove(Tag part) {
  if (part.begin < copied_) return;
  Replace(part, "");
  if (!page_.html.ends_with('<')) return;
  page_.html.pop_back();
  page_.html += "&lt;";
}

// An equals sign behind the attribute begins a name. It must not come to follow the attribute in
// front, whose value would then reach to another quotation mark, and the tag to another end.
void Rewriter::RemoveAttribute(Tag whole) {
  const std::size_t next = html_.find_first_not_of(" \t\r\n\f", whole.end);
  const bool would_join = next != std::string_view::npos && html_[next] == '=';
  Replace(whole, would_join ? "data-removed=\"\"" : "");
}

void Rewriter::ReplaceValue(const HtmlAttribute& attribute, std::string_view with) {
  const std::size_t begin = OffsetOf(attribute.value.data());
  const bool quoted = begin > 0 && (html_[begin - 1] == '"' || html_[begin - 1] == '\'');
  std::string escaped;
  AppendHtmlText(with, &escaped);
  Replace({begin, begin + attribute.value.size()}, quoted ? escaped : '"' + escaped + '"');
}

// Appends to a text; runs of blanks become one.
void Rewriter::Text(std::string_view text, std::string* out) {
  while (!text.empty()) {
    std::size_t blanks = 0;
    while (blanks < text.size() && IsBlank(text[blanks])) ++blanks;
    blank_due_ |= blanks > 0;
    text.remove_prefix(blanks);
    std::size_t end = 0;
    while (end < text.size() && !IsBlank(text[end])) ++end;
    if (end == 0) return;
    if (blank_due_ && !out->empty()) out->push_back(' ');
    blank_due_ = false;
    out->append(text.substr(0, end));
    text.remove_prefix(end);
  }
}

RewrittenPage Rewriter::Rewrite() {
  page_.html.reserve(html_.size() + html_.size() / 16 + 512);
  HtmlTokenizer tokens(html_);
  // A mark in front would be another page's, put together with this one.
  while (html_.substr(copied_).starts_with(kUtf8Mark)) {
    copied_ += kUtf8Mark.size();
    tokens.SetPosition(copied_);
  }
  CollectObjects();
  TitleFinder title(kUtf8CodePage);
  HtmlToken token;
  while (tokens.Next(&token)) {
    const Tag tag{token.offset, tokens.Position()};
    const bool is_title = title.See(token);
    switch (token.kind) {
      case HtmlToken::Kind::kText:
        if (in_object_) break;
        if (token.content.find('&') == std::string_view::npos) {
          Text(token.content, &page_.content.text);
        } else {
          Text(DecodeEntities(token.content), &page_.content.text);
        }
        break;
      case HtmlToken::Kind::kRaw:
        Raw(token, tag, is_title);
        break;
      case HtmlToken::Kind::kStartTag:
        StartTag(token, tag);
        break;
      case HtmlToken::Kind::kEndTag:
        EndTag(token, tag);
        break;
      case HtmlToken::Kind::kOther:
        break;
    }
  }
  if (in_object_) CloseObject(html_.size());
  if (!has_head_) PutHead(html_.size());
  page_.html.append(html_, copied_);
  if (in_heading_) page_.content.headings.back().end = page_.content.text.size();
  return std::move(page_);
}

// The content of an element that holds no tags.
void Rewriter::Raw(const HtmlToken& token, Tag tag, bool is_title) {
  if (in_object_) return;  // goes with the object
  if (token.Is("script")) {
    if (!rules_.keep_scripts) Remove(tag);
  } else if (token.Is("style")) {
    for (const CssLink& link : FindCssLinks(token.content)) {
      if (const auto mapped = Mapped(link.address)) {
        const std::size_t at = OffsetOf(link.address.data());
        Replace({at, at + link.address.size()}, *mapped);
      }
    }
  } else if (is_title) {
    Text(DecodeEntities(token.content), &page_.content.title);
    blank_due_ = true;
  } else if (token.Is("xmp")) {
    Text(token.content, &page_.content.text);
  } else {
    Text(DecodeEntities(token.content), &page_.content.text);
    blank_due_ = true;
  }
}

void Rewriter::PutHead(std::size_t at) {
  has_head_ = true;
  std::string head = rules_.head;
  const std::string up = UpFrom(place_);
  for (std::size_t mark; (mark = head.find("{up}")) != std::string::npos;) {
    head.replace(mark, 4, up);
  }
  Replace({at, at}, head);
}

void Rewriter::StartTag(const HtmlToken& token, Tag tag) {
  const std::string_view name = token.name;
  if (in_object_) {
    if (EqualsIgnoringCase(name, "param")) {
      Param(token);
      return;
    }
    if (!EqualsIgnoringCase(name, "object")) return;
    CloseObject(tag.begin);
  }
  if (!has_head_) {
    if (EqualsIgnoringCase(name, "head")) {
      Attributes(token, tag);  // before what stands behind the tag is copied
      PutHead(tag.end);
      blank_due_ = true;
      return;
    }
    if (!EqualsIgnoringCase(name, "html")) {
      PutHead(tag.begin);
    }
  }
  if (!IsInlineElement(name)) blank_due_ = true;
  const bool is_scripts_own = token.Is("script") || token.Is("noscript");
  if (is_scripts_own && !rules_.keep_scripts) {
    Remove(tag);
    return;
  }
  if (HeadingLevel(name) != 0) {
    if (in_heading_) page_.content.headings.back().end = page_.content.text.size();
    const std::size_t at = page_.content.text.size();
    page_.content.headings.push_back({at, at});
    in_heading_ = true;
  } else if (EqualsIgnoringCase(name, "meta")) {
    Meta(token);
    return;
  } else if (EqualsIgnoringCase(name, "base")) {
    Base(token);
    return;
  } else if (EqualsIgnoringCase(name, "object")) {
    OpenObject(token, tag);
    if (in_object_) return;
  }
  if (!token.content.empty()) Attributes(token, tag);
}

void Rewriter::EndTag(const HtmlToken& token, Tag tag) {
  const std::string_view name = token.name;
  if (in_object_) {
    if (EqualsIgnoringCase(name, "object")) CloseObject(tag.end);
    return;
  }
  if (!IsInlineElement(name)) blank_due_ = true;
  if (in_heading_ && HeadingLevel(name) != 0) {
    page_.content.headings.back().end = page_.content.text.size();
    in_heading_ = false;
  } else if (EqualsIgnoringCase(name, "a") && !after_link_.empty()) {
    Replace({tag.end, tag.end}, after_link_);
    after_link_.clear();
  } else if (!rules_.keep_scripts &&
             (EqualsIgnoringCase(name, "script") || EqualsIgnoringCase(name, "noscript"))) {
    Remove(tag);
  }
}

// The address that leads from this page to where `address` leads; nothing when it does already.
std::optional<std::string> Rewriter::Mapped(std::string_view address) const {
  const LinkTarget target = ResolveLink(names_, address, base_);
  if (target.kind != LinkTarget::Kind::kPage) return std::nullopt;
  if (!has_base_ && LeadsThere(address, place_, target.place)) return std::nullopt;
  return RelativeAddress(place_, target.place) + target.rest;
}

void Rewriter::Attributes(const HtmlToken& token, Tag) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (NextAttribute(&content, &attribute)) {
    const Tag whole{OffsetOf(attribute.name.data()), OffsetOf(content.data())};
    const bool is_handler =
        attribute.name.size() > 2 && StartsWithIgnoringCase(attribute.name, "on");
    if (is_handler || EqualsIgnoringCase(attribute.name, "srcdoc")) {
      if (!rules_.keep_scripts) RemoveAttribute(whole);
    } else if (attribute.value.empty()) {
      continue;
    } else if (EqualsIgnoringCase(attribute.name, "style")) {
      if (attribute.value.find('(') == std::string_view::npos) continue;
      const std::string style = DecodeEntities(attribute.value, EntityPlace::kAttribute);
      const std::string mapped = RewriteStyleSheet(style, base_, place_, names_);
      if (mapped != style) ReplaceValue(attribute, mapped);
    } else if (EqualsIgnoringCase(attribute.name, "srcset")) {
      // "a.png 1x, b.png 2x"
      const std::string set = DecodeEntities(attribute.value, EntityPlace::kAttribute);
      std::string mapped;
      for (std::string_view rest = set; !rest.empty();) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        const std::string_view one = Trimmed(rest.substr(0, end));
        const std::string_view address = one.substr(0, one.find_first_of(" \t\r\n"));
        if (!mapped.empty()) mapped += ", ";
        mapped += Mapped(address).value_or(std::string(address));
        mapped += one.substr(address.size());
        rest.remove_prefix(std::min(rest.size(), end + 1));
      }
      ReplaceValue(attribute, mapped);
    } else if (IsOneOf(attribute.name, kAddressAttributes)) {
      Address(token, attribute, whole);
    }
  }
}

void Rewriter::Address(const HtmlToken& token, const HtmlAttribute& attribute, Tag whole) {
  std::string decoded;
  std::string_view address = attribute.value;
  if (address.find('&') != std::string_view::npos) {
    decoded = DecodeEntities(address, EntityPlace::kAttribute);
    address = decoded;
  }
  const LinkTarget target = ResolveLink(names_, address, base_);
  switch (target.kind) {
    case LinkTarget::Kind::kPage:
      if (has_base_ || !LeadsThere(address, place_, target.place)) {
        ReplaceValue(attribute, RelativeAddress(place_, target.place) + target.rest);
      }
      break;
    case LinkTarget::Kind::kOtherHelp: {
      std::string told = "title=\"";
      AppendHtmlText("In another help file, " + target.help_file + ": " + target.place, &told);
      told += "\" data-help-file=\"";
      AppendHtmlText(target.help_file + "::" + target.place, &told);
      Replace(whole, told + "\" style=\"text-decoration:underline dotted\"");
      break;
    }
    case LinkTarget::Kind::kScript: {
      const HelpCall call = ReadHelpCall(address);
      const bool is_link = EqualsIgnoringCase(token.name, "a");
      if (call.kind == HelpCall::Kind::kPopup && !call.text.empty() && is_link) {
        RemoveAttribute(whole);
        after_link_ = " (";
        AppendHtmlText(call.text, &after_link_);
        after_link_ += ')';
        return;
      }
      const auto object = objects_.find(AsciiLowered(call.id));
      if (call.kind == HelpCall::Kind::kClick && object != objects_.end() &&
          !object->second.links.empty()) {
        const auto& links = object->second.links;
        ReplaceValue(attribute, links.size() == 1 ? LinkTo(links[0]) : "#" + call.id);
        return;
      }
      if (!rules_.keep_scripts) RemoveAttribute(whole);
      break;
    }
    default:
      break;
  }
}

void Rewriter::Meta(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute, value{};
  std::string_view equivalent;
  while (NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "charset") && !attribute.value.empty()) {
      ReplaceValue(attribute, "utf-8");
    } else if (EqualsIgnoringCase(attribute.name, "http-equiv")) {
      equivalent = Trimmed(attribute.value);
    } else if (EqualsIgnoringCase(attribute.name, "content")) {
      value = attribute;
    }
  }
  if (value.value.empty()) return;
  if (EqualsIgnoringCase(equivalent, "content-type")) {
    ReplaceValue(value, "text/html; charset=utf-8");
  } else if (EqualsIgnoringCase(equivalent, "refresh")) {
    const std::string refresh = DecodeEntities(value.value, EntityPlace::kAttribute);
    std::size_t at = AsciiLowered(refresh).find("url=");
    if (at == std::string::npos) return;
    at += 4;
    std::string_view address = Trimmed(std::string_view(refresh).substr(at));
    if (address.size() >= 2 && (address[0] == '\'' || address[0] == '"')) {
      address = address.substr(1, address.size() - 2);
    }
    const LinkTarget target = ResolveLink(names_, address, base_);
    if (target.kind == LinkTarget::Kind::kPage) {
      ReplaceValue(value,
                   refresh.substr(0, at) + RelativeAddress(place_, target.place) + target.rest);
    } else if (target.kind == LinkTarget::Kind::kScript ||
               target.kind == LinkTarget::Kind::kOtherHelp) {
      ReplaceValue(value, "");
    }
  }
}

// A base would move the addresses that this program writes; what it says goes into the others.
void Rewriter::Base(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (NextAttribute(&content, &attribute)) {
    if (!EqualsIgnoringCase(attribute.name, "href") || attribute.value.empty()) continue;
    const std::string address = DecodeEntities(attribute.value, EntityPlace::kAttribute);
    const LinkTarget target = ResolveLink(names_, address, base_);
    if (target.kind == LinkTarget::Kind::kOutside) continue;
    RemoveAttribute({OffsetOf(attribute.name.data()), OffsetOf(content.data())});
    std::string_view path = address;
    if (const std::size_t separator = path.find("::"); separator != std::string_view::npos) {
      path.remove_prefix(separator + 2);
    }
    has_base_ = true;
    if (path.starts_with('/')) {
      base_ = path;
    } else {
      base_ = base_.substr(0, base_.rfind('/') + 1) + std::string(path);
    }
  }
}

void Rewriter::OpenObject(const HtmlToken& token, Tag tag) {
  constexpr std::string_view kIndexClass = "clsid:1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e";
  std::string_view content = token.content;
  HtmlAttribute attribute;
  HelpObject object;
  bool is_control = false, is_index = false;
  while (NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "classid")) {
      is_control = IsHelpControl(attribute.value);
      is_index = EqualsIgnoringCase(Trimmed(attribute.value), kIndexClass);
    } else if (EqualsIgnoringCase(attribute.name, "id") ||
               (object.id.empty() && EqualsIgnoringCase(attribute.name, "name"))) {
      object.id = DecodeEntities(attribute.value, EntityPlace::kAttribute);
    }
  }
  if (!is_control && !is_index) return;
  in_object_ = true;
  object_is_index_ = is_index;
  object_start_ = tag.begin;
  object_ = std::move(object);
}

void Rewriter::Param(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  std::string name, value;
  while (NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "name")) name = AsciiLowered(Trimmed(attribute.value));
    if (EqualsIgnoringCase(attribute.name, "value")) {
      value = DecodeEntities(attribute.value, EntityPlace::kAttribute);
    }
  }
  object_.params.emplace_back(std::move(name), std::move(value));
}

std::string Rewriter::LinkTo(const HelpLink& link) const {
  if (link.is_place) return RelativeAddress(place_, link.address) + link.rest;
  const LinkTarget target = ResolveLink(names_, link.address, base_);
  if (target.kind == LinkTarget::Kind::kPage) {
    return RelativeAddress(place_, target.place) + target.rest;
  }
  const bool leads =
      target.kind == LinkTarget::Kind::kOutside || target.kind == LinkTarget::Kind::kSamePage;
  return leads ? link.address : "";
}

void Rewriter::CloseObject(std::size_t end) {
  in_object_ = false;
  if (object_is_index_) {
    for (const auto& [name, value] : object_.params) {
      const std::string text(Trimmed(value));
      if (text.empty()) continue;
      if (name == "keyword") page_.keywords.push_back(text);
      if (name == "alink name") page_.associations.push_back(text);
    }
    Remove({object_start_, end});
    return;
  }
  const ObjectLinks object = LinksOf(object_, topics_);
  std::string html;
  const auto add_link = [&](const std::string& title, const HelpLink& link) {
    const std::string address = LinkTo(link);
    html += "<a";
    if (!address.empty()) {
      html += " href=\"";
      AppendHtmlText(address, &html);
      html += '"';
    }
    html += '>';
    AppendHtmlText(title, &html);
    html += "</a>";
  };
  // An object that cannot be seen is clicked by a link elsewhere, which leads on by itself when
  // there is one page only.
  const bool is_shown = object.is_visible || object.links.size() > 1;
  if (is_shown && (!object.links.empty() || !object.label.empty())) {
    html = "<span";
    if (!object_.id.empty()) {
      html += " id=\"";
      AppendHtmlText(object_.id, &html);
      html += '"';
    }
    html += '>';
    if (object.links.size() == 1) {
      add_link(object.label.empty() ? object.links[0].title : object.label, object.links[0]);
    } else {
      AppendHtmlText(object.label, &html);
      std::string_view separator = object.links.empty() || object.label.empty() ? "" : ": ";
      for (const HelpLink& link : object.links) {
        html += separator;
        separator = ", ";
        add_link(link.title, link);
      }
    }
    html += "</span>";
  }
  if (html.empty()) {
    Remove({object_start_, end});
  } else {
    Replace({object_start_, end}, html);
  }
}

// Links may stand before the objects that they click.
void Rewriter::CollectObjects() {
  if (html_.find("lassid") == std::string_view::npos &&
      html_.find("LASSID") == std::string_view::npos)
    return;
  HtmlTokenizer tokens(html_);
  HtmlToken token;
  const auto close = [&] {
    if (in_object_ && !object_.id.empty()) {
      objects_.emplace(AsciiLowered(object_.id), LinksOf(object_, topics_));
    }
    in_object_ = false;
  };
  while (tokens.Next(&token)) {
    const bool is_start = token.kind == HtmlToken::Kind::kStartTag;
    if (is_start && EqualsIgnoringCase(token.name, "object")) {
      close();
      OpenObject(token, {});
    } else if (is_start && in_object_ && EqualsIgnoringCase(token.name, "param")) {
      Param(token);
    } else if (token.kind == HtmlToken::Kind::kEndTag && EqualsIgnoringCase(token.name, "object")) {
      close();
    }
  }
  close();
}

}  // namespace

std::string PageInUtf8(std::string bytes, int code_page) {
  if (std::optional<std::string> utf8 = Utf16AsUtf8(bytes)) return std::move(*utf8);
  const int own = CodePageOfPage(bytes).value_or(code_page);
  return own == kUtf8CodePage && IsUtf8(bytes) ? std::move(bytes) : ToUtf8(bytes, own);
}

RewrittenPage RewritePage(std::string_view html, std::string_view name, std::string_view place,
                          const SiteNames& names, const HelpTopics& topics,
                          const RewriteRules& rules) {
  return Rewriter(html, name, place, names, topics, rules).Rewrite();
}

std::string RewriteStyleSheet(std::string_view css, std::string_view name, std::string_view place,
                              const SiteNames& names) {
  std::string out;
  std::size_t copied = 0;
  for (const CssLink& link : FindCssLinks(css)) {
    const LinkTarget target = ResolveLink(names, link.address, name);
    if (target.kind != LinkTarget::Kind::kPage || LeadsThere(link.address, place, target.place)) {
      continue;
    }
    const std::size_t at = static_cast<std::size_t>(link.address.data() - css.data());
    out.append(css, copied, at - copied);
    out.append(RelativeAddress(place, target.place) + target.rest);
    copied = at + link.address.size();
  }
  out.append(css, copied);
  return out;
}

}  // namespace scrivo

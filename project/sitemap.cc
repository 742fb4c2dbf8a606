#include "project/sitemap.h"

#include <algorithm>

#include "html/charset.h"
#include "html/tokenizer.h"
#include "project/sitemap_value.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

// Turns the bytes of a value into text.
class ValueDecoder {
 public:
  ValueDecoder(int code_page, Undefined undefined)
      : code_page_(code_page),
        undefined_(undefined),
        references_are_bytes_(code_page != kUtf8CodePage && !IsDoubleByte(code_page)) {}

  // The value with its references replaced, still in the sitemap's code page; a character that the
  // code page lacks comes as UTF-8.
  std::string Bytes(std::string_view value) const {
    return Replaced(
        value, [](std::string_view bytes) { return std::string(bytes); },
        [this](char32_t character) { return BytesOf(character); });
  }

  // The same as UTF-8.
  std::string Text(std::string_view value) const {
    return Replaced(
        value, [this](std::string_view bytes) { return ToUtf8(bytes, code_page_, undefined_); },
        [this](char32_t character) {
          if (!IsByte(character)) return Utf8Of(character);
          return ToUtf8(std::string(1, static_cast<char>(character)), code_page_, undefined_);
        });
  }

 private:
  // The value's text and its references, each as told and in turn. No second byte of a double-byte
  // character looks like the start of a reference.
  template <typename TextMaker, typename CharacterMaker>
  static std::string Replaced(std::string_view value, TextMaker of_text,
                              CharacterMaker of_character) {
    std::string out;
    while (true) {
      const std::size_t ampersand = value.find('&');
      out += of_text(value.substr(0, ampersand));
      if (ampersand == std::string_view::npos) return out;
      value.remove_prefix(ampersand);
      std::size_t length = 0;
      const char32_t character = ReadReference(value, &length);
      if (length == 0) {
        out.push_back('&');
        length = 1;
      } else {
        out += of_character(character);
      }
      value.remove_prefix(length);
    }
  }

  static char32_t ReadReference(std::string_view text, std::size_t* length) {
    // The usual editor writes this name, which HTML does not know, for the byte 0xD0.
    constexpr std::string_view kDstrok = "&Dstrok;";
    if (text.starts_with(kDstrok)) {
      *length = kDstrok.size();
      return 0xD0;
    }
    return ReadEntity(text, EntityPlace::kAttribute, length);
  }

  bool IsByte(char32_t character) const { return character < 0x100 && references_are_bytes_; }

  static std::string Utf8Of(char32_t character) {
    std::string utf8;
    AppendUtf8(character, &utf8);
    return utf8;
  }

  std::string BytesOf(char32_t character) const {
    if (IsByte(character)) return std::string(1, static_cast<char>(character));
    std::size_t lost = 0;
    const std::string utf8 = Utf8Of(character);
    const std::string bytes = FromUtf8(utf8, code_page_, &lost);
    return lost > 0 ? utf8 : bytes;
  }

  int code_page_;
  Undefined undefined_;
  bool references_are_bytes_;
};

struct Param {
  std::string_view name, value;
};

class SitemapReader {
 public:
  SitemapReader(std::string_view bytes, int code_page, Undefined undefined)
      : bytes_(bytes),
        decoder_(code_page, undefined),
        value_ends_(bytes),
        tokens_(bytes, "param"),
        bad_tags_(bytes) {}

  Sitemap Read();

 private:
  void StartTag(const HtmlToken& token);
  void EndTag(const HtmlToken& token);
  void OpenObject(const HtmlToken& token);
  void CloseObject();
  Param ReadParam();
  void ItemParam(const Param& param);
  void NameParam(const Param& param);
  void PropertiesParam(const Param& param);
  SitemapTarget& CurrentTarget();
  std::size_t LineAt(std::size_t offset);

  std::string_view bytes_;
  ValueDecoder decoder_;
  SitemapValueEnds value_ends_;
  HtmlTokenizer tokens_;
  BadTagFinder bad_tags_;
  Sitemap sitemap_;
  enum class Object { kNone, kItem, kProperties, kOther } object_ = Object::kNone;
  SitemapItem item_;
  bool has_name_ = false;
  std::string pending_title_;  // a later Name, for the Local that follows
  int depth_ = 0;              // open lists
  int last_level_ = -1;
  std::size_t line_ = 1, line_offset_ = 0;
};

Sitemap SitemapReader::Read() {
  HtmlToken token;
  while (tokens_.Next(&token)) {
    bad_tags_.See(token);
    if (token.kind == HtmlToken::Kind::kStartTag) StartTag(token);
    if (token.kind == HtmlToken::Kind::kEndTag) EndTag(token);
  }
  CloseObject();
  sitemap_.bad_tags = bad_tags_.Take();
  return std::move(sitemap_);
}

void SitemapReader::StartTag(const HtmlToken& token) {
  if (EqualsIgnoringCase(token.name, "param")) {
    const Param param = ReadParam();
    if (object_ == Object::kItem) ItemParam(param);
    if (object_ == Object::kProperties) PropertiesParam(param);
  } else if (EqualsIgnoringCase(token.name, "object")) {
    CloseObject();
    OpenObject(token);
  } else if (EqualsIgnoringCase(token.name, "li")) {
    CloseObject();
  } else if (EqualsIgnoringCase(token.name, "ul") || EqualsIgnoringCase(token.name, "ol")) {
    ++depth_;
  }
}

void SitemapReader::EndTag(const HtmlToken& token) {
  if (EqualsIgnoringCase(token.name, "object")) {
    CloseObject();
  } else if (EqualsIgnoringCase(token.name, "ul") || EqualsIgnoringCase(token.name, "ol")) {
    depth_ = std::max(0, depth_ - 1);
  }
}

void SitemapReader::OpenObject(const HtmlToken& token) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  object_ = Object::kOther;
  while (NextAttribute(&content, &attribute)) {
    if (!EqualsIgnoringCase(attribute.name, "type")) continue;
    if (EqualsIgnoringCase(Trimmed(attribute.value), "text/sitemap")) object_ = Object::kItem;
    if (EqualsIgnoringCase(Trimmed(attribute.value), "text/site properties")) {
      object_ = Object::kProperties;
      sitemap_.properties.present = true;
    }
  }
  item_ = {};
  has_name_ = false;
  pending_title_.clear();
  item_.line = LineAt(token.offset);
  // An item cannot lie deeper than right below the one before it.
  item_.level = std::min(std::max(0, depth_ - 1), last_level_ + 1);
}

void SitemapReader::CloseObject() {
  const bool has_content = has_name_ || !item_.targets.empty() || !item_.merge.empty();
  if (object_ == Object::kItem && has_content) {
    last_level_ = item_.level;
    sitemap_.items.push_back(std::move(item_));
  }
  object_ = Object::kNone;
}

// Takes the attributes of a PARAM, whose name the tokenizer has just passed.
Param SitemapReader::ReadParam() {
  std::size_t at = tokens_.Position();
  Param param;
  bool has_name = false, has_value = false;
  while (at < bytes_.size() && bytes_[at] != '>') {
    if (IsBlank(bytes_[at]) || bytes_[at] == '/') {
      ++at;
      continue;
    }
    const std::size_t name_start = at;
    while (at < bytes_.size() && !IsBlank(bytes_[at]) && bytes_[at] != '=' && bytes_[at] != '>')
      ++at;
    const std::string_view name = bytes_.substr(name_start, at - name_start);
    while (at < bytes_.size() && IsBlank(bytes_[at])) ++at;
    if (at >= bytes_.size() || bytes_[at] != '=') continue;
    ++at;
    while (at < bytes_.size() && IsBlank(bytes_[at])) ++at;
    const std::size_t start = at;
    std::string_view value;
    if (at < bytes_.size() && (bytes_[at] == '"' || bytes_[at] == '\'')) {
      const bool is_value = EqualsIgnoringCase(name, "value");
      if (is_value) {
        const auto end = value_ends_.Find(start + 1, bytes_[at], !has_name);
        value = bytes_.substr(start + 1, end.value - start - 1);
        at = end.rest;
      } else {
        std::size_t end = bytes_.find_first_of(bytes_[at] == '"' ? "\">" : "'>", start + 1);
        if (end == std::string_view::npos) end = bytes_.size();
        value = bytes_.substr(start + 1, end - start - 1);
        at = end < bytes_.size() && bytes_[end] != '>' ? end + 1 : end;
      }
    } else {
      while (at < bytes_.size() && !IsBlank(bytes_[at]) && bytes_[at] != '>') ++at;
      value = bytes_.substr(start, at - start);
    }
    if (!has_name && EqualsIgnoringCase(name, "name")) {
      param.name = Trimmed(value);
      has_name = true;
    } else if (!has_value && EqualsIgnoringCase(name, "value")) {
      param.value = value;
      has_value = true;
    }
  }
  tokens_.SetPosition(std::min(at + 1, bytes_.size()));
  return param;
}

void SitemapReader::ItemParam(const Param& param) {
  if (EqualsIgnoringCase(param.name, "name") || EqualsIgnoringCase(param.name, "keyword")) {
    NameParam(param);
  } else if (EqualsIgnoringCase(param.name, "local")) {
    if (Trimmed(param.value).empty()) return;
    SitemapTarget target;
    target.title = std::move(pending_title_);
    pending_title_.clear();
    target.local = decoder_.Bytes(Trimmed(param.value));
    item_.targets.push_back(std::move(target));
  } else if (EqualsIgnoringCase(param.name, "url")) {
    if (!item_.targets.empty()) item_.targets.back().url = decoder_.Text(param.value);
  } else if (EqualsIgnoringCase(param.name, "framename")) {
    if (!item_.targets.empty()) item_.targets.back().frame = decoder_.Text(param.value);
  } else if (EqualsIgnoringCase(param.name, "see also")) {
    item_.see_also = decoder_.Text(param.value);
  } else if (EqualsIgnoringCase(param.name, "merge")) {
    item_.merge = decoder_.Text(param.value);
  } else if (EqualsIgnoringCase(param.name, "new")) {
    item_.is_new = param.value == "1" || EqualsIgnoringCase(param.value, "yes");
  }
}

void SitemapReader::NameParam(const Param& param) {
  if (!has_name_) {
    has_name_ = true;
    item_.name = decoder_.Text(param.value);
  } else if (EqualsIgnoringCase(param.name, "name")) {
    pending_title_ = decoder_.Text(param.value);
  }
}

void SitemapReader::PropertiesParam(const Param& param) {
  SitemapProperties& properties = sitemap_.properties;
  const struct {
    std::string_view name;
    std::string* field;
  } kFields[] = {
      {"imagelist", &properties.image_list},
      {"font", &properties.font},
      {"framename", &properties.frame_name},
      {"windowname", &properties.window_name},
      {"background", &properties.background},
      {"foreground", &properties.foreground},
      {"window styles", &properties.window_styles},
      {"exwindow styles", &properties.ex_window_styles},
  };
  for (const auto& known : kFields) {
    if (EqualsIgnoringCase(param.name, known.name)) *known.field = decoder_.Text(param.value);
  }
  if (EqualsIgnoringCase(param.name, "imagetype")) {
    properties.folder_images = EqualsIgnoringCase(Trimmed(param.value), "folder");
  }
}

std::size_t SitemapReader::LineAt(std::size_t offset) {
  line_ += CountLineEnds(bytes_, line_offset_, offset);
  line_offset_ = offset;
  return line_;
}

}  // namespace

Sitemap ReadSitemap(std::string_view bytes, int code_page, Undefined undefined) {
  if (const auto utf8 = Utf16AsUtf8(bytes)) return ReadSitemap(*utf8, code_page, undefined);
  const int actual = CodePageOfPage(bytes).value_or(code_page);
  // A byte can only be kept for the code page that it came from.
  if (actual != code_page) undefined = Undefined::kReplaced;
  Sitemap sitemap = SitemapReader(bytes, actual, undefined).Read();
  sitemap.code_page = actual;
  return sitemap;
}

}  // namespace scrivo

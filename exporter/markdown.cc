#include "exporter/markdown.h"

#include <algorithm>
#include <vector>

#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

// Lists and quotations within one another, and marks within one another; others are left out.
constexpr std::size_t kDeepest = 60;

bool Is(std::string_view name, std::string_view other) { return EqualsIgnoringCase(name, other); }

template <typename... Names>
bool IsAny(std::string_view name, Names... names) {
  return (EqualsIgnoringCase(name, names) || ...);
}

bool IsWordByte(char c) {
  return IsAsciiLetter(c) || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

std::string_view AttributeOf(const HtmlToken& token, std::string_view name) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (NextAttribute(&content, &attribute)) {
    if (Is(attribute.name, name)) return attribute.value;
  }
  return {};
}

// The longest run of backticks in `text`.
std::size_t LongestTicks(std::string_view text) {
  std::size_t longest = 0, run = 0;
  for (const char c : text) {
    run = c == '`' ? run + 1 : 0;
    longest = std::max(longest, run);
  }
  return longest;
}

// Whether readers see nothing of it: pages are spaced out with lines of such blanks.
bool IsBlankText(std::string_view text) {
  while (!text.empty()) {
    bool is_blank = false;
    for (const std::string_view blank : {" ", "\\\n", "\xC2\xA0", "\xE3\x80\x80"}) {
      if (!text.starts_with(blank)) continue;
      text.remove_prefix(blank.size());
      is_blank = true;
    }
    if (!is_blank) return false;
  }
  return true;
}

// Where the tables of a page begin that hold data, and not the page's layout, in ascending order.
// Such a table has rows of several cells, and in them neither tables nor blocks that Markdown has
// no cells for.
std::vector<std::size_t> FindDataTables(std::string_view html) {
  struct Open {
    std::size_t offset;
    int cells = 0, most_cells = 0;
    bool has_blocks = false;
  };
  std::vector<std::size_t> data;
  std::vector<Open> open;
  const auto close = [&] {
    const Open& table = open.back();
    if (!table.has_blocks && std::max(table.cells, table.most_cells) > 1) {
      data.push_back(table.offset);
    }
    open.pop_back();
  };
  HtmlTokenizer tokens(html);
  HtmlToken token;
  while (tokens.Next(&token)) {
    if (token.kind == HtmlToken::Kind::kEndTag && Is(token.name, "table") && !open.empty()) close();
    if (token.kind != HtmlToken::Kind::kStartTag) continue;
    if (Is(token.name, "table")) {
      if (!open.empty()) open.back().has_blocks = true;
      open.push_back({token.offset});
    } else if (open.empty()) {
      continue;
    } else if (Is(token.name, "tr")) {
      open.back().most_cells = std::max(open.back().most_cells, open.back().cells);
      open.back().cells = 0;
    } else if (IsAny(token.name, "td", "th")) {
      ++open.back().cells;
    } else if (IsAny(token.name, "ul", "ol", "dl", "pre", "blockquote", "hr") ||
               HeadingLevel(token.name) != 0) {
      open.back().has_blocks = true;
    }
  }
  while (!open.empty()) close();
  std::sort(data.begin(), data.end());
  return data;
}

class Converter {
 public:
  Converter(std::string_view html, const MarkdownRules& rules)
      : tokens_(html), rules_(rules), data_tables_(FindDataTables(html)) {}

  std::string Convert();

 private:
  // A list item or a quotation: what its lines begin with.
  struct Container {
    std::string first, rest;
    bool is_item = false, is_used = false;
  };
  struct List {
    bool ordered = false;
    int number = 1;
    std::size_t containers = 0;  // open when it began
  };
  // An inline mark that waits for its text: "**", "*" or "[".
  struct Mark {
    std::string open, close, element;
    std::size_t at = std::string::npos;  // in line_, once it stands there
  };

  void StartTag(const HtmlToken& token);
  void EndTag(const HtmlToken& token);
  void Text(std::string_view text);
  void Put(std::string_view text);
  void OpenMark(std::string open, std::string close, std::string_view element);
  void PutMarks();
  void NoteAnchors(const HtmlToken& token);
  void PutAnchors();
  void CloseMark(std::string_view element);
  void CloseMarks();
  void EndBlock();
  void EndParagraph();
  void WriteBlock(std::string_view text);
  std::string Prefix();
  void OpenContainer(std::string first, std::string rest, bool is_item);
  void StartItem();
  void EndItem();
  void EndList();
  void EndQuotation();
  void EndPre();
  void StartRow();
  void StartCell(bool is_header);
  void EndCell();
  void EndTable();

  HtmlTokenizer tokens_;
  const MarkdownRules& rules_;
  std::vector<std::size_t> data_tables_;

  std::string out_;
  std::string line_;  // of the block that is being read
  bool blank_due_ = false;
  int heading_ = 0;
  bool is_first_heading_ = true;
  std::vector<Mark> marks_;
  std::string anchors_;  // what waits for the next text
  std::vector<Container> containers_;
  std::vector<List> lists_;
  bool tight_ = false;  // the next block follows without an empty line

  bool in_pre_ = false, in_code_ = false, in_skipped_ = false;
  std::string pre_, code_;

  bool in_table_ = false, in_cell_ = false;
  std::vector<std::vector<std::string>> rows_;
  bool has_header_ = false;
};

std::string Converter::Convert() {
  HtmlToken token;
  while (tokens_.Next(&token)) {
    switch (token.kind) {
      case HtmlToken::Kind::kText:
        if (!in_skipped_) {
          Text(token.content.find('&') == std::string_view::npos ? std::string(token.content)
                                                                 : DecodeEntities(token.content));
        }
        break;
      case HtmlToken::Kind::kRaw:
        if (!token.Is("xmp") || in_skipped_) break;
        EndBlock();
        pre_ = token.content;
        if (!in_cell_) EndPre();
        break;
      case HtmlToken::Kind::kStartTag:
        StartTag(token);
        break;
      case HtmlToken::Kind::kEndTag:
        EndTag(token);
        break;
      default:
        break;
    }
  }
  if (in_pre_) EndPre();
  if (in_table_) EndTable();
  EndBlock();
  PutAnchors();
  return std::move(out_);
}

void Converter::NoteAnchors(const HtmlToken& token) {
  if (token.content.empty() || !rules_.anchor) return;
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (NextAttribute(&content, &attribute)) {
    if (!Is(attribute.name, "id") && !(token.Is("a") && Is(attribute.name, "name"))) continue;
    const std::string name = DecodeEntities(attribute.value, EntityPlace::kAttribute);
    const std::string anchor = name.empty() ? "" : rules_.anchor(name);
    if (!anchor.empty()) anchors_ += "<a id=\"" + anchor + "\"></a>";
  }
}

// Writes the anchors that wait as a block of their own.
void Converter::PutAnchors() {
  if (anchors_.empty()) return;
  const std::string anchors = std::move(anchors_);
  anchors_.clear();
  WriteBlock(anchors);
}

void Converter::Text(std::string_view text) {
  if (in_pre_) {
    pre_ += text;
    return;
  }
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t start = rest.find_first_not_of(" \t\r\n\f\v");
    if (start != 0) blank_due_ = true;
    if (start == std::string_view::npos) return;
    rest.remove_prefix(start);
    const std::string_view word = rest.substr(0, rest.find_first_of(" \t\r\n\f\v"));
    rest.remove_prefix(word.size());
    if (in_code_) {
      if (blank_due_ && !code_.empty()) code_ += ' ';
      if (blank_due_ && code_.empty() && !line_.empty()) line_ += ' ';
      blank_due_ = false;
      code_ += word;
    } else {
      Put(MarkdownText(word));
    }
  }
}

// Adds text to the block, behind the marks that wait for it.
void Converter::Put(std::string_view text) {
  if (blank_due_ && !line_.empty() && line_.back() != ' ' && line_.back() != '\n') line_ += ' ';
  blank_due_ = false;
  // A heading's stand before it; within a link there can be no other.
  const auto is_open_link = [](const Mark& mark) {
    return mark.element == "a" && mark.at != std::string::npos;
  };
  if (!anchors_.empty() && heading_ == 0 &&
      std::none_of(marks_.begin(), marks_.end(), is_open_link)) {
    line_ += anchors_;
    anchors_.clear();
  }
  PutMarks();
  // What would make a line something else than text.
  if (line_.empty() && !text.empty()) {
    const bool numbered = text.find_first_not_of("0123456789") != std::string_view::npos &&
                          text.find_first_not_of("0123456789") > 0 &&
                          (text[text.find_first_not_of("0123456789")] == '.' ||
                           text[text.find_first_not_of("0123456789")] == ')');
    if (numbered && heading_ == 0 && !in_cell_) {
      const std::size_t digits = text.find_first_not_of("0123456789");
      line_.append(text.substr(0, digits)).append("\\").append(text.substr(digits));
      return;
    }
    if (std::string_view("#+->=~").find(text[0]) != std::string_view::npos && heading_ == 0 &&
        !in_cell_) {
      line_ += '\\';
    }
  }
  line_.append(text);
}

void Converter::OpenMark(std::string open, std::string close, std::string_view element) {
  if (marks_.size() < kDeepest) {
    marks_.push_back({std::move(open), std::move(close), std::string(element)});
  }
}

void Converter::PutMarks() {
  for (Mark& mark : marks_) {
    if (mark.at != std::string::npos) continue;
    mark.at = line_.size();
    line_ += mark.open;
  }
}

void Converter::CloseMark(std::string_view element) {
  const auto found = std::find_if(marks_.rbegin(), marks_.rend(),
                                  [&](const Mark& mark) { return Is(mark.element, element); });
  if (found == marks_.rend()) return;
  // Marks that were opened later end with it.
  const std::size_t keep = static_cast<std::size_t>(marks_.rend() - found) - 1;
  bool line_ended = false;
  while (marks_.size() > keep) {
    if (marks_.back().at != std::string::npos) {
      // A mark that follows a line end would open and not close.
      while (line_.ends_with("\\\n")) {
        line_.resize(line_.size() - 2);
        line_ended = true;
      }
      while (!line_.empty() && line_.back() == ' ') {
        line_.pop_back();
        blank_due_ = true;
      }
      line_ += marks_.back().close;
    }
    marks_.pop_back();
  }
  if (line_ended) line_ += "\\\n";
}

void Converter::CloseMarks() {
  while (!marks_.empty()) CloseMark(std::string(marks_.back().element));
}

void Converter::EndBlock() {
  if (in_cell_) {
    // A cell is one line.
    if (!line_.empty() && !line_.ends_with("<br>")) line_ += "<br>";
    blank_due_ = false;
    return;
  }
  CloseMarks();
  for (;;) {
    if (line_.ends_with("\\\n")) {
      line_.resize(line_.size() - 2);
    } else if (line_.ends_with(' ')) {
      line_.pop_back();
    } else {
      break;
    }
  }
  blank_due_ = false;
  if (IsBlankText(line_)) {
    line_.clear();
    heading_ = 0;
    return;
  }
  std::string text = std::move(line_);
  line_.clear();
  if (heading_ != 0) {
    const bool is_known =
        is_first_heading_ && EqualsIgnoringCase(text, MarkdownText(rules_.known_title));
    is_first_heading_ = false;
    const int level = std::min(6, heading_ + rules_.heading_shift);
    heading_ = 0;
    PutAnchors();
    if (is_known) return;
    text.insert(0, std::string(static_cast<std::size_t>(level), '#') + " ");
  }
  WriteBlock(text);
}

// Ends a paragraph whose marks go on in the next one.
void Converter::EndParagraph() {
  std::vector<Mark> marks = marks_;
  EndBlock();
  for (Mark& mark : marks) mark.at = std::string::npos;
  marks_ = std::move(marks);
}

std::string Converter::Prefix() {
  std::string prefix;
  for (Container& container : containers_) {
    prefix += container.is_used ? container.rest : container.first;
    container.is_used = true;
  }
  return prefix;
}

void Converter::WriteBlock(std::string_view text) {
  if (!out_.empty() && !tight_) {
    // The empty line belongs to what is open already.
    std::string prefix;
    for (const Container& container : containers_) {
      if (!container.is_used) break;
      prefix += container.rest;
    }
    while (prefix.ends_with(' ')) prefix.pop_back();
    out_ += prefix + "\n";
  }
  tight_ = false;
  while (true) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line = Prefix();
    line.append(text.substr(0, end));
    while (line.ends_with(' ')) line.pop_back();
    out_ += line + "\n";
    if (end == text.size()) return;
    text.remove_prefix(end + 1);
  }
}

void Converter::OpenContainer(std::string first, std::string rest, bool is_item) {
  if (containers_.size() < kDeepest) {
    containers_.push_back({std::move(first), std::move(rest), is_item, false});
  }
}

void Converter::StartItem() {
  EndItem();
  if (lists_.empty()) lists_.push_back({false, 1, containers_.size()});
  List& list = lists_.back();
  const std::string marker = list.ordered ? std::to_string(list.number++) + ". " : "- ";
  OpenContainer(marker, std::string(marker.size(), ' '), true);
}

// Ends the item of the innermost list, if one is open.
void Converter::EndItem() {
  EndBlock();
  if (lists_.empty() || containers_.size() <= lists_.back().containers) return;
  containers_.resize(lists_.back().containers);
  // Items follow one another without an empty line.
  tight_ = true;
}

void Converter::EndList() {
  EndItem();
  if (lists_.empty()) return;
  lists_.pop_back();
  tight_ = !lists_.empty();
}

// Ends the innermost quotation, with the lists that were left open in it.
void Converter::EndQuotation() {
  const auto quotation = std::find_if(containers_.rbegin(), containers_.rend(),
                                      [](const Container& one) { return !one.is_item; });
  if (quotation == containers_.rend()) return;
  containers_.resize(static_cast<std::size_t>(containers_.rend() - quotation) - 1);
  while (!lists_.empty() && lists_.back().containers > containers_.size()) lists_.pop_back();
}

void Converter::EndPre() {
  in_pre_ = false;
  if (pre_.starts_with("\r\n")) pre_.erase(0, 2);
  if (pre_.starts_with('\n')) pre_.erase(0, 1);
  std::string code;
  for (const char c : pre_) {
    if (c != '\r') code += c;
  }
  while (code.ends_with('\n') || code.ends_with(' ')) code.pop_back();
  pre_.clear();
  if (code.empty()) return;
  PutAnchors();
  const std::string fence(std::max<std::size_t>(3, LongestTicks(code) + 1), '`');
  WriteBlock(fence + "\n" + code + "\n" + fence);
}

void Converter::StartRow() {
  EndCell();
  rows_.emplace_back();
}

void Converter::StartCell(bool is_header) {
  EndCell();
  if (rows_.empty()) rows_.emplace_back();
  if (is_header && rows_.size() == 1) has_header_ = true;
  in_cell_ = true;
}

void Converter::EndCell() {
  if (!in_cell_) return;
  CloseMarks();
  in_cell_ = false;
  blank_due_ = false;
  while (line_.ends_with("<br>")) line_.resize(line_.size() - 4);
  std::string cell;
  for (const char c : line_) {
    if (c == '|') cell += '\\';
    cell += c == '\n' ? ' ' : c;
  }
  line_.clear();
  rows_.back().push_back(IsBlankText(cell) ? "" : std::move(cell));
}

void Converter::EndTable() {
  EndCell();
  in_table_ = false;
  std::size_t columns = 0;
  for (const auto& row : rows_) columns = std::max(columns, row.size());
  if (!has_header_) rows_.insert(rows_.begin(), std::vector<std::string>(columns));
  std::string table;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const bool is_empty = std::all_of(rows_[i].begin(), rows_[i].end(),
                                      [](const std::string& cell) { return cell.empty(); });
    if (is_empty && i > 0) continue;
    rows_[i].resize(columns);
    if (i > 0) table += '\n';
    table += '|';
    for (const std::string& cell : rows_[i]) table += " " + cell + (cell.empty() ? "|" : " |");
    if (i > 0) continue;
    table += "\n|";
    for (std::size_t k = 0; k < columns; ++k) table += " --- |";
  }
  rows_.clear();
  has_header_ = false;
  if (columns > 0) WriteBlock(table);
}

void Converter::StartTag(const HtmlToken& token) {
  const std::string_view name = token.name;
  NoteAnchors(token);
  if (IsAny(name, "object", "select", "noframes")) {
    in_skipped_ = true;
    return;
  }
  if (in_skipped_ || in_pre_) return;
  if (IsAny(name, "b", "strong")) {
    OpenMark("**", "**", name);
  } else if (IsAny(name, "i", "em", "cite", "var", "dfn")) {
    OpenMark("*", "*", name);
  } else if (IsAny(name, "code", "tt", "kbd", "samp")) {
    in_code_ = true;
  } else if (Is(name, "a")) {
    CloseMark("a");
    const std::string address = DecodeEntities(AttributeOf(token, "href"), EntityPlace::kAttribute);
    const std::string link = address.empty() ? "" : rules_.link(address);
    // A page in another help file, which a site cannot lead to either.
    const std::string_view elsewhere = AttributeOf(token, "data-help-file");
    if (!link.empty()) {
      OpenMark("[", "](" + link + ")", "a");
    } else if (!elsewhere.empty()) {
      OpenMark("", " (" + MarkdownText(DecodeEntities(elsewhere, EntityPlace::kAttribute)) + ")",
               "a");
    }
  } else if (Is(name, "img")) {
    const std::string address = DecodeEntities(AttributeOf(token, "src"), EntityPlace::kAttribute);
    const std::string picture = address.empty() ? "" : rules_.picture(address);
    if (picture.empty()) return;
    Put("![" + MarkdownText(DecodeEntities(AttributeOf(token, "alt"), EntityPlace::kAttribute)) +
        "](" + picture + ")");
  } else if (IsAny(name, "frame", "iframe")) {
    EndBlock();
    const std::string address = DecodeEntities(AttributeOf(token, "src"), EntityPlace::kAttribute);
    const std::string link = address.empty() ? "" : rules_.link(address);
    std::string_view label = AttributeOf(token, "title");
    if (label.empty()) label = AttributeOf(token, "name");
    const std::string shown =
        label.empty() ? address : DecodeEntities(label, EntityPlace::kAttribute);
    if (!link.empty()) Put("[" + MarkdownText(shown) + "](" + link + ")");
    EndBlock();
    in_skipped_ = Is(name, "iframe");  // what browsers without frames would show
  } else if (Is(name, "br")) {
    if (in_cell_) {
      EndBlock();
    } else if (heading_ != 0) {
      blank_due_ = true;
    } else if (line_.ends_with("\\\n")) {
      EndParagraph();
    } else if (!line_.empty()) {
      line_ += "\\\n";
      blank_due_ = false;
    }
  } else if (HeadingLevel(name) != 0) {
    EndBlock();
    heading_ = HeadingLevel(name);
  } else if (IsAny(name, "ul", "ol", "dir", "menu")) {
    EndBlock();
    // Within an item it follows the item's text at once.
    tight_ = !lists_.empty() && containers_.size() > lists_.back().containers;
    lists_.push_back({Is(name, "ol"), 1, containers_.size()});
  } else if (Is(name, "li")) {
    StartItem();
  } else if (Is(name, "blockquote")) {
    EndBlock();
    OpenContainer("> ", "> ", false);
  } else if (Is(name, "dt")) {
    EndBlock();
    OpenMark("**", "**", "dt");
  } else if (IsAny(name, "pre", "listing")) {
    EndBlock();
    in_pre_ = !in_cell_;
  } else if (Is(name, "hr")) {
    EndBlock();
    if (!in_cell_) WriteBlock("---");
  } else if (Is(name, "table")) {
    EndBlock();
    in_table_ =
        in_table_ || std::binary_search(data_tables_.begin(), data_tables_.end(), token.offset);
    if (in_table_ && !in_cell_) PutAnchors();
  } else if (in_table_ && Is(name, "tr")) {
    StartRow();
  } else if (in_table_ && IsAny(name, "td", "th")) {
    StartCell(Is(name, "th"));
  } else if (IsAny(name, "p", "div", "td", "th", "tr", "dd", "dl", "center", "form", "caption",
                   "address", "section", "article", "fieldset", "body", "li")) {
    EndBlock();
  }
}

void Converter::EndTag(const HtmlToken& token) {
  const std::string_view name = token.name;
  if (IsAny(name, "object", "select", "noframes", "iframe")) {
    in_skipped_ = false;
    return;
  }
  if (in_skipped_) return;
  if (in_pre_) {
    if (IsAny(name, "pre", "listing")) EndPre();
    return;
  }
  if (IsAny(name, "code", "tt", "kbd", "samp")) {
    in_code_ = false;
    if (code_.empty()) return;
    const std::string ticks(LongestTicks(code_) + 1, '`');
    const bool needs_blank = code_.front() == '`' || code_.back() == '`';
    std::string code = ticks + (needs_blank ? " " : "") + code_ + (needs_blank ? " " : "") + ticks;
    code_.clear();
    const bool blank_after = blank_due_;
    blank_due_ = line_.ends_with(' ');
    Put(code);
    blank_due_ = blank_after;
  } else if (IsAny(name, "b", "strong", "i", "em", "cite", "var", "dfn", "a", "dt")) {
    CloseMark(name);
    if (Is(name, "dt")) EndBlock();
  } else if (HeadingLevel(name) != 0) {
    EndBlock();
  } else if (IsAny(name, "ul", "ol", "dir", "menu")) {
    EndList();
  } else if (Is(name, "li")) {
    EndItem();
  } else if (Is(name, "blockquote")) {
    EndBlock();
    EndQuotation();
  } else if (Is(name, "table")) {
    if (in_table_) {
      EndTable();
    } else {
      EndBlock();
    }
  } else if (in_table_ && IsAny(name, "td", "th")) {
    EndCell();
  } else if (IsAny(name, "p", "div", "td", "th", "tr", "dd", "dl", "center", "form", "caption",
                   "address", "section", "article", "fieldset", "body")) {
    EndBlock();
  }
}

}  // namespace

std::string MarkdownText(std::string_view utf8) {
  std::string text;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const char c = utf8[i];
    bool escaped = std::string_view("\\`*[]<").find(c) != std::string_view::npos;
    if (c == '_') {
      // Within a word it means nothing.
      escaped =
          i == 0 || i + 1 == utf8.size() || !IsWordByte(utf8[i - 1]) || !IsWordByte(utf8[i + 1]);
    }
    if (c == '&') {
      std::size_t length = 0;
      ReadEntity(utf8.substr(i), EntityPlace::kText, &length);
      escaped = length > 0;
    }
    if (escaped) text += '\\';
    text += c == '\n' || c == '\r' ? ' ' : c;
  }
  return text;
}

std::string PageAsMarkdown(std::string_view html, const MarkdownRules& rules) {
  return Converter(html, rules).Convert();
}

}  // namespace scrivo

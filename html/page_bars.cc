#include "html/page_bars.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "html/tokenizer.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

struct Stretch {
  std::size_t begin, end;
};

// What a border's comment stands in front of.
enum class BorderTag { kTable, kTableEnd, kCell, kCellEnd, kOther };

BorderTag BorderTagOf(const HtmlToken& token) {
  if (token.Starts("table")) return BorderTag::kTable;
  if (token.Ends("table")) return BorderTag::kTableEnd;
  if (token.Starts("td")) return BorderTag::kCell;
  if (token.Ends("td")) return BorderTag::kCellEnd;
  return BorderTag::kOther;
}

// A comment of the borders, with the tag that it stands in front of.
struct BorderMark {
  BorderTag tag;
  Stretch place;
};

// The pieces of the page that are borders; empty when the marks are not those of a page with its
// content in one table of theirs. In a page that is cut off within its content the marks behind it
// are missing.
std::vector<Stretch> BordersOf(const std::vector<BorderMark>& marks, bool is_cut_off) {
  using enum BorderTag;
  std::vector<Stretch> borders;
  bool has_content = false;
  const auto follow = [&](std::size_t at, std::initializer_list<BorderTag> tags) {
    if (marks.size() - at < tags.size()) return false;
    return std::equal(tags.begin(), tags.end(), marks.begin() + static_cast<std::ptrdiff_t>(at),
                      [](BorderTag tag, const BorderMark& mark) { return tag == mark.tag; });
  };
  const auto add = [&](std::size_t first, std::size_t last) {
    borders.push_back({marks[first].place.begin, marks[last].place.end});
  };
  for (std::size_t at = 0; at < marks.size();) {
    if (follow(at, {kTable, kTableEnd})) {
      add(at, at + 1);
      at += 2;
    } else if (!has_content && follow(at, {kTable, kCell, kCellEnd, kTableEnd})) {
      add(at, at + 1);
      add(at + 2, at + 3);
      has_content = true;
      at += 4;
    } else if (is_cut_off && !has_content && marks.size() - at == 2 &&
               follow(at, {kTable, kCell})) {
      add(at, at + 1);
      has_content = true;
      at += 2;
    } else {
      return {};
    }
  }
  if (!has_content) borders.clear();
  return borders;
}

class BarFinder {
 public:
  explicit BarFinder(std::string_view page) : page_(page) {}

  std::vector<Stretch> Find() {
    HtmlTokenizer tokens(page_);
    HtmlToken token;
    while (tokens.Next(&token)) See(token, tokens.Position());
    if (mark_begin_) AddMark(BorderTag::kOther, page_.size());
    std::vector<Stretch> bars = BordersOf(marks_, !has_end_);
    bars.insert(bars.end(), components_.begin(), components_.end());
    std::sort(bars.begin(), bars.end(),
              [](const Stretch& a, const Stretch& b) { return a.begin < b.begin; });
    return bars;
  }

 private:
  void See(const HtmlToken& token, std::size_t end) {
    if (mark_begin_) {
      if (token.kind == HtmlToken::Kind::kText && Trimmed(token.content).empty()) return;
      AddMark(BorderTagOf(token), end);
    }
    has_end_ = has_end_ || token.Ends("body") || token.Ends("html");
    if (token.kind != HtmlToken::Kind::kOther) return;
    std::string_view comment = token.content;
    if (!comment.starts_with("<!--")) return;
    comment.remove_prefix(4);
    if (!comment.ends_with("--")) return;
    comment.remove_suffix(2);
    comment = Trimmed(comment);
    if (EqualsIgnoringCase(comment, "msnavigation")) {
      mark_begin_ = token.offset;
      component_begin_.reset();  // none lies across a border
    } else if (StartsWithIgnoringCase(comment, "webbot")) {
      SeeComponent(comment.substr(6), {token.offset, end});
    }
  }

  void AddMark(BorderTag tag, std::size_t end) {
    marks_.push_back({tag, {*mark_begin_, end}});
    mark_begin_.reset();
  }

  void SeeComponent(std::string_view attributes, const Stretch& comment) {
    bool is_navigation = false, is_banner = false, starts = false, ends = false;
    HtmlAttribute attribute;
    while (NextAttribute(&attributes, &attribute)) {
      const auto is = [&](std::string_view name, std::string_view value) {
        return EqualsIgnoringCase(attribute.name, name) &&
               EqualsIgnoringCase(attribute.value, value);
      };
      is_navigation = is_navigation || is("bot", "navigation");
      is_banner = is_banner || is("s-type", "banner");
      starts = starts || is("startspan", "");
      ends = ends || is("endspan", "");
    }
    if (is_navigation && ends && component_begin_) {
      components_.push_back({*component_begin_, comment.end});
    }
    component_begin_.reset();
    if (is_navigation && starts && !is_banner) component_begin_ = comment.begin;
  }

  const std::string_view page_;
  std::vector<BorderMark> marks_;
  std::vector<Stretch> components_;
  bool has_end_ = false;                        // an end tag of the whole page
  std::optional<std::size_t> mark_begin_;       // of a border's comment whose tag is due
  std::optional<std::size_t> component_begin_;  // of a component whose end is due
};

}  // namespace

std::optional<std::string> WithoutBars(std::string_view page) {
  const std::vector<Stretch> bars = BarFinder(page).Find();
  if (bars.empty()) return std::nullopt;
  std::string rest;
  rest.reserve(page.size());
  std::size_t at = 0;
  for (const Stretch& bar : bars) {
    if (bar.begin > at) rest.append(page.substr(at, bar.begin - at));
    at = std::max(at, bar.end);
  }
  return rest.append(page.substr(at));
}

}  // namespace scrivo

#include "project/sitemap_value.h"

#include "text/ascii_text.h"

namespace scrivo {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  while (at < text.size() && IsBlank(text[at])) ++at;
  return at;
}

// Whether one of the tags that a sitemap consists of starts here.
bool StartsSitemapTag(std::string_view text) {
  constexpr std::string_view kTags[] = {"<param", "</object", "<object", "<li", "</li",
                                        "<ul",    "</ul",     "</body",  "<!--"};
  for (const std::string_view tag : kTags) {
    if (StartsWithIgnoringCase(text, tag)) return true;
  }
  return false;
}

}  // namespace

SitemapValueEnds::End SitemapValueEnds::Find(std::size_t start, char quote, bool more_may_follow) {
  MoveToLine(start);
  std::size_t end =
      FindBeforeTagEnd(start, quote, more_may_follow, Follower::kSitemapTag, &no_strict_before_);
  if (end == kNone) {
    end = FindBeforeTagEnd(start, quote, more_may_follow, Follower::kAnything, &no_loose_before_);
  }
  if (end != kNone) return {end, end + 1};

  const std::string_view line = html_.substr(start, line_end_ - start);
  const std::size_t first = line.find(quote);
  if (first != kNone) return {start + first, start + first + 1};
  const std::size_t bracket = line.rfind('>');
  if (bracket != kNone) return {start + bracket, start + bracket};
  if (!no_quote_left_) {
    end = html_.find(quote, line_end_);
    if (end != kNone) return {end, end + 1};
    no_quote_left_ = true;
  }
  return {line_end_, line_end_};
}

void SitemapValueEnds::MoveToLine(std::size_t start) {
  if (start < line_end_) return;
  line_end_ = html_.find_first_of("\r\n", start);
  if (line_end_ == kNone) line_end_ = html_.size();
}

std::size_t SitemapValueEnds::FindBeforeTagEnd(std::size_t start, char quote, bool more_may_follow,
                                               Follower follower, std::size_t* none_before) const {
  if (start < *none_before) return kNone;
  for (std::size_t at = start; at < line_end_; ++at) {
    if (html_[at] != quote) continue;
    if (EndsTag(at + 1, follower)) return at;
    if (more_may_follow && AttributeFollows(at + 1)) return at;
  }
  *none_before = line_end_;
  return kNone;
}

bool SitemapValueEnds::EndsTag(std::size_t after_quote, Follower follower) const {
  std::size_t at = SkipBlanks(html_, after_quote);
  if (at < html_.size() && html_[at] == '/') ++at;
  if (at >= html_.size() || html_[at] != '>') return false;
  if (follower == Follower::kAnything) return true;
  at = SkipBlanks(html_, at + 1);
  return at >= html_.size() || StartsSitemapTag(html_.substr(at));
}

bool SitemapValueEnds::AttributeFollows(std::size_t after_quote) const {
  std::size_t at = SkipBlanks(html_, after_quote);
  if (at == after_quote || at >= html_.size() || !IsAsciiLetter(html_[at])) return false;
  while (at < html_.size() && IsAsciiLetter(html_[at])) ++at;
  at = SkipBlanks(html_, at);
  return at < html_.size() && html_[at] == '=';
}

}  // namespace scrivo

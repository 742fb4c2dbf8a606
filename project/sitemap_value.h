#pragma once

#include <cstddef>
#include <string_view>

namespace scrivo {

// Finds where the value of a PARAM ends when quotes inside it may be unescaped, as in
// VALUE="the "best" way">.
//
// The closing quote is the first one on the line that is followed by the end of the tag and by
// another tag of a sitemap; failing that, the first one followed by the end of the tag; failing
// that, the first one. A value whose line has no closing quote ends at the line's last ">"; without
// one it goes on to the next quote. One object serves one document from front to back; all its
// searches together cost one pass.
class SitemapValueEnds {
 public:
  explicit SitemapValueEnds(std::string_view html) : html_(html) {}

  struct End {
    std::size_t value;  // one past the last byte of the value
    std::size_t rest;   // where the rest of the tag goes on
  };

  // `start` is the first byte after the opening `quote`, and never less than in the call before.
  // `more_may_follow`: another attribute may come after this one.
  End Find(std::size_t start, char quote, bool more_may_follow);

 private:
  enum class Follower { kSitemapTag, kAnything };

  void MoveToLine(std::size_t start);
  std::size_t FindBeforeTagEnd(std::size_t start, char quote, bool more_may_follow,
                               Follower follower, std::size_t* none_before) const;
  bool EndsTag(std::size_t after_quote, Follower follower) const;
  bool AttributeFollows(std::size_t after_quote) const;

  std::string_view html_;
  std::size_t line_end_ = 0;
  // The searches that failed need not be made again for a later start on the same line.
  std::size_t no_strict_before_ = 0, no_loose_before_ = 0;
  bool no_quote_left_ = false;
};

}  // namespace scrivo

#pragma once

#include <cstdint>
#include <string_view>

#include "platform/path_style.h"

namespace scrivo {

// Counts the line breaks of a text that arrives in pieces, each piece once: a CR LF that two
// pieces share counts once. Where the system's own programs end a line with a line feed alone
// (the POSIX style), that is a line break too.
class LineCount {
 public:
  explicit LineCount(PathStyle style) : line_feed_is_enough_(style == PathStyle::kPosix) {}

  void Add(std::string_view piece) {
    for (const char c : piece) {
      if (c == '\n' && (line_feed_is_enough_ || last_ == '\r')) ++breaks_;
      last_ = c;
    }
  }
  std::int64_t Breaks() const { return breaks_; }

 private:
  bool line_feed_is_enough_;
  char last_ = '\0';
  std::int64_t breaks_ = 0;
};

// How far a run has probably come, in percent: printed lines against the expected files plus ten
// lines of framing, in whole percent (a half goes to the even neighbour). Above 100 it is held at
// 99, just short of complete. 0 when the expected files give nothing to divide by.
int EstimateProgress(std::int64_t line_breaks, std::int32_t files_count);

}  // namespace scrivo

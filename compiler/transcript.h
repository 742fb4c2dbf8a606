#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/globals.h"

namespace scrivo {

// The texts of the compiler's messages in `transcript`, in order: what the pattern HHC\d+:\s(.+)
// captures, searched for everywhere and in any case of its letters. \s is one blank, tab, line
// feed, vertical tab, form feed or carriage return; "." ends before a carriage return as well as
// before a line feed, so that a text is whole and holds no part of a line end. (Engines differ
// here: some let "." take the carriage return of CR LF.) Time is linear in the transcript,
// whatever it holds.
std::vector<std::string> ScanForMessages(std::string_view transcript);

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

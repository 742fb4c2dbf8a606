#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scrivo {

// The texts of the compiler's messages in `transcript`, in order: what the pattern HHC\d+:\s(.+)
// captures, searched for everywhere and in any case of its letters. \s is one blank, tab, line
// feed, vertical tab, form feed or carriage return; "." ends before a carriage return as well as
// before a line feed, so that a text is whole and holds no part of a line end. (Engines differ
// here: some let "." take the carriage return of CR LF.) Time is linear in the transcript,
// whatever it holds.
std::vector<std::string> ScanForMessages(std::string_view transcript);

}  // namespace scrivo

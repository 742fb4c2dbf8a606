#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivo {

// What can be wrong with a web, in the order of a report.
enum class FindingKind {
  kContentsEntry,  // leads to no page, or stands in no order
  kPageOutsideContents,
  kMissingLink,  // to a file that does not exist, to a folder, to the author's own disk
  kLinkCase,     // its capital letters are not those of the file's name
  kMissingPicture,
  kNoTitle,
  kNoKeywords,
  kLostText,         // the help file's code page lacks characters
  kServerComponent,  // works on a web server only
  kWrongCharset,
  kCutOff,  // the end of the page is missing
  kUnreadable,
};
inline constexpr std::size_t kFindingKinds = 12;

// One thing that somebody can put right. Texts are UTF-8, but for names of files that are not.
struct Finding {
  FindingKind kind;
  std::string file;      // relative to the web, with "/"; "" for the web as a whole
  std::size_t line = 0;  // counted from 1; 0 when it is not about one line
  std::string subject;   // the address, label, component or charset concerned; may be empty
  std::string text;      // what is wrong, as a phrase
};

// The kind's name for machines, which never changes: "missing-link".
std::string_view FindingName(FindingKind kind);
// The kind for people, as a heading: "Links to missing files".
std::string_view FindingHeading(FindingKind kind);
// What to do about findings of this kind; a sentence.
std::string_view FindingAdvice(FindingKind kind);

}  // namespace scrivo

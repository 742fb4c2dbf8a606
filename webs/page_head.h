#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "system/files.h"

namespace scrivo {

class HtmlTag;

// A named meta tag of a page.
struct MetaTag {
  std::string name;     // in small letters
  std::string content;  // bytes of the page, character references as they stand
};

// What a page says of itself. Texts are bytes of the page in the page's own charset (UTF-8 for a
// page in UTF-16), with character references and line ends as they stand, cut after 4096 bytes;
// tags inside them are left out.
struct PageHead {
  std::string title;
  std::vector<MetaTag> metas;
  std::vector<std::string> headings;  // of <h1> to <h3>, those that are empty left out
  // The first charset that the page declares and that is known.
  std::optional<int> code_page;
};

enum class Headings { kNo, kYes };

// Finds a page's head in its bytes, which may come in pieces of any size. Each byte is looked at
// once, and no more than a tag or a text is kept, so any input costs linear time and little
// memory. Without headings it wants nothing past the head: the end of the head, the start of the
// body, or a tag that can only stand in a body.
class PageHeadScanner {
 public:
  explicit PageHeadScanner(Headings headings) : headings_(headings) {}

  // Takes the next bytes. True when no more are wanted.
  bool Feed(std::string_view bytes);
  // What was found. Call it once, at the end of the page or of what is wanted of it.
  PageHead Finish();

 private:
  enum class State { kText, kTagStart, kTag, kDeclaration, kComment, kRawText };
  enum class Collecting { kNothing, kTitle, kHeading };
  enum class Encoding { kUnknown, kBytes, kUtf16Le, kUtf16Be };

  void Start();
  void Decode(std::string_view bytes);
  void Scan(std::string_view bytes);
  bool ScanTagStart(char c);
  void ScanTag(char c);
  void ScanDeclaration(char c);
  void ScanComment(char c);
  void ScanRawText(char c);
  void Collect(std::string_view text);
  void EndCollecting();
  void HandleTag();
  void HandleStart(const HtmlTag& tag);
  void HandleMeta(const HtmlTag& tag);
  void EnterBody();

  const Headings headings_;
  PageHead head_;
  Encoding encoding_ = Encoding::kUnknown;
  std::string mark_;  // the first bytes, which may be a byte order mark
  std::size_t utf16_bytes_ = 0;
  char32_t utf16_byte_ = 0;      // the first byte of a unit
  char32_t high_surrogate_ = 0;  // one whose second half is still to come
  State state_ = State::kText;
  Collecting collecting_ = Collecting::kNothing;
  std::string collected_;
  std::string tag_;         // what stands after "<", as far as it was read
  char quote_ = '\0';       // of the attribute value being read
  char last_solid_ = '\0';  // the last byte of the tag that was no blank
  int dashes_ = 0;          // "-" in a row inside a comment
  std::string raw_end_;     // "</script"
  std::size_t raw_matched_ = 0;
  bool in_body_ = false;
  bool done_ = false;
};

// Reads no more of the file than is wanted, in blocks. Throws Error when reading fails.
PageHead ReadPageHead(FileReader& reader, Headings headings);

}  // namespace scrivo

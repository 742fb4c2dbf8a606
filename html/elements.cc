#include "html/elements.h"

#include <algorithm>
#include <iterator>

#include "text/ascii_text.h"

namespace scrivo {
namespace {

constexpr std::string_view kInline[] = {"a",      "abbr",   "acronym", "b", "big",  "code",  "em",
                                        "font",   "i",      "kbd",     "s", "samp", "small", "span",
                                        "strike", "strong", "tt",      "u", "var",  "wbr"};

constexpr std::string_view kOfBody[] = {
    "body", "frameset", "p", "h1", "h2", "h3", "h4",   "h5",  "h6",   "table",  "div", "ul",  "ol",
    "dl",   "img",      "a", "hr", "b",  "i",  "font", "pre", "form", "center", "br",  "span"};

template <typename Names>
bool Holds(const Names& names, std::string_view name) {
  return std::any_of(std::begin(names), std::end(names),
                     [&](std::string_view known) { return EqualsIgnoringCase(name, known); });
}

}  // namespace

bool IsInlineElement(std::string_view name) { return Holds(kInline, name); }

bool StartsBody(std::string_view name) { return Holds(kOfBody, name); }

int HeadingLevel(std::string_view name) {
  if (name.size() != 2 || (name[0] != 'h' && name[0] != 'H')) return 0;
  return name[1] >= '1' && name[1] <= '6' ? name[1] - '0' : 0;
}

}  // namespace scrivo

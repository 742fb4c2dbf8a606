#pragma once

// The objects that HTML Help puts into pages: what only its own viewer can run becomes links.

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivo {

// A page that an object leads to.
struct HelpLink {
  std::string title;      // UTF-8
  std::string address;    // as the object has it, or from a place of the site
  bool is_place = false;  // `address` is a place of the site, not an address in the page
  std::string rest = "";  // what follows a place in the address: "?query" and "#anchor"
};

// One object of HTML Help's control.
struct HelpObject {
  std::string id;
  std::vector<std::pair<std::string, std::string>> params;  // names in small letters; UTF-8
};

// The topics of a help file by what leads to them: "ALink" names and keywords, in small letters.
struct HelpTopics {
  using Links = std::map<std::string, std::vector<HelpLink>>;
  Links associations, keywords;
};

// What stands in a page for an object.
struct ObjectLinks {
  std::string label;  // what the object shows, or what is said before its links; may be empty
  std::vector<HelpLink> links;
  bool is_visible = false;  // the object itself can be clicked
};

// Whether `class_id` ("clsid:...", any case) is the control of HTML Help.
bool IsHelpControl(std::string_view class_id);

// What `object` leads to.
ObjectLinks LinksOf(const HelpObject& object, const HelpTopics& topics);

// A call in a "javascript:" address that HTML Help's pages use: "id.Click()" or
// "id.TextPopup("text", ...)".
struct HelpCall {
  enum class Kind { kNone, kClick, kPopup } kind = Kind::kNone;
  std::string id;    // of the object
  std::string text;  // of the pop-up
};
HelpCall ReadHelpCall(std::string_view address);

}  // namespace scrivo

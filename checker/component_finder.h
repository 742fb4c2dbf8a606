#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "html/tokenizer.h"

namespace scrivo {

// What in a page works only where the page comes from a web server with the host's extensions.
struct ServerComponent {
  std::size_t offset = 0;  // in the page
  std::string name;        // "search form", "hit counter"
};

// Finds them from the page's tokens: forms that are sent to the web's own server, and components
// that the server fills when a page is asked for.
class ComponentFinder {
 public:
  // Takes the next token of the page.
  void See(const HtmlToken& token);

  // Whether the last token lies within a component that Take gives: its links are its own affair.
  bool IsInside() const { return is_inside_; }

  // What was found, in the order of the page. Call it once, at its end.
  std::vector<ServerComponent> Take();

 private:
  void StartForm(const HtmlToken& token);
  void EndForm();
  void SeeComponent(std::string_view attributes, std::size_t offset);

  std::vector<ServerComponent> found_;
  bool form_is_open_ = false;
  std::size_t form_offset_ = 0;
  std::string form_name_;  // of the open form; "" while nothing needs a server
  bool is_inside_ = false;
};

}  // namespace scrivo

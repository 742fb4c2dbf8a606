#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "html/tokenizer.h"

namespace scrivo {

// An address that a style sheet names: url(...) or @import "...".
struct CssLink {
  std::string_view address;  // points into the style sheet, without quotes
  std::size_t offset = 0;
};

// All addresses of a style sheet, in order; comments are passed over. Linear in the sheet for any
// input.
std::vector<CssLink> FindCssLinks(std::string_view css);

enum class LinkKind {
  kAnchor,  // the links that readers click
  kPage,    // frames, refreshes: pages that belong to the page
  kImage,
  kPart,  // style sheets, scripts, sounds, objects
};

struct PageLink {
  LinkKind kind = LinkKind::kAnchor;
  std::string address;     // in the page's code page, character references replaced
  std::size_t offset = 0;  // of the tag in the page
};

// Finds what a page names: in the attributes that hold an address, in its styles and style
// attributes, in refreshes, and in the parameters of objects: films, and the topics that a button
// or menu of related topics leads to. Addresses within the page itself ("#top") are left out.
class LinkFinder {
 public:
  // `code_page`: of the page's bytes.
  explicit LinkFinder(int code_page) : code_page_(code_page) {}

  // Takes the next token of the page.
  void See(const HtmlToken& token);

  // The BASE element's address, as written; empty when there is none.
  const std::string& Base() const { return base_; }

  // What was found, in the order of the page. Call it once, at its end.
  std::vector<PageLink> Take();

 private:
  struct RelatedTopic {
    std::string address;
    std::size_t offset;
  };

  void StartTag(const HtmlToken& token);
  void AttributeLinks(const HtmlToken& token);
  void Refresh(const HtmlToken& token);
  void Parameter(const HtmlToken& token);
  void EndObject();
  void StyleLinks(std::string_view css, std::size_t offset);
  void CandidateLinks(std::string_view candidates, std::size_t offset);
  void Add(LinkKind kind, std::string_view address, std::size_t offset);
  std::string WithoutReferences(std::string_view value) const;

  int code_page_;
  std::string base_;
  std::vector<PageLink> links_;
  bool is_related_topics_ = false;     // the object's command, as far as it is known
  std::vector<RelatedTopic> related_;  // of the object that is open
};

}  // namespace scrivo

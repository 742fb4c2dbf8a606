#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "html/links.h"
#include "project/project_tree.h"

namespace scrivo {

// What is wrong with a link of a page.
struct LinkFault {
  enum class Kind { kMissing, kOtherCase, kServer } kind = Kind::kMissing;
  std::string subject;  // the address, UTF-8
  std::string text;
};

// Looks up what the links of one page lead to.
class LinkCheck {
 public:
  // `web` finds the files below the web's folder, and must outlive the object. `location` is the
  // page's; `base` what its BASE element says; `code_page` that of its bytes. `welcome_names`,
  // which must outlive it too, are the names that the start page of a folder goes by.
  LinkCheck(ProjectTree& web, std::string_view location, const std::string& base, int code_page,
            const std::vector<std::string>& welcome_names);

  // Nothing wrong: true, also with links that lead out of the web. Else `*fault` says what it is.
  bool IsFine(const PageLink& link, LinkFault* fault);

  // The file of the web that a link leads to; nothing when it leads to none.
  std::optional<FoundFile> Target(const PageLink& link);

 private:
  bool LeadsToFolder(const std::string& path, std::string* page);

  ProjectTree& web_;
  std::string folder_;
  bool base_is_elsewhere_ = false;
  const int code_page_;
  const std::vector<std::string>& welcome_names_;
};

}  // namespace scrivo

#include "checker/finding.h"

namespace scrivo {
namespace {

struct KindTexts {
  std::string_view name, heading, advice;
};

// By FindingKind.
constexpr KindTexts kTexts[kFindingKinds] = {
    {"contents-entry", "Contents entries without a page",
     "Correct or remove them in the navigation view."},
    {"page-outside-contents", "Pages that the contents do not show",
     "Put them into the navigation structure, or remove them."},
    {"missing-link", "Links that lead nowhere", "Correct the links or add the files."},
    {"link-case", "Links with other capital letters than their file",
     "They work in a help file, but not on most web servers."},
    {"missing-picture", "Missing pictures", "Add the pictures, or remove what shows them."},
    {"no-title", "Pages without a title of their own",
     "Titles are what search and index of a help file show."},
    {"no-keywords", "Pages without keywords",
     "The index is made from keywords; --index titles makes entries from titles."},
    {"lost-text", "Text that the help file's code page lacks",
     "It becomes \"?\" in contents and index; see --code-page."},
    {"server-component", "Components that need a web server", "They do nothing in a help file."},
    {"wrong-charset", "Wrong charset declarations", "Save the pages again with the right charset."},
    {"cut-off", "Pages that end too early", "Restore them from where they are still whole."},
    {"unreadable", "What cannot be read", "It is missing in the help file."},
};

}  // namespace

std::string_view FindingName(FindingKind kind) { return kTexts[static_cast<int>(kind)].name; }

std::string_view FindingHeading(FindingKind kind) { return kTexts[static_cast<int>(kind)].heading; }

std::string_view FindingAdvice(FindingKind kind) { return kTexts[static_cast<int>(kind)].advice; }

}  // namespace scrivo
